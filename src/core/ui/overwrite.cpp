#include "core/ui/overwrite.h"

#include "core/gamefiles.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"
#include "platform/dberror.h"

namespace zorbo {

bool mayoverwrite(Shell &shell, const QString &title, const QString &file)
{
    QDateTime when;
    try {
        if (!shell.db() || !changedsince(*shell.db(), file, &when))
            return true;
    } catch (const DbError &) {
        return true; // a world that can't tell asks nothing
    }
    const int answer = shell.dialogs().choosenodefault(
        shell.window(), title,
        changedwords(file, when)
            + QStringLiteral("\n\nEin anderes Programm, ein Patch des Spiels oder ein zweiter Editor hat sie geschrieben. "
                             "Soll der Export sie überschreiben?"),
        {QStringLiteral("Überschreiben"), QStringLiteral("Erst vergleichen"), QStringLiteral("Abbrechen")});
    if (answer == 1)
        shell.comparegamefile(file);
    return answer == 0;
}

} // namespace zorbo
