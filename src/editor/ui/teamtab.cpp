#include "editor/ui/teamtab.h"

#include "core/schema.h"
#include "core/ui/combochoice.h"
#include "platform/numbers.h"
#include "editor/ui/kitpreview.h"
#include "core/ui/crestview.h"
#include "editor/ui/formfields.h"

#include <QComboBox>
#include <QFile>
#include <QFontDatabase>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QStringListModel>
#include <QVBoxLayout>

namespace zorbo {

namespace {

QGroupBox *box(QWidget *parent, const QString &name, const QString &caption)
{
    auto *b = new QGroupBox(caption, parent);
    b->setObjectName(name);
    return b;
}

} // namespace

TeamTab::TeamTab(QStringListModel *laender, QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("tabteam"));
    auto *frame7 = box(this, QStringLiteral("Frame7"), QStringLiteral("Logo"));
    auto *frame6 = box(this, QStringLiteral("Frame6"), QStringLiteral("Team"));
    auto *frame4 = box(this, QStringLiteral("Frame4"), QStringLiteral("Stadion"));

    m_nummer = formfield(frame7, "txttnr", 0, true);
    m_grafnr = formfield(frame7, "txtgrafnr", 4, true);
    m_wappen = new CrestView(frame7);
    m_wappen->setFixedSize(64, 64);
    m_wappen->setFrameShape(QFrame::StyledPanel);
    connect(m_wappen, &CrestView::clicked, this, &TeamTab::crestClicked);
    // The crest stands beside the numbers, so the frame is no taller than
    // the team frame beside it and the crest is never cut.
    auto *logo = new QHBoxLayout(frame7);
    auto *numbers = new QFormLayout;
    numbers->addRow(QStringLiteral("Teamnummer:"), m_nummer);
    numbers->addRow(QStringLiteral("Grafiknummer:"), m_grafnr);
    logo->addLayout(numbers, 1);
    logo->addWidget(m_wappen, 0, Qt::AlignTop);

    m_lang = formfield(frame6, "txtteamlang", 32);
    m_kurz = formfield(frame6, "txtteamkurz", 16);
    m_stadt = formfield(frame6, "txtstadt", 16);
    m_land = new QComboBox(frame6);
    m_land->setObjectName(QStringLiteral("cboland"));
    m_land->setModel(laender);
    keepchoice(m_land);
    m_kontinent = new QComboBox(frame6);
    m_kontinent->setObjectName(QStringLiteral("cbokontinent"));
    m_kontinent->addItems(kontinente());
    m_kontinentLabel = new QLabel(QStringLiteral("Kontinent:"), frame6);
    m_kontinentLabel->setObjectName(QStringLiteral("Label1"));
    auto *team = new QFormLayout(frame6);
    team->addRow(QStringLiteral("Teamname lang:"), m_lang);
    team->addRow(QStringLiteral("Teamname kurz:"), m_kurz);
    team->addRow(QStringLiteral("Stadt:"), m_stadt);
    team->addRow(QStringLiteral("Land:"), m_land);
    team->addRow(m_kontinentLabel, m_kontinent);

    m_stadion = formfield(frame4, "txtstadion", 30);
    m_sitz = formfield(frame4, "txtsitz", 6);
    m_steh = formfield(frame4, "txtsteh", 6);
    auto *stadium = new QFormLayout(frame4);
    stadium->addRow(QStringLiteral("Stadion:"), m_stadion);
    stadium->addRow(QStringLiteral("Sitzplätze:"), m_sitz);
    stadium->addRow(QStringLiteral("Stehplätze:"), m_steh);

    auto *kits = new QHBoxLayout;
    const QString captions[3] = {QStringLiteral("Heimtrikot"), QStringLiteral("Auswärtstrikot"),
                                 QStringLiteral("Torwarttrikot")};
    for (int slot = 0; slot < 3; ++slot) {
        auto *frame5 = box(this, QStringLiteral("Frame5(%1)").arg(slot), captions[slot]);
        m_kit[slot] = new KitPreview(slot, frame5);
        connect(m_kit[slot], &KitPreview::doubleClicked, this, &TeamTab::kitDoubleClicked);
        (new QVBoxLayout(frame5))->addWidget(m_kit[slot]);
        kits->addWidget(frame5);
        setArt(slot, 0);
    }

