#include "resources/crestlist.h"

#include "platform/profile.h"
#include "platform/profilefile.h"
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

QSet<QString> namedcrests(const QStringList &sections)
{
    QSet<QString> known;
    for (qsizetype i = 1; i < sections.size(); ++i)
        known.insert(sections[i].toLower());
    return known;
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
        out.findings << Finding{.text = QStringLiteral("die Liste nennt %1 Wappen, enthält aber nur %2 Wappen-Abschnitte.")
                                            .arg(anzahl)
                                            .arg(available),
                                .file = file};
    for (qsizetype i = 1; i <= qMin<qsizetype>(anzahl, available); ++i)
        out.entries.append({sections[i]});
    list = std::move(out);
    return Result::success();
}

QString crestnamereason(const QString &name)
{
    if (name.contains(QLatin1Char(' ')))
        return QStringLiteral("der Name enthält ein Leerzeichen, bei dem wa.lst oder das Archiv ihn abschneiden");
    if (name.contains(QLatin1Char(']')))
        return QStringLiteral("der Name enthält „]“, das in wa.lst den Abschnittsnamen beendet");
    return {};
}

QStringList missingfromcrestlist(const QString &file, const QStringList &names)
{
    QSet<QString> known = QFileInfo(file).isFile() ? namedcrests(readinisections(file)) : QSet<QString>();
    QStringList missing;
    for (const QString &name : names) {
        if (known.contains(name.toLower()))
            continue;
        known.insert(name.toLower());
        missing << name;
    }
    return missing;
}

Result completecrestlist(const QString &source, const QString &target, const QString &archiveName,
                         const QStringList &names, int *added)
{
    ProfileFile list;
    if (!list.load(source) && QFileInfo::exists(source))
        return Result::failure(QStringLiteral("Die Wappenliste %1 lässt sich nicht lesen.").arg(source));
    const QStringList missing = missingfromcrestlist(source, names);
    if (added)
        *added = int(missing.size());
    if (missing.isEmpty() && source == target)
        return Result::success();
    auto &lines = list.lines();
    int head = -1;
    for (size_t i = 0; i < lines.size() && head < 0; ++i)
        if (lines[i].kind == ProfileFile::Kind::Section)
            head = int(i);
    if (head < 0) {
        head = int(lines.size());
        for (const QString &text : {QStringLiteral("[wa]"), QStringLiteral("datei=") + archiveName,
                                    QStringLiteral("anzahl=0"), QStringLiteral("type=14")})
            lines.push_back(ProfileFile::parseLine(text));
    }
    for (const QString &name : missing) {
        lines.push_back(ProfileFile::parseLine(QLatin1Char('[') + name + QLatin1Char(']')));
        lines.push_back(ProfileFile::parseLine(QStringLiteral("datei=%1.gfp").arg(name)));
    }
    int crests = -1;
    for (const ProfileFile::Line &line : lines)
        crests += line.kind == ProfileFile::Kind::Section ? 1 : 0;
    const QString count = QStringLiteral("anzahl=") + QString::number(crests);
    const int end = list.sectionEnd(head);
    int at = head + 1;
    while (at < end && !(lines[size_t(at)].kind == ProfileFile::Kind::Entry && lines[size_t(at)].hasValue
                         && ProfileFile::sameName(lines[size_t(at)].name, QStringLiteral("anzahl"))))
        ++at;
    if (at < end)
        lines[size_t(at)] = ProfileFile::parseLine(count);
    else
        lines.insert(lines.begin() + head + 1, ProfileFile::parseLine(count));
    if (!list.save(target))
        return Result::failure(QStringLiteral("Die Wappenliste %1 lässt sich nicht schreiben.").arg(target));
    return Result::success();
}

Result addtocrestlist(const QString &wappenFolder, const QStringList &names, int *added)
{
    const QString file = wappenFolder + QStringLiteral("wa.lst");
    return completecrestlist(file, file, QStringLiteral("wa.res"), names, added);
}

} // namespace zorbo
