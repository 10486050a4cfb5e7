#include "editor/ui/playertab.h"

#include "core/ui/combochoice.h"
#include "editor/playergrid.h"
#include "editor/ui/facedialog.h"
#include "editor/ui/faceview.h"
#include "editor/ui/talentgrid.h"
#include "editor/ui/formfields.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStringListModel>
#include <QVBoxLayout>

namespace zorbo {

namespace {

QComboBox *list(QWidget *parent, const QString &name, const QStringList &items)
{
    auto *combo = new QComboBox(parent);
    combo->setObjectName(name);
    combo->addItems(items);
    return combo;
}

// The 13 entries of the strength lists, "0.0 Sterne" to "6.0 Sterne": 1000 units each.
QStringList starEntries()
{
    QStringList entries;
    for (int i = 0; i <= 12; ++i)
        entries << QStringLiteral("%1.%2 Sterne").arg(i / 2).arg(i % 2 * 5);
    return entries;
}

} // namespace

PlayerTab::PlayerTab(QStringListModel *spielerlaender, QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("tabspieler"));
    auto *frame10 = new QGroupBox(QStringLiteral("Info"), this);
    frame10->setObjectName(QStringLiteral("Frame10"));
    auto *frame8 = new QGroupBox(QStringLiteral("Daten"), this);
    frame8->setObjectName(QStringLiteral("Frame8"));
    auto *frame9 = new QGroupBox(QStringLiteral("Gesicht"), this);
    frame9->setObjectName(QStringLiteral("Frame9"));
    auto *frame11 = new QGroupBox(QStringLiteral("Spielertalente"), this);
    frame11->setObjectName(QStringLiteral("Frame11"));

    m_nummer = formfield(frame10, "txtspielernr", 0, true);
    m_staerke = list(frame10, QStringLiteral("cbospielerstärke"), starEntries());
    m_maxstaerke = list(frame10, QStringLiteral("cbospielermstärke"), starEntries());
    m_pos = list(frame10, QStringLiteral("cbospielerpos"), positionsnamen());
    auto *info = new QFormLayout(frame10);
    info->addRow(QStringLiteral("Spielernummer:"), m_nummer);
    info->addRow(QStringLiteral("Stärke:"), m_staerke);
    info->addRow(QStringLiteral("Maxstärke:"), m_maxstaerke);
    info->addRow(QStringLiteral("Position:"), m_pos);

    m_vorname = formfield(frame8, "txtspielervorname", 2);
    // Room for a stored first name longer than the two letters one can type.
    m_vorname->setFixedWidth(m_vorname->fontMetrics().horizontalAdvance(QStringLiteral("Hans-Peter")) + 12);
    m_name = formfield(frame8, "txtspielername", 32);
    m_land = new QComboBox(frame8);
    m_land->setObjectName(QStringLiteral("cbospielerland"));
    m_land->setModel(spielerlaender);
    keepchoice(m_land);
    m_einsatz = formfield(frame8, "txtspielereinsatz", 3);
    m_rnr = formfield(frame8, "txtspielerrnr", 12);
    m_groesse = formfield(frame8, "txtspielergroesse", 3);
    auto *names = new QHBoxLayout;
    names->addWidget(m_vorname);
    names->addWidget(m_name);
    auto *height = new QHBoxLayout;
    height->addWidget(m_groesse);
    height->addWidget(new QLabel(QStringLiteral("cm"), frame8));
    auto *data = new QFormLayout(frame8);
    data->addRow(QStringLiteral("Vorname/Name:"), names);
    data->addRow(QStringLiteral("Land:"), m_land);
    data->addRow(QStringLiteral("Resteinsätze:"), m_einsatz);
    data->addRow(QStringLiteral("Rückennummer:"), m_rnr);
    data->addRow(QStringLiteral("Größe:"), height);

    // The face and talent pictures come with their own editors; until then
    // the face code stands as text and the talents keep what the row holds.
    m_gesicht = new FaceView(frame9);
    m_gesicht->setPictures(&m_faces);
    connect(m_gesicht, &FaceView::doubleClicked, this, &PlayerTab::editface);
    (new QVBoxLayout(frame9))->addWidget(m_gesicht);
    m_attribute = new TalentGrid(frame11);
    (new QVBoxLayout(frame11))->addWidget(m_attribute);

