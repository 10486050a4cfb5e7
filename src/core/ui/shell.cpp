#include "core/ui/shell.h"

#include <QAction>

namespace zorbo {

void Shell::setopen(const QString &name, bool open)
{
    QAction *act = entry(name);
    if (!act)
        return;
    act->setProperty("Offen", open);
    act->setEnabled(open && !act->property("pending").toBool());
}

} // namespace zorbo
