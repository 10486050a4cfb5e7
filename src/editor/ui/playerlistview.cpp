#include "editor/ui/playerlistview.h"

#include "core/schema.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"
#include "editor/playercsv.h"
#include "editor/ui/bulkeditdialog.h"
#include "editor/ui/csvimportdialog.h"
#include "editor/ui/playerlistmodel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTableView>
#include <QVBoxLayout>

namespace zorbo {

namespace {

QComboBox *combo(const QString &name, QWidget *parent)
{
    auto *c = new QComboBox(parent);
    c->setObjectName(name);
    // A long club's name doesn't widen the list beside the forms.
    c->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    c->setMinimumContentsLength(8);
    return c;
}

QCheckBox *check(const QString &name, const QString &text, QWidget *parent)
{
    auto *c = new QCheckBox(text, parent);
    c->setObjectName(name);
    return c;
}

} // namespace

PlayerListView::PlayerListView(Shell &shell, QWidget *parent) : QWidget(parent), m_shell(shell)
{
    setObjectName(QStringLiteral("frmspielerliste"));
    setWindowTitle(QStringLiteral("Spielerliste"));
    m_model = new PlayerListModel(*shell.world(), this);

    m_text = new QLineEdit(this);
    m_text->setObjectName(QStringLiteral("txtfiltertext"));
    m_text->setPlaceholderText(QStringLiteral("Name oder Vorname"));
    m_text->setClearButtonEnabled(true);
    m_land = combo(QStringLiteral("cbofilterland"), this);
    m_kontinent = combo(QStringLiteral("cbofilterkontinent"), this);
    m_verein = combo(QStringLiteral("cbofilterverein"), this);
    m_position = combo(QStringLiteral("cbofilterposition"), this);
    m_von = combo(QStringLiteral("cbofiltervon"), this);
    m_bis = combo(QStringLiteral("cbofilterbis"), this);
    m_saved = combo(QStringLiteral("cbofiltergespeichert"), this);
    m_ohneVerein = check(QStringLiteral("chkohneverein"), QStringLiteral("ohne Verein"), this);
    m_doppelt = check(QStringLiteral("chkdoppelt"), QStringLiteral("doppelte Rückennummer"), this);
    m_problem = check(QStringLiteral("chkproblem"), QStringLiteral("Problem"), this);
    m_count = new QLabel(this);
    m_count->setObjectName(QStringLiteral("lblanzahl"));

    m_position->addItem(QStringLiteral("(alle Positionen)"), -1);
    for (int i = 0; i < 4; ++i)
        m_position->addItem(positionname(i), i);
    m_kontinent->addItem(QStringLiteral("(alle Kontinente)"));
    m_kontinent->addItems(kontinente());
    for (QComboBox *c : {m_von, m_bis}) {
        c->addItem(c == m_von ? QStringLiteral("von") : QStringLiteral("bis"), -1);
        for (int i = 0; i <= 12; ++i)
            c->addItem(starstext(i * 1000) + QStringLiteral(" Sterne"), i * 1000);
    }

    auto *save = new QPushButton(QStringLiteral("Filter speichern..."), this);
    save->setObjectName(QStringLiteral("btnfilterspeichern"));
    auto *edit = new QPushButton(QStringLiteral("Auswahl bearbeiten..."), this);
    edit->setObjectName(QStringLiteral("btnauswahlbearbeiten"));
    auto *exporter = new QPushButton(QStringLiteral("Als CSV exportieren..."), this);
    exporter->setObjectName(QStringLiteral("btncsvexport"));
    auto *importer = new QPushButton(QStringLiteral("CSV importieren..."), this);
    importer->setObjectName(QStringLiteral("btncsvimport"));

    m_table = new QTableView(this);
    m_table->setObjectName(QStringLiteral("tblspieler"));
    m_table->setModel(m_model);
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(int(ListColumn::Name), Qt::AscendingOrder);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 6);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    // Fixed widths: sizing to the contents would read every row.
    const int x = m_table->fontMetrics().horizontalAdvance(QLatin1Char('x'));
    const int widths[] = {8, 16, 14, 20, 14, 13, 11, 7, 10, 6, 16, 14};
    for (int c = 0; c < listColumnCount; ++c)
        m_table->setColumnWidth(c, widths[c] * x);

