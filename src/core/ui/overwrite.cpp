#include "core/ui/overwrite.h"

#include "core/gamefiles.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"
#include "platform/dberror.h"

#include <QDir>
#include <QFileInfo>

namespace zorbo {

bool mayoverwrite(Shell &shell, const QString &title, const QString &file)
{
    QString why;
    try {
        QDateTime when;
        if (!shell.db() || !changedsince(*shell.db(), file, &when))
            return true;
        why = changedwords(file, when)
              + QStringLiteral("\n\nEin anderes Programm, ein Patch des Spiels oder ein zweiter Editor hat sie geschrieben.");
    } catch (const DbError &e) {
        // A world that can't tell is no sign that the file is unchanged.
        if (!QFileInfo(file).isFile())
            return true;
        why = QStringLiteral("Ob die Datei %1 seit dem letzten Import oder Export des Editors geändert wurde, lässt sich "
                             "nicht feststellen: %2")
                  .arg(QDir::toNativeSeparators(file), e.text());
    }
    const int answer = shell.dialogs().choosenodefault(
        shell.window(), title, why + QStringLiteral(" Soll der Export sie überschreiben?"),
        {QStringLiteral("Überschreiben"), QStringLiteral("Erst vergleichen"), QStringLiteral("Abbrechen")});
    if (answer == 1)
        shell.comparegamefile(file);
    return answer == 0;
}

} // namespace zorbo
