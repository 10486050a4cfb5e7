#include "tools/ui/picturewindow.h"

#include "core/ui/dialogs.h"
#include "core/ui/shell.h"
#include "platform/numbers.h"
#include "tools/playerpictures.h"

#include <QEventLoop>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

namespace zorbo {

PictureWindow::PictureWindow(Shell &shell, QWidget *parent) : QDialog(parent), m_shell(shell)
{
    setObjectName(QStringLiteral("frmspielerbild"));
    setWindowTitle(QStringLiteral("Spielerbilder"));
    m_files = new QListWidget(this);
    m_files->setObjectName(QStringLiteral("Filbild"));
    m_file = new QLabel(this);
    m_file->setObjectName(QStringLiteral("Label1"));
    auto *form = new QLabel(QStringLiteral("Namensformat: Name_Vorname.jpg"), this);
    form->setObjectName(QStringLiteral("Label2"));
    m_names = new QListWidget(this);
    m_names->setObjectName(QStringLiteral("lstnamen"));
    m_start = new QPushButton(QStringLiteral("Start"), this);
    m_start->setObjectName(QStringLiteral("btnstart"));
    auto *cancel = new QPushButton(QStringLiteral("Abbrechen"), this);
    cancel->setObjectName(QStringLiteral("btnabbrechen"));

    auto *grid = new QGridLayout(this);
    grid->addWidget(m_files, 0, 0, 4, 1);
    grid->addWidget(form, 0, 1, 1, 2);
    grid->addWidget(m_file, 1, 1, 1, 2);
    grid->addWidget(m_names, 2, 1, 1, 2);
    grid->addWidget(m_start, 3, 1);
    grid->addWidget(cancel, 3, 2);
    resize(640, 400);

    connect(m_start, &QPushButton::clicked, this, &PictureWindow::run);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    // A click on a candidate decides the picture at hand, and the run goes on.
    connect(m_names, &QListWidget::itemClicked, this, [this] {
        if (m_waiting)
            m_waiting->quit();
    });
    refresh();
}

void PictureWindow::refresh()
{
    m_files->clear();
    m_files->addItems(namedpictures(m_shell.settings().folder(ZorbospielerFolder)));
}

void PictureWindow::reject()
{
    // Closing while the run waits ends it; no file is half renamed.
    m_stop = true;
    if (m_waiting)
        m_waiting->quit();
    QDialog::reject();
}

void PictureWindow::run()
{
    if (!m_shell.db())
        return;
    m_start->setEnabled(false);
    m_stop = false;
    m_shell.status(QStringLiteral("Ordne Spielerbilder zu..."));
    const auto choose = [this](const QString &file, const QList<PictureCandidate> &candidates, bool *stop) {
        m_file->setText(file);
        m_names->clear();
        for (const PictureCandidate &c : candidates) {
            auto *item = new QListWidgetItem(c.line, m_names);
            item->setData(Qt::UserRole, c.nummer);
        }
        QEventLoop waiting;
        m_waiting = &waiting;
        waiting.exec();
        m_waiting = nullptr;
        std::optional<qint64> chosen;
        if (m_names->currentItem() && !m_stop)
            chosen = m_names->currentItem()->data(Qt::UserRole).toLongLong();
        m_names->clear();
        *stop = m_stop;
        return chosen;
    };
    const PictureRun done = assignpictures(*m_shell.db(), m_shell.settings().folder(ZorbospielerFolder),
                                           systemDecimalSign(), choose, [this](qint64, qint64) {
                                               // What is done leaves the list as the run goes.
                                               refresh();
                                               return true;
                                           });
    m_file->clear();
    m_shell.status(done.result.message);
    if (!done.result.ok && !done.result.cancelled)
        m_shell.dialogs().warning(this, windowTitle(), done.result.message);
    refresh();
    m_start->setEnabled(true);
}

} // namespace zorbo