    // Two columns, so that the list fits beside the forms.
    auto *bar = new QGridLayout;
    auto *search = new QHBoxLayout;
    search->addWidget(new QLabel(QStringLiteral("Suche:"), this));
    search->addWidget(m_text, 1);
    bar->addLayout(search, 0, 0, 1, 2);
    bar->setColumnStretch(0, 1);
    bar->setColumnStretch(1, 1);
    bar->addWidget(m_land, 1, 0);
    bar->addWidget(m_kontinent, 1, 1);
    bar->addWidget(m_verein, 2, 0);
    bar->addWidget(m_position, 2, 1);
    bar->addWidget(m_von, 3, 0);
    bar->addWidget(m_bis, 3, 1);
    bar->addWidget(m_ohneVerein, 4, 0);
    bar->addWidget(m_problem, 4, 1);
    bar->addWidget(m_doppelt, 5, 0, 1, 2);
    bar->addWidget(m_saved, 6, 0);
    bar->addWidget(save, 6, 1);
    auto *buttons = new QGridLayout;
    buttons->addWidget(edit, 0, 0);
    buttons->addWidget(exporter, 1, 0);
    buttons->addWidget(importer, 2, 0);
    buttons->setColumnStretch(1, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_count);
    layout->addLayout(buttons);

    filllists();
    fillsaved();
    connect(m_text, &QLineEdit::textChanged, this, &PlayerListView::applyfilter);
    for (QComboBox *c : {m_land, m_kontinent, m_verein, m_position, m_von, m_bis})
        connect(c, &QComboBox::currentIndexChanged, this, &PlayerListView::applyfilter);
    for (QCheckBox *c : {m_ohneVerein, m_doppelt, m_problem})
        connect(c, &QCheckBox::toggled, this, &PlayerListView::applyfilter);
    connect(m_saved, &QComboBox::activated, this, [this](int i) {
        QString error;
        if (const std::optional<PlayerFilter> f = parsefilter(m_saved->itemData(i).toString(), &error); f && i > 0)
            showfilter(*f);
    });
    connect(save, &QPushButton::clicked, this, &PlayerListView::savefilter);
    connect(edit, &QPushButton::clicked, this, &PlayerListView::editchosen);
    connect(exporter, &QPushButton::clicked, this, &PlayerListView::exportcsv);
    connect(importer, &QPushButton::clicked, this, &PlayerListView::importcsv);
    connect(m_table, &QTableView::doubleClicked, this, [this](const QModelIndex &index) {
        const PlayerRow r = m_model->row(index.row());
        if (r.frei || r.vereinNr < 0)
            return;
        const bool national = m_shell.db()->scalar(QStringLiteral("SELECT count(*) FROM vereine_national WHERE NUMMER = ?1"), r.vereinNr).toInt() > 0;
        emit openplayer((national ? QStringLiteral("L") : QStringLiteral("T")) + QString::number(r.vereinNr), r.nummer);
    });
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] {
        m_count->setText(countline(m_model->rowCount(), m_model->total()));
    });
    connect(&shell, &Shell::changed, this, [this](const Change &change) {
        if (change.everything || change.tables.contains(QStringLiteral("vereine")) || change.tables.contains(QStringLiteral("vereine_national")))
            filllists();
    });
    m_count->setText(countline(m_model->rowCount(), m_model->total()));
}

void PlayerListView::filllists()
{
    Database *db = m_shell.db();
    if (!db)
        return;
    m_filling = true;
    const QString land = m_land->currentText();
    const qint64 verein = m_verein->currentIndex() > 0 ? m_verein->currentData().toLongLong() : -1;
    m_land->clear();
    m_land->addItem(QStringLiteral("(alle Länder)"));
    Statement countries = db->prepare(QStringLiteral("SELECT DISTINCT NAME FROM vereine_national WHERE NAME <> '' ORDER BY NAME COLLATE deutsch"));
    while (countries.step())
        m_land->addItem(countries.text(0));
    m_land->setCurrentIndex(std::max(0, m_land->findText(land)));
    m_verein->clear();
    m_verein->addItem(QStringLiteral("(alle Vereine)"), qint64(-1));
    m_verein->addItem(QString::fromLatin1(transfermarkt), qint64(0));
    Statement teams = db->prepare(QStringLiteral(
        "SELECT NUMMER, NAME FROM vereine WHERE NUMMER <> 0 UNION ALL SELECT NUMMER, NAME FROM vereine_national "
        "ORDER BY 2 COLLATE deutsch, 1"));
    while (teams.step())
        m_verein->addItem(teams.text(1), teams.integer(0));
    m_verein->setCurrentIndex(std::max(0, m_verein->findData(verein)));
    m_filling = false;
}

