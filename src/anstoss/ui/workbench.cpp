#include "anstoss/ui/workbench.h"

#include "anstoss/ui/a4lists.h"
#include "anstoss/ui/kitshow.h"
#include "core/settings.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QTabWidget>
#include <QVBoxLayout>

namespace zorbo {

namespace {

// Typing is limited by a validator: a text set by code stays whole.
QLineEdit *field(QWidget *parent, const char *name, int limit)
{
    auto *e = new QLineEdit(parent);
    e->setObjectName(QLatin1String(name));
    if (limit > 0)
        e->setValidator(new QRegularExpressionValidator(
            QRegularExpression(QStringLiteral("^.{0,%1}$").arg(limit),
                               QRegularExpression::DotMatchesEverythingOption), e));
    return e;
}

} // namespace

Workbench::Workbench(Shell &shell, const QString &file, qint64 importnummer, QWidget *parent, FileEncoding encoding)
    : QDialog(parent), m_shell(shell), m_file(file), m_nummer(importnummer)
{
    setObjectName(QStringLiteral("frma4import"));
    setWindowTitle(QStringLiteral("Import"));
    m_loaded = m_aet.load(file, AetKind::Club, encoding).ok;
    auto *layout = new QVBoxLayout(this);
    auto *tabs = new QTabWidget(this);
    tabs->setObjectName(QStringLiteral("tabedit"));
    tabs->addTab(teampage(), QStringLiteral("Land/Verein"));
    tabs->addTab(playerpage(), QStringLiteral("Spieler"));
    layout->addWidget(tabs);
    resize(820, 600);
    updatesave();
    connect(&m_shell, &Shell::changed, this, &Workbench::worldchanged);
}

void Workbench::worldchanged(const Change &change)
{
    if (!m_shell.db() || m_nummer < 0)
        return;
    const bool club = change.everything || change.teams.contains(m_nummer);
    bool players = club || change.tables.contains(QStringLiteral("kaderzeilen"));
    for (const ListEntry &e : m_builder.list(SquadBuilder::Editor))
        players = players || change.players.contains(e.id);
    try {
        if (club) {
            m_club = readclubshown(*m_shell.db(), m_nummer);
            // The boxes not ticked show the club's values.
            for (int index = 0; index < 3; ++index) {
                if (!m_chkimport[index]->isChecked())
                    chkimport_Click(index);
            }
        }
        if (!players || !m_chkimport[3]->isChecked())
            return;
        // This window's own save wrote the squad as built; another run may
        // have changed the club's players it took.
        bool stale = false;
        for (const SquadEntry &e : m_builder.entries())
            stale = stale || (!m_saving && !e.fromFile && (change.everything || change.players.contains(e.id)));
        if (stale && m_shell.dialogs().question(this, QStringLiteral("Import"),
                                                QStringLiteral("Spieler des Vereins in der neuen Spielerliste wurden "
                                                               "inzwischen geändert. Die neue Spielerliste verwerfen?")))
            m_builder.dropsquad();
        m_builder.fillclub(*m_shell.db(), m_nummer);
    } catch (const DbError &error) {
        m_shell.dialogs().warning(this, QStringLiteral("Import"), error.text());
    }
    refreshlists();
}

QWidget *Workbench::teampage()
{
    auto *page = new QWidget;
    auto *grid = new QGridLayout(page);
    auto *numbers = new QFormLayout;
    m_txttnr = field(page, "txttnr", 0);
    m_txttnr->setReadOnly(true);
    m_txtgrafnr = field(page, "txtgrafnr", 4);
    numbers->addRow(QStringLiteral("Teamnummer:"), m_txttnr);
    numbers->addRow(QStringLiteral("Grafiknummer:"), m_txtgrafnr);
    grid->addLayout(numbers, 0, 0);
    auto *logo = new QGroupBox(QStringLiteral("Logo"), page);
    m_wappen = new QLabel(logo);
    m_wappen->setObjectName(QStringLiteral("ImgXwappen"));
    m_wappen->setFixedSize(64, 64);
    (new QVBoxLayout(logo))->addWidget(m_wappen);
    grid->addWidget(logo, 0, 1);

    auto *team = new QGroupBox(QStringLiteral("Team"), page);
    auto *tf = new QFormLayout(team);
    m_txtteamlang = field(team, "txtteamlang", 32);
    m_txtteamkurz = field(team, "txtteamkurz", 16);
    m_txtstadt = field(team, "txtstadt", 16);
    m_cboland = new QComboBox(team);
    m_cboland->setObjectName(QStringLiteral("cboland"));
    m_cboland->setEditable(true); // free text; the list stays empty
    m_cbokontinent = new QComboBox(team);
    m_cbokontinent->setObjectName(QStringLiteral("cbokontinent"));
    m_label1 = new QLabel(QStringLiteral("Kontinent:"), team);
    m_label1->setObjectName(QStringLiteral("Label1"));
    tf->addRow(QStringLiteral("Teamname lang:"), m_txtteamlang);
    tf->addRow(QStringLiteral("Teamname kurz:"), m_txtteamkurz);
    tf->addRow(QStringLiteral("Stadt:"), m_txtstadt);
    tf->addRow(QStringLiteral("Land:"), m_cboland);
    tf->addRow(m_label1, m_cbokontinent);
    grid->addWidget(team, 1, 0);

    auto *stadium = new QGroupBox(QStringLiteral("Stadion"), page);
    auto *sf = new QFormLayout(stadium);
    m_txtstadion = field(stadium, "txtstadion", 30);
    m_txtsitz = field(stadium, "txtsitz", 6);
    m_txtsteh = field(stadium, "txtsteh", 6);
    sf->addRow(QStringLiteral("Stadion:"), m_txtstadion);
    sf->addRow(QStringLiteral("Sitzplätze:"), m_txtsitz);
    sf->addRow(QStringLiteral("Stehplätze:"), m_txtsteh);
    grid->addWidget(stadium, 1, 1);

    auto *kits = new QHBoxLayout;
    const char *frames[3] = {"Heimtrikot", "Auswärtstrikot", "Torwarttrikot"};
    for (int i = 0; i < 3; ++i) {
        auto *box = new QGroupBox(QString::fromUtf8(frames[i]), page);
        m_pictrikot[i] = new KitShow(QStringLiteral("pictrikot(%1)").arg(i), box);
        (new QVBoxLayout(box))->addWidget(m_pictrikot[i]);
        connect(m_pictrikot[i], &KitShow::doubleclicked, this, [this, i] { pictrikot_DblClick(i); });
        kits->addWidget(box);
    }
    grid->addLayout(kits, 2, 0, 1, 2);

    auto *options = new QGroupBox(QStringLiteral("Speicheroptionen"), page);
    auto *of = new QHBoxLayout(options);
    const char *captions[3] = {"Teamdaten", "Stadiondaten", "Teamtrikots  (Livespiel)"};
    for (int i = 0; i < 3; ++i) {
        m_chkimport[i] = new QCheckBox(QString::fromUtf8(captions[i]), options);
        m_chkimport[i]->setObjectName(QStringLiteral("chkimport(%1)").arg(i));
        of->addWidget(m_chkimport[i]);
        connect(m_chkimport[i], &QCheckBox::clicked, this, [this, i] { chkimport_Click(i); });
    }
    m_btnteamsave = new QPushButton(QStringLiteral("Land/Verein speichern"), options);
    m_btnteamsave->setObjectName(QStringLiteral("btnteamsave"));
    of->addWidget(m_btnteamsave);
    connect(m_btnteamsave, &QPushButton::clicked, this, &Workbench::btnteamsave_Click);
    grid->addWidget(options, 3, 0, 1, 2);
    return page;
}

void Workbench::setimport(int index, bool ticked)
{
    m_chkimport[index]->setChecked(ticked);
    chkimport_Click(index);
}

void Workbench::chkimport_Click(int index)
{
    const bool any = m_chkimport[0]->isChecked() || m_chkimport[1]->isChecked() || m_chkimport[2]->isChecked();
    m_btnteamsave->setEnabled(any);
    if (any && m_shell.db()) {
        m_club = readclubshown(*m_shell.db(), m_nummer);
        m_label1->hide();
        m_cbokontinent->hide();
        m_txttnr->setText(QString::number(m_club.nummer));
        m_txtgrafnr->setText(m_club.grafiknr);
        m_wappen->setPixmap(QPixmap::fromImage(m_shell.crestimage(m_club.grafiknr.toInt())).scaled(64, 64));
    }
    const bool ticked = m_chkimport[index]->isChecked();
    const QString team = QStringLiteral("team");
    switch (index) {
    case 0:
        m_txtteamlang->setText(ticked ? m_aet.value(team, QStringLiteral("Name"), m_txtteamlang->text()) : m_club.name);
        m_txtstadt->setText(ticked ? m_aet.value(team, QStringLiteral("Stadt"), m_txtstadt->text()) : m_club.stadt);
        m_cboland->setCurrentText(ticked ? m_aet.value(team, QStringLiteral("Land"), m_cboland->currentText())
                                         : m_club.nation);
        m_txtteamkurz->setText(m_club.kurzname);
        break;
    case 1:
        m_txtstadion->setText(ticked ? m_aet.value(team, QStringLiteral("stadion"), m_txtstadion->text()) : m_club.stadion);
        m_txtsitz->setText(ticked ? m_aet.value(team, QStringLiteral("Stadionsitz"), m_txtsitz->text()) : m_club.sitz);
        m_txtsteh->setText(ticked ? m_aet.value(team, QStringLiteral("Stadionsteh"), m_txtsteh->text()) : m_club.steh);
        break;
    case 2:
        for (int slot = 0; slot < 3; ++slot) {
            if (!ticked || m_pictrikot[slot]->tag.isNull())
                showtrikot(slot);
        }
        if (ticked) {
            showlivetrikot(0);
            showlivetrikot(1);
        }
        break;
    default:
        m_builder.clear();
        if (ticked && m_shell.db()) {
            try {
                m_builder.fill(*m_shell.db(), m_aet, m_nummer);
            } catch (const Fault &fault) {
                m_shell.dialogs().warning(this, QStringLiteral("Import"), fault.message());
            } catch (const DbError &error) {
                m_shell.dialogs().warning(this, QStringLiteral("Import"), error.text());
            }
        }
        refreshlists();
        if (ticked && m_nummer == -1)
            mnupopup_item_Click(m_lstvimport, 8);
        break;
    }
}

void Workbench::showtrikot(int slot)
{
    const QVariant art = m_club.kitart[size_t(slot)];
    const QString picture = m_shell.settings().kitFolder()
                            + QStringLiteral("trikot_%1.gif").arg(art.toInt(), 2, 10, QLatin1Char('0'));
    m_pictrikot[slot]->setdrawing(art.isNull() ? QVariant(0) : art, QPixmap(picture));
    std::array<QColor, 4> colours;
    for (int c = 0; c < 4; ++c)
        colours[size_t(c)] = colouroftext(m_club.colours[size_t(slot * 4 + c)]);
    m_pictrikot[slot]->setcolours(colours);
}

void Workbench::pictrikot_DblClick(int slot)
{
    // The kit picker is the editor's; a drawing picked here is saved with
    // the club, and with the file's colours ticked they stay on show.
    const auto chosen = m_shell.choosekit(slot, m_pictrikot[slot]->tag.toInt());
    if (!chosen)
        return;
    const QString picture = m_shell.settings().kitFolder()
                            + QStringLiteral("trikot_%1.gif").arg(chosen->art, 2, 10, QLatin1Char('0'));
    m_pictrikot[slot]->setdrawing(chosen->art, QPixmap(picture));
    if (chosen->colours)
        m_pictrikot[slot]->setcolours(*chosen->colours);
    if (m_chkimport[2]->isChecked() && slot < 2)
        showlivetrikot(slot);
}

void Workbench::showlivetrikot(int slot)
{
    const QString side = slot == 0 ? QStringLiteral("trikoth") : QStringLiteral("trikota");
    std::array<QColor, 4> colours;
    try {
        for (int c = 0; c < 3; ++c) {
            const auto rgb = aetcolour(m_aet, side + QString::number(c), QStringLiteral("255,255,255"));
            colours[size_t(c)] = QColor(rgb[0], rgb[1], rgb[2]);
        }
    } catch (const Fault &fault) {
        m_shell.dialogs().warning(this, QStringLiteral("Import"), fault.message());
        return;
    }
    colours[3] = Qt::black;
    m_pictrikot[slot]->setcolours(colours);
}

void Workbench::btnteamsave_Click()
{
    TeamImport t;
    t.team = m_chkimport[0]->isChecked();
    t.stadium = m_chkimport[1]->isChecked();
    t.kits = m_chkimport[2]->isChecked();
    t.name = m_txtteamlang->text();
    t.stadt = m_txtstadt->text();
    t.land = m_cboland->currentText();
    t.stadion = m_txtstadion->text();
    t.sitz = m_txtsitz->text();
    t.steh = m_txtsteh->text();
    for (int slot = 0; slot < 3; ++slot)
        t.kitart[size_t(slot)] = m_pictrikot[slot]->tag.isNull() ? m_club.kitart[size_t(slot)] : m_pictrikot[slot]->tag;
    const int trikotsatz = m_shell.settings().trikotsatz;
    const AnstossResult r = m_shell.run(
        [&](Database &db) { return saveimportteam(db, m_aet, m_nummer, t, trikotsatz); }, {},
        importteamstep(m_nummer, m_file));
    if (!r.ok())
        m_shell.dialogs().warning(this, QStringLiteral("Land/Verein speichern"), r.result.message);
    else
        m_shell.status(r.result.message);
}

void Workbench::btnabbrechen_Click()
{
    for (int i = 0; i < 4; ++i)
        setimport(i, false);
    reject();
}

void Workbench::closeEvent(QCloseEvent *event)
{
    // The window's own close button is "Abbrechen".
    for (int i = 0; i < 4; ++i)
        setimport(i, false);
    QDialog::closeEvent(event);
}

} // namespace zorbo
