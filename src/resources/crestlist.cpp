#include "resources/crestlist.h"

#include "platform/profile.h"
#include "resources/filebytes.h"

#include <QFileInfo>

namespace zorbo {

namespace {

bool wholenumber(const QString &text, int &value)
{
    bool ok = false;
    value = text.trimmed().toInt(&ok);
    return ok;
}

} // namespace

Result readcrestlist(const QString &file, CrestList &list)
{
    if (!QFileInfo(file).isFile())
        return Result::failure(QStringLiteral("Die Wappenliste %1 fehlt; ohne sie ist nicht bekannt, welche Wappen "
                                              "ins Archiv gehören.").arg(file));
    const QStringList sections = readinisections(file);
    if (sections.isEmpty())
        return Result::failure(QStringLiteral("Die Wappenliste %1 enthält keinen Abschnitt.").arg(file));
    const QString head = sections.first();
    CrestList out;
    out.datei = readinistring(head, QStringLiteral("datei"), file);
    int anzahl = 0;
    if (const QString text = readinistring(head, QStringLiteral("anzahl"), file); !wholenumber(text, anzahl) || anzahl < 0)
        return Result::failure(QStringLiteral("%1, Abschnitt [%2]: „anzahl“ ist keine gültige Anzahl („%3“).")
                                   .arg(shortname(file), head, text));
    int type = 0;
    if (const QString text = readinistring(head, QStringLiteral("type"), file); !wholenumber(text, type))
        return Result::failure(QStringLiteral("%1, Abschnitt [%2]: „type“ ist keine Zahl („%3“).")
                                   .arg(shortname(file), head, text));
    out.type = type;
    const qsizetype available = sections.size() - 1;
    if (anzahl > available)
        out.problems << QStringLiteral("%1 nennt %2 Wappen, enthält aber nur %3 Wappen-Abschnitte.")
                            .arg(shortname(file)).arg(anzahl).arg(available);
    for (qsizetype i = 1; i <= qMin<qsizetype>(anzahl, available); ++i)
        out.entries.append({sections[i]});
    list = std::move(out);
    return Result::success();
}

} // namespace zorbo
