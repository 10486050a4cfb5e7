#include "tools/ui/transferwindow.h"

#include "core/teamlists.h"
#include "core/ui/combochoice.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"
#include "platform/numbers.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>

namespace zorbo {

namespace {

QIcon positionicon(int art)
{
    static const char *const files[] = {"iltrikot_tor", "iltrikot_abwehr", "iltrikot_mittelfeld", "iltrikot_sturm"};
    return art >= 0 && art < 4 ? QIcon(QStringLiteral(":/icons/%1.png").arg(QLatin1String(files[art]))) : QIcon();
}

bool ghosted(const QTreeWidgetItem *item)
{
    return item->data(0, Qt::ForegroundRole).isValid();
}

} // namespace

TransferWindow::TransferWindow(Shell &shell, QWidget *parent) : QDialog(parent), m_shell(shell)
{
    setObjectName(QStringLiteral("frmtransmarkt"));
    setWindowTitle(QStringLiteral("Transfermarkt"));
    const QString modes[2] = {QStringLiteral("Freie Spieler"), QStringLiteral("Editorspieler")};
    for (int i = 0; i < 2; ++i) {
        m_mode[i] = new QRadioButton(modes[i], this);
        m_mode[i]->setObjectName(QStringLiteral("Opttransfer(%1)").arg(i));
        connect(m_mode[i], &QRadioButton::clicked, this, [this, i] { modechanged(i); });
    }
    m_mode[0]->setChecked(true);
    m_freeclubs = new QComboBox(this);
    m_freeclubs->setObjectName(QStringLiteral("cbovereine"));
    connect(m_freeclubs, &QComboBox::activated, this, &TransferWindow::freeclubchosen);
    const QString names[2] = {QStringLiteral("lstvfspieler"), QStringLiteral("lstvtmarkt")};
    for (int i = 0; i < 2; ++i) {
        m_clubs[i] = new QComboBox(this);
        m_clubs[i]->setObjectName(QStringLiteral("cbovereineeditor(%1)").arg(i));
        m_clubs[i]->setModel(shell.lists()->vereine());
        keepchoice(m_clubs[i]);
        m_clubs[i]->setCurrentIndex(-1);
        connect(m_clubs[i], &QComboBox::activated, this, [this, i] { clubchosen(i); });
        m_lists[i] = new QTreeWidget(this);
        m_lists[i]->setObjectName(names[i]);
        m_lists[i]->setHeaderLabels({QStringLiteral("Name"), QStringLiteral("Position"), QStringLiteral("Stärke"),
                                     QStringLiteral("art")});
        m_lists[i]->setColumnHidden(3, true);
        m_lists[i]->setRootIsDecorated(false);
        m_lists[i]->setSelectionMode(QAbstractItemView::SingleSelection);
        m_lists[i]->header()->setSectionResizeMode(0, QHeaderView::Stretch);
        connect(m_lists[i], &QTreeWidget::itemClicked, this, [this, i](QTreeWidgetItem *item) { picked(i, item); });
    }
    m_clubs[0]->hide();
    for (int i = 0; i < 2; ++i) {
        m_sides[i] = new QLabel(this);
        m_sides[i]->setObjectName(QStringLiteral("lblseite(%1)").arg(i));
        m_sides[i]->setWordWrap(true);
    }
    m_summary = new QLabel(this);
    m_summary->setObjectName(QStringLiteral("lbltausch"));
    m_summary->setWordWrap(true);
    m_swap = new QPushButton(QStringLiteral("Spieler tauschen"), this);
    m_swap->setObjectName(QStringLiteral("btnspielertausch"));
    m_swap->setEnabled(false);
    connect(m_swap, &QPushButton::clicked, this, &TransferWindow::swap);
    auto *cancel = new QPushButton(QStringLiteral("Abbrechen"), this);
    cancel->setObjectName(QStringLiteral("Command1"));
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto *grid = new QGridLayout(this);
    grid->addWidget(m_mode[0], 0, 0);
    grid->addWidget(m_mode[1], 0, 1);
    grid->addWidget(m_freeclubs, 1, 0, 1, 2);
    grid->addWidget(m_clubs[0], 2, 0, 1, 2);
    grid->addWidget(m_sides[0], 3, 0, 1, 2);
    grid->addWidget(m_lists[0], 4, 0, 1, 2);
    grid->addWidget(m_clubs[1], 1, 2, 2, 2);
    grid->addWidget(m_sides[1], 3, 2, 1, 2);
    grid->addWidget(m_lists[1], 4, 2, 1, 2);
    grid->addWidget(m_summary, 5, 0, 1, 4);
    grid->addWidget(m_swap, 6, 1, 1, 2);
    grid->addWidget(cancel, 6, 3);
    resize(820, 560);
    tellsides();
}

bool TransferWindow::freemode() const
{
    return m_mode[0]->isChecked();
}

void TransferWindow::loadfreispielerland()
{
    const QString shown = m_freeclubs->currentText();
    m_freeclubs->clear();
    try {
        m_freeclubs->addItems(freeclubs(*m_shell.db()));
    } catch (const DbError &e) {
        m_shell.dialogs().warning(this, windowTitle(), e.text());
    }
    m_freeclubs->setCurrentIndex(m_freeclubs->findText(shown));
}

void TransferWindow::modechanged(int mode)
{
    m_pick[0] = nullptr;
    m_lists[0]->clear();
    m_freeclubs->setVisible(mode == 0);
    m_clubs[0]->setVisible(mode == 1);
    m_freeclubs->setCurrentIndex(-1);
    m_clubs[0]->setCurrentIndex(-1);
    updatebutton();
}

void TransferWindow::freeclubchosen()
{
    if (m_freeclubs->currentIndex() < 0)
        return;
    try {
        fill(0, freeplayers(*m_shell.db(), m_freeclubs->currentText()));
    } catch (const DbError &e) {
        m_shell.dialogs().warning(this, windowTitle(), e.text());
    }
}

void TransferWindow::clubchosen(int side)
{
    m_pick[0] = m_pick[1] = nullptr;
    for (QTreeWidget *list : m_lists) {
        for (int i = 0; i < list->topLevelItemCount(); ++i) {
            QTreeWidgetItem *item = list->topLevelItem(i);
            for (int c = 0; c < 4; ++c)
                item->setForeground(c, palette().brush(QPalette::Disabled, QPalette::Text));
        }
    }
    if (m_clubs[side]->currentIndex() < 0) {
        updatebutton();
        return;
    }
    try {
        fill(side, squadentries(*m_shell.db(), m_clubs[side]->currentData().toLongLong()));
    } catch (const DbError &e) {
        m_shell.dialogs().warning(this, windowTitle(), e.text());
    }
}

void TransferWindow::fill(int side, const QList<SwapEntry> &entries)
{
    QTreeWidget *list = m_lists[side];
    m_pick[side] = nullptr;
    list->clear();
    const QBrush grey = palette().brush(QPalette::Disabled, QPalette::Text);
    for (const SwapEntry &e : entries) {
        auto *item = new QTreeWidgetItem(list);
        item->setText(0, e.text);
        item->setIcon(0, positionicon(e.art));
        item->setText(1, positionshort(e.art));
        item->setText(2, sternetext(e.staerke));
        item->setText(3, QString::number(e.art));
        item->setData(0, Qt::UserRole, e.key);
        for (int c = 0; c < 4; ++c)
            item->setForeground(c, grey);
    }
    updatebutton();
}

void TransferWindow::picked(int side, QTreeWidgetItem *item)
{
    if (m_pick[side])
        for (int c = 0; c < 4; ++c)
            m_pick[side]->setForeground(c, palette().brush(QPalette::Disabled, QPalette::Text));
    for (int c = 0; c < 4; ++c)
        item->setData(c, Qt::ForegroundRole, QVariant());
    m_pick[side] = item;
    updatebutton();
}

void TransferWindow::updatebutton()
{
    m_swap->setEnabled(m_pick[0] && m_pick[1] && !ghosted(m_pick[0]) && !ghosted(m_pick[1]));
    tellsides();
}

void TransferWindow::tellsides()
{
    const bool free = freemode();
    m_sides[0]->setText(free ? QStringLiteral("Freie Spieler: der gewählte kommt in den Verein rechts.")
                             : QStringLiteral("Verein links: der gewählte Spieler geht in den Verein rechts."));
    m_sides[1]->setText(free ? QStringLiteral("Verein: der gewählte Spieler geht zu den freien Spielern links.")
                             : QStringLiteral("Verein rechts: der gewählte Spieler geht in den Verein links."));
    if (!m_swap->isEnabled()) {
        m_summary->setText(QStringLiteral("Links und rechts je einen Spieler wählen."));
        return;
    }
    const QString in = m_pick[0]->text(0), out = m_pick[1]->text(0), club = m_clubs[1]->currentText();
    m_summary->setText(free ? QStringLiteral("%1 (frei, %2) kommt zu %3, %4 geht zu den freien Spielern von %2.")
                                  .arg(in, m_freeclubs->currentText(), club, out)
                            : QStringLiteral("%1 geht von %2 zu %3, %4 geht von %3 zu %2.")
                                  .arg(in, m_clubs[0]->currentText(), club, out));
}

void TransferWindow::swap()
{
    if (!m_pick[0] || !m_pick[1])
        return;
    const qint64 left = m_pick[0]->data(0, Qt::UserRole).toLongLong();
    const qint64 right = m_pick[1]->data(0, Qt::UserRole).toLongLong();
    const qint64 rightclub = m_clubs[1]->currentData().toLongLong();
    Result done;
    if (freemode()) {
        const QString exporter = m_freeclubs->currentText();
        done = m_shell.run([&](Database &db) { return swapfree(db, left, right, rightclub, exporter); }, {},
                           swapfreestep(left, right));
    } else {
        const qint64 leftclub = m_clubs[0]->currentData().toLongLong();
        done = m_shell.run([&](Database &db) { return swapplayers(db, left, right, leftclub, rightclub); }, {},
                           swapstep(left, right));
    }
    if (done)
        m_shell.status(done.message);
    else
        m_shell.dialogs().warning(this, windowTitle(), done.message);
    if (freemode()) {
        clubchosen(1);
        freeclubchosen();
    } else {
        clubchosen(0);
        clubchosen(1);
    }
}

} // namespace zorbo
