#include "tools/playerpictures.h"

#include "platform/fileerror.h"
#include "platform/numbers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace zorbo {

namespace {

bool startsWithLetter(const QString &name)
{
    if (name.isEmpty())
        return false;
    const QChar c = name.front().toLower();
    return (c >= QLatin1Char('a') && c <= QLatin1Char('z')) || c == QChar(0xE4) || c == QChar(0xF6) || c == QChar(0xFC);
}

bool isJpg(const QString &name)
{
    return name.endsWith(QLatin1String(".jpg"), Qt::CaseInsensitive);
}

// A name in the folder that no file has yet: base, else "base (2)" and on.
QString freename(const QDir &dir, const QString &file)
{
    if (!dir.exists(file))
        return file;
    const QFileInfo info(file);
    for (int i = 2;; ++i) {
        const QString name = QStringLiteral("%1 (%2).%3").arg(info.completeBaseName()).arg(i).arg(info.suffix());
        if (!dir.exists(name))
            return name;
    }
}

Result stopped(int assigned)
{
    Result r = Result::failure(QStringLiteral("Abgebrochen: %1 Bilder wurden zugeordnet, die übrigen bleiben, wie sie sind.")
                                   .arg(assigned));
    r.cancelled = true;
    return r;
}

} // namespace

QStringList namedpictures(const QString &folder)
{
    QStringList found;
    const QDir dir(folder);
    for (const QString &name : dir.entryList(QDir::Files | QDir::Hidden, QDir::Name | QDir::IgnoreCase)) {
        if (startsWithLetter(name) && isJpg(name))
            found << name;
    }
    return found;
}

QList<PictureCandidate> picturecandidates(Database &db, const QString &file, QChar decimalSign)
{
    const qsizetype underscore = file.indexOf(QLatin1Char('_'));
    // A player's club, for telling apart players of one name: his first club
    // of vereine, the market included, national teams not.
    const QString columns = QStringLiteral(
        "SELECT s.NUMMER, s.NAME, s.VORNAME, s.NATION, s.\"Stärke\", s.RUECKENNUMMER, "
        "(SELECT c.NAME FROM kaderzeilen k JOIN vereine c ON c.NUMMER = k.verein WHERE k.spieler = s.NUMMER "
        "ORDER BY c.NUMMER LIMIT 1) FROM spieler s ");
    // Of the first name only its first letter counts, on either side: the
    // world may hold "B." or "Björn"; pieces behind a second underscore don't.
    Statement st = db.prepare(
        columns + (underscore >= 0 ? QStringLiteral("WHERE samename(s.NAME, ?1) AND samename(substr(s.VORNAME, 1, 1), ?2) "
                                                    "ORDER BY s.NUMMER")
                                   : QStringLiteral("WHERE samename(s.NAME, ?1) ORDER BY s.NUMMER")));
    if (underscore >= 0)
        st.bindAll(file.left(underscore), file.mid(underscore + 1).left(1));
    else
        st.bind(1, file.section(QLatin1Char('.'), 0, 0));
    QList<PictureCandidate> candidates;
    while (st.step()) {
        const QString stars = formatDecimal(double(st.integer(4)) / 2000.0, decimalSign);
        const QString club = st.isNull(6) ? QStringLiteral("ohne Verein") : st.text(6);
        candidates << PictureCandidate{st.integer(0), QStringLiteral("%1 %2 (%3; %4 Sterne), %5, Nr. %6 [%7]")
                                                          .arg(st.text(1), st.text(2), st.text(3), stars, club,
                                                               st.text(5))
                                                          .arg(st.integer(0))};
    }
    return candidates;
}

Result assignpicture(const QString &folder, const QString &file, qint64 nummer)
{
    QDir dir(folder);
    const QString target = QStringLiteral("%1.jpg").arg(nummer);
    if (file.contains(QLatin1Char('/')) || file.contains(QLatin1Char('\\')) || !dir.exists(file))
        return Result::failure(QStringLiteral("Das Bild %1 liegt nicht (mehr) in %2.").arg(file, QDir::toNativeSeparators(folder)));
    if (file == target)
        return Result::success();
    // Every file that the game could take for the player's picture.
    const QStringList present = dir.entryList({QStringLiteral("%1.*").arg(nummer)}, QDir::Files | QDir::Hidden);
    for (const QString &old : present) {
        if (old.compare(target, Qt::CaseInsensitive) != 0 || old == file)
            continue;
        if (!dir.exists(QStringLiteral("ersetzt")) && !dir.mkdir(QStringLiteral("ersetzt")))
            return Result::failure(QStringLiteral("Der Ordner %1 lässt sich nicht anlegen; %2 bleibt, wie es ist.")
                                       .arg(QDir::toNativeSeparators(dir.filePath(QStringLiteral("ersetzt"))), file));
        const QDir kept(dir.filePath(QStringLiteral("ersetzt")));
        QFile moving(dir.filePath(old));
        if (!moving.rename(kept.filePath(freename(kept, old))))
            return Result::failure(QStringLiteral("Das alte Bild %1 lässt sich nicht nach „ersetzt“ verschieben (%2); "
                                                  "%3 bleibt, wie es ist.")
                                       .arg(old, fileerrortext(moving), file));
    }
    QFile picture(dir.filePath(file));
    if (!picture.rename(dir.filePath(target)))
        return Result::failure(
            QStringLiteral("Das Bild %1 lässt sich nicht in %2 umbenennen: %3").arg(file, target, fileerrortext(picture)));
    return Result::success(QStringLiteral("%1 heißt jetzt %2.").arg(file, target));
}

PictureRun assignpictures(Database &db, const QString &folder, QChar decimalSign, const PictureChoice &choose,
                          const Progress &progress)
{
    PictureRun run;
    if (!QFileInfo(folder).isDir()) {
        run.result = Result::failure(QStringLiteral("Den Ordner der Spielerbilder %1 gibt es nicht.")
                                         .arg(QDir::toNativeSeparators(folder)));
        return run;
    }
    const QStringList files = namedpictures(folder);
    try {
        for (qsizetype i = files.size() - 1; i >= 0; --i) {
            const QString &file = files[i];
            const QList<PictureCandidate> candidates = picturecandidates(db, file, decimalSign);
            std::optional<qint64> chosen;
            if (candidates.size() == 1) {
                chosen = candidates.first().nummer;
            } else if (candidates.size() > 1) {
                bool stop = false;
                if (choose)
                    chosen = choose(file, candidates, &stop);
                if (stop) {
                    run.result = stopped(run.assigned);
                    return run;
                }
                if (!chosen)
                    run.undecided.append({file, candidates});
            } else {
                run.unmatched << file;
            }
            if (chosen) {
                const Result done = assignpicture(folder, file, *chosen);
                if (!done) {
                    run.result = Result::failure(done.message + QStringLiteral(" (%1 Bilder waren schon zugeordnet.)")
                                                                    .arg(run.assigned));
                    return run;
                }
                ++run.assigned;
            }
            report(progress, files.size() - i, files.size());
        }
    } catch (const Cancelled &) {
        run.result = stopped(run.assigned);
        return run;
    } catch (const DbError &e) {
        run.result = Result::failure(QStringLiteral("Die Spieler lassen sich nicht lesen: %1").arg(e.text()));
        return run;
    }
    run.result = Result::success(QStringLiteral("%1 Bilder zugeordnet, %2 ohne passenden Spieler, %3 mit mehreren Spielern.")
                                     .arg(run.assigned)
                                     .arg(run.unmatched.size())
                                     .arg(run.undecided.size()));
    return run;
}

} // namespace zorbo
