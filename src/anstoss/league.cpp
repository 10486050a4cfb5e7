#include "anstoss/league.h"

#include "anstoss/aetfile.h"
#include "anstoss/freeplayers.h"
#include "core/gamedb.h"
#include "platform/runner.h"

#include <QDir>
#include <QFileInfo>

namespace zorbo {

namespace {

// The value of a league line: what follows its last "=".
QString linevalue(const QString &line)
{
    return line.mid(line.lastIndexOf(QLatin1Char('=')) + 1).trimmed();
}

} // namespace

QString findfilenocase(const QString &path)
{
    if (QFileInfo(path).isFile())
        return path;
    // Walk the names from the root, taking each as spelt when it exists and
    // else the one entry of the folder that differs only in case.
    const bool absolute = path.startsWith(QLatin1Char('/'));
    const QStringList parts = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    QString at = absolute ? QStringLiteral("/") : QStringLiteral(".");
    for (int i = 0; i < parts.size(); ++i) {
        const QString &name = parts[i];
        const bool last = i == parts.size() - 1;
        QString next = QDir(at).filePath(name);
        if (name == QLatin1String(".") || name == QLatin1String("..") || QFileInfo::exists(next)) {
            at = next;
            continue;
        }
        const QStringList entries =
            QDir(at).entryList((last ? QDir::Files : QDir::Dirs) | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
        next.clear();
        for (const QString &entry : entries) {
            if (entry.compare(name, Qt::CaseInsensitive) == 0) {
                next = QDir(at).filePath(entry);
                break;
            }
        }
        if (next.isEmpty())
            return {};
        at = next;
    }
    return QFileInfo(at).isFile() ? at : QString();
}

LeagueList readleague(const QString &path, FileEncoding encoding, bool *looksUtf8)
{
    AetFile file;
    const Result loaded = file.load(path, AetKind::League, encoding);
    if (looksUtf8)
        *looksUtf8 = file.looksUtf8();
    if (!loaded)
        throw Fault(loaded.message, Finding{loaded.message, path});
    const QStringList sections = file.sections();
    LeagueList list;
    if (sections.isEmpty())
        return list;
    const QString d = QFileInfo(path).absolutePath() + QLatin1Char('/');
    // The exporter writes Windows paths; ours use "/".
    QString land = file.value(sections.first(), QStringLiteral("Land"));
    land.replace(QLatin1Char('\\'), QLatin1Char('/'));
    const QString l = QDir::isAbsolutePath(land) ? land : d + land;
    for (int s = 1; s < sections.size(); ++s) {
        const QString &league = sections[s];
        for (const QString &line : file.sectionlines(league)) {
            const QString name = linevalue(line);
            if (name.isEmpty())
                continue;
            bool found = false;
            for (const QString &place : {d + league + QLatin1Char('/'), l + QLatin1Char('/') + league + QLatin1Char('/')}) {
                const QString club = findfilenocase(place + name + QStringLiteral(".aet"));
                if (!club.isEmpty()) {
                    list.clubs.append({league, name, club});
                    found = true;
                }
            }
            if (!found)
                list.missing.append(league + QLatin1Char('/') + name);
        }
    }
    if (list.clubs.isEmpty()) {
        const QString why = QStringLiteral("von den %1 Vereinsdateien, die sie nennt, ist keine zu finden (die erste: %2.aet).")
                                .arg(list.missing.size())
                                .arg(list.missing.value(0));
        throw Fault(QStringLiteral("Die Datei %1: %2").arg(file.shownname(), why), Finding{why, path});
    }
    return list;
}

AnstossResult importleague(Database &db, const QString &path, const Progress &progress,
                           const std::function<void(const QString &)> &leagueshown, FileEncoding encoding)
{
    bool looksUtf8 = false;
    AnstossResult done = runtransaction(db, QStringLiteral("Die Liga wurde nicht importiert"), [&] {
        const LeagueList list = readleague(path, encoding, &looksUtf8);
        AnstossResult r;
        r.missing = list.missing;
        QString league;
        A4Keys keys(db);
        for (int i = 0; i < list.clubs.size(); ++i) {
            const LeagueClub &club = list.clubs[i];
            if (leagueshown && club.league != league)
                leagueshown(club.league);
            league = club.league;
            report(progress, i, list.clubs.size());
            AetFile file;
            const Result loaded = file.load(club.path, AetKind::Club, encoding);
            looksUtf8 = file.looksUtf8();
            if (!loaded)
                throw Fault(loaded.message, Finding{loaded.message, club.path});
            const AnstossResult one = importfreeplayers(db, file, {}, {}, &keys);
            r.players += one.players;
            r.duplicates += one.duplicates;
            r.clubs += one.clubs;
        }
        report(progress, list.clubs.size(), list.clubs.size());
        for (const QString &m : r.missing)
            r.findings.append(Finding{QStringLiteral("Vereinsdatei %1.aet an keinem der beiden Orte gefunden").arg(m), path});
        r.result = Result::success(
            QStringLiteral("%1 Vereine mit %2 Spielern in Freie Spieler importiert.").arg(r.clubs).arg(r.players)
            + duplicatestext(r.duplicates));
        return r;
    });
    done.looksUtf8 = !done.ok() && looksUtf8;
    return done;
}

} // namespace zorbo
