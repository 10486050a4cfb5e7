#include "resources/crestlist.h"

#include "platform/codepage.h"
#include "platform/profile.h"
#include "resources/filebytes.h"

#include <QFileInfo>
#include <QSet>

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

Result completecrestlist(const QString &file, const QString &archiveName, const QStringList &names, int *added)
{
    const bool exists = QFileInfo(file).isFile();
    QStringList sections = exists ? readinisections(file) : QStringList();
    QByteArray text;
    if (exists) {
        if (Result r = readfilebytes(file, 16 * 1024 * 1024, text); !r)
            return r;
    }
    QString head = sections.isEmpty() ? QStringLiteral("wa") : sections.first();
    QSet<QString> known;
    for (qsizetype i = 1; i < sections.size(); ++i)
        known.insert(sections[i].toLower());

    QString appended;
    if (sections.isEmpty())
        appended = QStringLiteral("[%1]\r\ndatei=%2\r\nanzahl=0\r\ntype=14\r\n").arg(head, archiveName);
    int count = 0;
    for (const QString &name : names) {
        if (known.contains(name.toLower()))
            continue;
        known.insert(name.toLower());
        // A new section goes at the end of the file, as the profile writer
        // would put it, written in one go rather than one rewrite per crest.
        appended += QStringLiteral("[%1]\r\ndatei=%1.gfp\r\n").arg(name);
        ++count;
    }
    if (added)
        *added = count;
    if (appended.isEmpty())
        return Result::success();
    const auto bytes = toCp1252(appended);
    if (!bytes)
        return Result::failure(QStringLiteral("Die Wappenliste %1 kann diese Namen nicht aufnehmen.").arg(file));
    if (!text.isEmpty() && !text.endsWith('\n') && !text.endsWith('\r'))
        text += "\r\n";
    if (Result r = writefilebytes(file, text + *bytes); !r)
        return r;
    const qsizetype crestSections = readinisections(file).size() - 1;
    if (!writeini(head, QStringLiteral("anzahl"), QString::number(crestSections), file))
        return Result::failure(QStringLiteral("In der Wappenliste %1 lässt sich „anzahl“ nicht schreiben.").arg(file));
    return Result::success();
}

} // namespace zorbo