PlayerFilter PlayerListView::filter() const
{
    PlayerFilter f;
    f.text = m_text->text();
    if (m_land->currentIndex() > 0)
        f.land = m_land->currentText();
    if (m_kontinent->currentIndex() > 0)
        f.kontinent = m_kontinent->currentText();
    if (m_verein->currentIndex() > 0)
        f.verein = m_verein->currentData().toLongLong();
    if (m_position->currentIndex() > 0)
        f.position = m_position->currentData().toInt();
    if (m_von->currentIndex() > 0)
        f.staerkeVon = m_von->currentData().toLongLong();
    if (m_bis->currentIndex() > 0)
        f.staerkeBis = m_bis->currentData().toLongLong();
    f.ohneVerein = m_ohneVerein->isChecked();
    f.doppelteNummer = m_doppelt->isChecked();
    f.problem = m_problem->isChecked();
    return f;
}

void PlayerListView::showfilter(const PlayerFilter &f)
{
    m_filling = true;
    m_text->setText(f.text);
    m_land->setCurrentIndex(std::max(0, m_land->findText(f.land)));
    m_kontinent->setCurrentIndex(std::max(0, m_kontinent->findText(f.kontinent)));
    m_verein->setCurrentIndex(f.verein ? std::max(0, m_verein->findData(*f.verein)) : 0);
    m_position->setCurrentIndex(f.position ? *f.position + 1 : 0);
    m_von->setCurrentIndex(f.staerkeVon ? std::max(0, m_von->findData(*f.staerkeVon)) : 0);
    m_bis->setCurrentIndex(f.staerkeBis ? std::max(0, m_bis->findData(*f.staerkeBis)) : 0);
    m_ohneVerein->setChecked(f.ohneVerein);
    m_doppelt->setChecked(f.doppelteNummer);
    m_problem->setChecked(f.problem);
    m_filling = false;
    applyfilter();
}

void PlayerListView::applyfilter()
{
    if (m_filling)
        return;
    const PlayerFilter f = filter();
    if (f != m_model->filter())
        m_model->setfilter(f);
}

QList<qint64> PlayerListView::chosen() const
{
    QList<qint64> players;
    for (const QModelIndex &index : m_table->selectionModel()->selectedRows()) {
        const PlayerRow r = m_model->row(index.row());
        if (!r.frei)
            players << r.nummer;
    }
    std::sort(players.begin(), players.end());
    return players;
}

void PlayerListView::editchosen()
{
    BulkEditDialog dialog(m_shell, chosen(), m_model->numbers(), this);
    dialog.exec();
}

void PlayerListView::exportcsv()
{
    const QString start = QFileInfo(m_shell.db()->path()).absolutePath() + QStringLiteral("/spieler.csv");
    int filter = 0;
    const QString path = m_shell.dialogs().savefile(this, QStringLiteral("Als CSV exportieren"), start,
                                                    {QStringLiteral("CSV-Dateien (*.csv)")}, &filter);
    if (path.isEmpty())
        return;
    const QList<qint64> players = m_model->numbers();
    const Result r = exportplayercsv(*m_shell.db(), players, path);
    m_shell.dialogs().report(this, QStringLiteral("Als CSV exportieren"), r.message, {}, !r.ok);
}

void PlayerListView::importcsv()
{
    const QString start = QFileInfo(m_shell.db()->path()).absolutePath();
    int filter = 0;
    const QString path = m_shell.dialogs().openfile(this, QStringLiteral("CSV importieren"), start,
                                                    {QStringLiteral("CSV-Dateien (*.csv)")}, &filter);
    if (path.isEmpty())
        return;
    CsvImportDialog dialog(m_shell, path, this);
    if (dialog.readable())
        dialog.exec();
}

QString PlayerListView::savedfile() const
{
    return QFileInfo(m_shell.db()->path()).absolutePath() + QStringLiteral("/spielerfilter.ini");
}

void PlayerListView::fillsaved()
{
    m_saved->clear();
    m_saved->addItem(QStringLiteral("(gespeicherte Filter)"));
    QSettings saved(savedfile(), QSettings::IniFormat);
    saved.beginGroup(QStringLiteral("filter"));
    for (const QString &name : saved.childKeys())
        m_saved->addItem(name, saved.value(name).toString());
}

void PlayerListView::savefilter()
{
    const QString name = m_shell.dialogs().text(this, QStringLiteral("Filter speichern"), QStringLiteral("Name des Filters:")).trimmed();
    if (name.isEmpty())
        return;
    QSettings saved(savedfile(), QSettings::IniFormat);
    saved.beginGroup(QStringLiteral("filter"));
    saved.setValue(name, filterexpression(filter()));
    saved.endGroup();
    saved.sync();
    fillsaved();
    m_saved->setCurrentIndex(m_saved->findText(name));
}

} // namespace zorbo
