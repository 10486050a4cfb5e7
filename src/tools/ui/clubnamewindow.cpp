#include "tools/ui/clubnamewindow.h"

#include "core/ui/dialogs.h"
#include "core/ui/shell.h"
#include "tools/clubnames.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>

namespace zorbo {

ClubNameWindow::ClubNameWindow(Shell &shell, QWidget *parent)
    : TeamCheckWindow(shell, parent, QStringLiteral("frmteamname"), QStringLiteral("Teamname"),
                      QStringLiteral("Lange Teamnamen suchen (>15 Zeichen)"))
{
    m_clubs = new QListWidget(this);
    m_clubs->setObjectName(QStringLiteral("lstvereine"));
    const QString captions[3] = {QStringLiteral("ganzer Name"), QStringLiteral("links be- schneiden"),
                                 QStringLiteral("rechts be- schneiden")};
    for (int i = 0; i < 3; ++i) {
        m_options[i] = new QRadioButton(captions[i], this);
        m_options[i]->setObjectName(QStringLiteral("optname(%1)").arg(i));
        connect(m_options[i], &QRadioButton::clicked, this, [this] {
            if (m_clubs->currentItem())
                propose();
        });
    }
    m_options[0]->setChecked(true);
    m_name = new QLineEdit(this);
    m_name->setObjectName(QStringLiteral("txtteamneu"));
    m_update = new QPushButton(QStringLiteral(" speichern"), this);
    m_update->setObjectName(QStringLiteral("btnupdate"));
    m_update->setEnabled(false);

    QGridLayout *grid = this->grid();
    grid->addWidget(m_clubs, 1, 0, 1, 3);
    for (int i = 0; i < 3; ++i)
        grid->addWidget(m_options[i], 2, i);
    grid->addWidget(new QLabel(QStringLiteral("neuer Teamname"), this), 3, 0);
    grid->addWidget(m_name, 3, 1);
    grid->addWidget(m_update, 3, 2);
    resize(420, 420);

    connect(m_start, &QPushButton::clicked, this, &ClubNameWindow::search);
    connect(m_clubs, &QListWidget::itemClicked, this, &ClubNameWindow::propose);
    connect(m_name, &QLineEdit::textChanged, this, [this](const QString &text) { m_update->setEnabled(!text.isEmpty()); });
    connect(m_update, &QPushButton::clicked, this, &ClubNameWindow::save);
}

void ClubNameWindow::search()
{
    m_clubs->clear();
    const auto found = TeamCheckWindow::search(
        [](Database &db, const Progress &progress) { return longclubnames(db, progress); });
    for (const NamedTeam &t : found.value_or(QList<NamedTeam>())) {
        auto *item = new QListWidgetItem(t.name, m_clubs);
        item->setData(Qt::UserRole, t.nummer);
    }
}

void ClubNameWindow::propose()
{
    const QListWidgetItem *item = m_clubs->currentItem();
    if (!item)
        return;
    const NameCut cut = m_options[1]->isChecked() ? NameCut::Left
                        : m_options[2]->isChecked() ? NameCut::Right
                                                    : NameCut::Whole;
    m_name->clear();
    m_name->setText(nameproposal(item->text(), cut));
}

void ClubNameWindow::save()
{
    QListWidgetItem *item = m_clubs->currentItem();
    if (!item)
        return;
    const QString name = m_name->text();
    const qint64 team = item->data(Qt::UserRole).toLongLong();
    const Result done = m_shell.run([&](Database &db) { return renameclub(db, team, name); }, {}, renameclubstep(team, name));
    if (!done.ok) {
        m_shell.dialogs().warning(this, windowTitle(), done.message);
        return;
    }
    item->setText(name);
    m_shell.status(done.message);
    if (name.size() <= longestClubName)
        search();
}

} // namespace zorbo