    m_save = new QPushButton(QStringLiteral("Land/Verein speichern"), this);
    m_save->setObjectName(QStringLiteral("btnteamsave"));
    connect(m_save, &QPushButton::clicked, this, &TeamTab::saveRequested);

    auto *grid = new QGridLayout(this);
    grid->addWidget(frame6, 0, 0);
    grid->addWidget(frame7, 0, 1);
    grid->addWidget(frame4, 1, 0);
    grid->addWidget(m_save, 1, 1, Qt::AlignBottom);
    grid->addLayout(kits, 2, 0, 1, 2);
    grid->setRowStretch(3, 1);

    for (QLineEdit *edit : findChildren<QLineEdit *>())
        connect(edit, &QLineEdit::textChanged, this, &TeamTab::recheck);
    for (QComboBox *combo : {m_land, m_kontinent})
        connect(combo, &QComboBox::currentIndexChanged, this, &TeamTab::recheck);
}

void TeamTab::clear()
{
    m_state.filling();
    for (QLineEdit *edit : findChildren<QLineEdit *>())
        edit->clear();
    choosetext(m_land, QString());
    choosetext(m_kontinent, QString());
    for (int slot = 0; slot < 3; ++slot)
        setArt(slot, 0);
    m_wappen->setImage(QImage());
    m_filled = false;
    m_state.filled();
}

void TeamTab::revert()
{
    setForm(m_state.shown(), m_mode);
}

void TeamTab::setArt(int slot, int art)
{
    m_kit[size_t(slot)]->setArt(art, m_kitFolder);
    recheck();
}

void TeamTab::setKitColours(int slot, const KitColours &colours)
{
    m_kit[size_t(slot)]->setColours(colours);
}

int TeamTab::kitart(int slot) const
{
    return m_kit[size_t(slot)]->art();
}

void TeamTab::showkit(int slot, int art, const std::optional<KitColours> &colours)
{
    setArt(slot, art);
    if (colours)
        setKitColours(slot, *colours);
}

void TeamTab::loadwappen(int n)
{
    m_wappen->setImage(m_crestsource ? m_crestsource(n) : QImage());
}

void TeamTab::setCrest(const QImage &image, const QString &grafnr)
{
    m_wappen->setImage(image);
    m_grafnr->setText(grafnr);
}

QString TeamTab::grafnr() const
{
    return m_grafnr->text();
}

void TeamTab::setNational(bool national)
{
    m_kontinent->setVisible(national);
    m_kontinentLabel->setVisible(national);
}

QGroupBox *TeamTab::frame(const QString &name) const
{
    return findChild<QGroupBox *>(name);
}

bool TeamTab::setForm(const TeamForm &form, TeamMode mode)
{
    m_state.filling();
    m_mode = mode;
    setNational(mode == NationalMode);
    // The save goes to the table the form was read from.
    m_table = mode == NationalMode ? TeamTable::VereineNational : TeamTable::Vereine;
    m_nummer->setText(QString::number(form.nummer));
    m_lang->setText(form.name);
    m_kurz->setText(form.kurzname);
    m_grafnr->setText(form.grafiknr);
    m_stadion->setText(form.stadion);
    m_stadt->setText(form.stadt);
    m_sitz->setText(form.sitz);
    m_steh->setText(form.steh);
    if (mode == NationalMode)
        choosetext(m_kontinent, form.kontinent);
    for (int slot = 0; slot < 3; ++slot)
        setArt(slot, form.arts[slot]);
    loadwappen(int(valtext(form.grafiknr)));
    showfromstart(this);
    const bool listed = mode == MarketMode || choosetext(m_land, form.land);
    m_filled = true;
    m_state.filled();
    return listed;
}

TeamForm TeamTab::form() const
{
    TeamForm f;
    f.nummer = m_nummer->text().toLongLong();
    f.table = m_table;
    f.name = m_lang->text();
    f.kurzname = m_kurz->text();
    f.grafiknr = m_grafnr->text();
    f.stadion = m_stadion->text();
    f.stadt = m_stadt->text();
    f.land = chosentext(m_land);
    f.kontinent = chosentext(m_kontinent);
    f.sitz = m_sitz->text();
    f.steh = m_steh->text();
    for (int slot = 0; slot < 3; ++slot)
        f.arts[slot] = kitart(slot);
    return f;
}

} // namespace zorbo
