#include "anstoss/ui/anstossmenus.h"

#include "core/gamedb.h"
#include "core/ui/shell.h"

#include <QAction>

namespace zorbo {

void installanstoss(Shell &shell)
{
    QObject::connect(&shell, &Shell::changed, &shell, [&shell](const Change &change) {
        if (!change.everything && !change.tables.contains(QStringLiteral("a4spieler")))
            return;
        if (QAction *button = shell.entry(QStringLiteral("impanstoss4")))
            button->setEnabled(shell.db() && checka4(*shell.db()));
    });
}

} // namespace zorbo
