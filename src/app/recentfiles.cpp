// "Datei → Zuletzt geöffnet": filled from the settings each time it opens,
// so it shows what any window opened or imported up to then.
#include "app/mainwindow.h"
#include "core/ui/shell.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMenu>

namespace zorbo {

void installrecentfiles(Shell &shell)
{
    QAction *entry = shell.entry(QStringLiteral("mnudateiitem(10)"));
    QMenu *menu = entry ? entry->menu() : nullptr;
    if (!menu)
        return;
    QObject::connect(menu, &QMenu::aboutToShow, menu, [&shell, menu] {
        menu->clear();
        const QStringList files = shell.settings().recentfiles;
        for (int i = 0; i < files.size(); ++i) {
            const QString file = files[i];
            const QString kind = shell.settings().recentkinds.value(file);
            // "&1 Fortuna Großgmain.tea" with the whole path as the tip; an
            // import says which: "&2 1_tm.cfg (Import Vereine)".
            QString text = QStringLiteral("&%1 %2").arg(i + 1).arg(QFileInfo(file).fileName());
            if (const QString words = shell.importwords(kind); !words.isEmpty())
                text += QStringLiteral(" (%1)").arg(words);
            QAction *act = menu->addAction(text);
            act->setObjectName(QStringLiteral("mnuzuletztitem(%1)").arg(i));
            act->setToolTip(QDir::toNativeSeparators(file));
            act->setStatusTip(QDir::toNativeSeparators(file));
            QObject::connect(act, &QAction::triggered, &shell, [&shell, file, kind] { shell.openpath(file, kind); });
        }
        if (files.isEmpty())
            menu->addAction(QStringLiteral("(keine)"))->setEnabled(false);
    });
    // Without a world there is nothing to open the files into.
    QObject::connect(&shell, &Shell::opened, menu, [&shell, entry] { entry->setEnabled(shell.db() != nullptr); });
}

} // namespace zorbo