    m_save = new QPushButton(QStringLiteral("Spieler speichern"), this);
    m_save->setObjectName(QStringLiteral("btnspielerspeichern"));
    connect(m_save, &QPushButton::clicked, this, &PlayerTab::saveRequested);

    auto *grid = new QGridLayout(this);
    grid->addWidget(frame10, 0, 0);
    grid->addWidget(frame8, 1, 0);
    grid->addWidget(frame9, 0, 1);
    grid->addWidget(frame11, 0, 2, 2, 1);
    grid->addWidget(m_save, 1, 1, Qt::AlignBottom);
    grid->setColumnStretch(2, 1);
    setOpen(false);

    for (QLineEdit *edit : findChildren<QLineEdit *>())
        connect(edit, &QLineEdit::textChanged, this, &PlayerTab::recheck);
    for (QComboBox *combo : {m_staerke, m_maxstaerke, m_pos, m_land})
        connect(combo, &QComboBox::currentIndexChanged, this, &PlayerTab::recheck);
    connect(m_attribute, &QTableWidget::itemChanged, this, &PlayerTab::recheck);
    m_state.filled();
}

void PlayerTab::clear()
{
    m_state.filling();
    m_player = GridPlayer();
    m_shows = false;
    for (QLineEdit *edit : findChildren<QLineEdit *>())
        edit->clear();
    for (QComboBox *combo : {m_staerke, m_maxstaerke, m_pos})
        combo->setCurrentIndex(0);
    choosetext(m_land, QString());
    m_gesicht->showgesicht(0);
    m_attribute->showtalente(QString(), QString(), 0);
    setOpen(false);
    m_state.filled();
}

void PlayerTab::setOpen(bool open)
{
    for (const char *name : {"Frame8", "Frame9", "Frame10", "Frame11"})
        findChild<QGroupBox *>(QLatin1String(name))->setEnabled(open);
    m_save->setEnabled(open);
}

bool PlayerTab::setPlayer(const GridPlayer &player)
{
    m_state.filling();
    m_player = player;
    m_shows = true;
    const PlayerForm f = playerform(player);
    m_nummer->setText(QString::number(player.nummer));
    m_name->setText(f.name);
    m_vorname->setText(f.vorname);
    m_staerke->setCurrentIndex(f.staerkeIndex);
    m_maxstaerke->setCurrentIndex(f.maxIndex);
    const bool listed = choosetext(m_land, f.land);
    m_groesse->setText(f.groesse);
    m_einsatz->setText(f.einsatz);
    m_rnr->setText(f.rnr);
    m_pos->setCurrentIndex(f.art);
    m_gesicht->showgesicht(f.gesicht);
    m_attribute->showtalente(f.erlernt, f.gesperrt, f.art);
    showfromstart(this);
    m_state.filled();
    return listed;
}

PlayerForm PlayerTab::form() const
{
    PlayerForm f;
    f.shown = m_player;
    f.name = m_name->text();
    f.vorname = m_vorname->text();
    f.staerkeIndex = m_staerke->currentIndex();
    f.maxIndex = m_maxstaerke->currentIndex();
    f.land = chosentext(m_land);
    f.groesse = m_groesse->text();
    f.art = m_pos->currentIndex();
    f.einsatz = m_einsatz->text();
    f.rnr = m_rnr->text();
    f.gesicht = m_gesicht->code();
    m_attribute->talentsum(f.erlernt, f.gesperrt);
    return f;
}

void PlayerTab::load_attribute(Database &db, const QString &attributeFolder)
{
    m_attribute->load_attribute(db, attributeFolder);
}

void PlayerTab::setGesichtFolder(const QString &folder)
{
    m_faces = FacePictures(folder);
}

void PlayerTab::editface()
{
    std::array<int, 5> digits{};
    for (int part = 0; part < 5; ++part)
        digits[size_t(part)] = m_gesicht->digit(part);
    FaceDialog dialog(m_faces, m_gesicht->code(), digits, this);
    if (dialog.exec() == QDialog::Accepted) {
        m_gesicht->showgesicht(dialog.code());
        recheck();
    }
}

QList<qint64> PlayerTab::unknowntalents() const
{
    return m_attribute->unknown();
}

} // namespace zorbo
