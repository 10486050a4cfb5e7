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

ClubNameWindow::ClubNameWindow(Shell &shell, QWidget *parent) : QDialog(parent), m_shell(shell)
{
    setObjectName(QStringLiteral("frmteamname"));
    setWindowTitle(QStringLiteral("Teamname"));
    m_start = new QPushButton(QStringLiteral("Lange Teamnamen suchen (>15 Zeichen)"), this);
    m_start->setObjectName(QStringLiteral("btnstart"));
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
    auto *cancel = new QPushButton(QStringLiteral("Abbrechen"), this);
    cancel->setObjectName(QStringLiteral("btnabbrechen"));

    auto *grid = new QGridLayout(this);
    grid->addWidget(m_start, 0, 0, 1, 3);
    grid->addWidget(m_clubs, 1, 0, 1, 3);
    for (int i = 0; i < 3; ++i)
        grid->addWidget(m_options[i], 2, i);
    grid->addWidget(new QLabel(QStringLiteral("neuer Teamname"), this), 3, 0);
    grid->addWidget(m_name, 3, 1);
    grid->addWidget(m_update, 3, 2);
    grid->addWidget(cancel, 4, 2);
    resize(420, 420);

    connect(m_start, &QPushButton::clicked, this, &ClubNameWindow::search);
    connect(m_clubs, &QListWidget::itemClicked, this, &ClubNameWindow::propose);
    connect(m_name, &QLineEdit::textChanged, this, [this](const QString &text) { m_update->setEnabled(!text.isEmpty()); });
    connect(m_update, &QPushButton::clicked, this, &ClubNameWindow::save);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void ClubNameWindow::search()
{
    m_start->setEnabled(false);
    m_clubs->clear();
    QList<NamedTeam> found;
    try {
        const auto busy = m_shell.busy(QStringLiteral("Suche Vereine..."));
        found = longclubnames(*m_shell.db(), busy->progress());
    } catch (const DbError &e) {
        m_shell.dialogs().warning(this, windowTitle(), e.text());
    } catch (const Cancelled &) {
    }
    m_shell.status(QString());
    if (found.isEmpty())
        m_shell.dialogs().information(this, windowTitle(), QStringLiteral("Keine Fehler vorhanden"));
    for (const NamedTeam &t : std::as_const(found)) {
        auto *item = new QListWidgetItem(t.name, m_clubs);
        item->setData(Qt::UserRole, t.nummer);
    }
    m_start->setEnabled(true);
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
