#include "tools/dbcare.h"

#include "core/gamedb.h"
#include "core/market.h"
#include "core/sizetext.h"
#include "platform/runner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <filesystem>
#include <system_error>

namespace zorbo {

Step wipestep()
{
    return {QStringLiteral("Datenbank gelöscht"), QStringLiteral("Datenbank löschen"), true};
}

Result del_db(Database &db, const Progress &progress)
{
    return runtransaction(db, QStringLiteral("Die Datenbank lässt sich nicht löschen"), [&] {
        for (const char *table : {"vereine", "vereine_national", "kaderzeilen", "spieler"})
            db.exec(QStringLiteral("DELETE FROM ") + QLatin1String(table));
        ensuretransfermarket(db, progress);
        return Result::success(QStringLiteral("Die Datenbank wurde geleert; der Transfermarkt wurde mit %1 Spielern neu "
                                              "angelegt.")
                                   .arg(marketPlayerCount));
    });
}

namespace {

// The copy must hold what the database holds: sound, and every table with
// its rows.
Result checkcopy(const QString &copy, const QList<QPair<QString, qint64>> &counts)
{
    Database check(copy);
    const QString integrity = check.scalar(QStringLiteral("PRAGMA integrity_check")).toString();
    if (integrity != QLatin1String("ok"))
        return Result::failure(QStringLiteral("Die komprimierte Kopie ist fehlerhaft (%1).").arg(integrity));
    if (tablecounts(check) != counts)
        return Result::failure(QStringLiteral("Die komprimierte Kopie hat nicht dieselben Zeilen wie die Datenbank."));
    return Result::success();
}

} // namespace

Result comp_db(World &world, const Progress &progress, bool dropHistory)
{
    Database *db = world.db();
    if (!db)
        return Result::failure(QStringLiteral("Es ist keine Datenbank geöffnet."));
    // The restore point holds the history too, whatever becomes of it.
    QString point;
    if (const Result kept = world.keeprestorepoint(QStringLiteral("Komprimieren"), &point); !kept)
        return Result::failure(kept.message + QStringLiteral(" Die Datenbank wurde nicht komprimiert."));
    const QString path = db->path();
    const QString copy = QFileInfo(path).dir().filePath(QStringLiteral("zorbo_komprimiert.tmp"));
    const QString lead = QStringLiteral("Die Datenbank lässt sich nicht komprimieren");
    const QString unchanged = dropHistory ? QStringLiteral(" Die Datenbank und ihr Verlauf bleiben, wie sie waren.")
                                          : QStringLiteral(" Die Datenbank bleibt, wie sie war.");
    const qint64 before = QFileInfo(path).size();
    // Until the copy takes the file's place nothing has changed, and the
    // restore point of the run goes again.
    const auto undone = [&](const Result &failed) {
        world.removerestorepoint(point);
        if (QFileInfo(copy).isFile())
            QFile::remove(copy);
        return failed;
    };
    const Result made = runguarded(lead, [&] {
        // A copy left by an earlier failure is ours and incomplete.
        if (QFileInfo(copy).isFile())
            QFile::remove(copy);
        report(progress, 0, 4);
        auto counts = tablecounts(*db);
        db->run(QStringLiteral("VACUUM INTO ?1"), copy);
        report(progress, 1, 4);
        if (dropHistory) {
            // Dropped in the copy only: the history goes when the copy
            // takes the database's place, and not before.
            Database compacted(copy);
            compacted.exec(QStringLiteral("DELETE FROM verlauf"));
            compacted.exec(QStringLiteral("VACUUM"));
            for (auto &[table, rows] : counts) {
                if (table == QLatin1String("verlauf"))
                    rows = 0;
            }
        }
        report(progress, 2, 4);
        const Result checked = checkcopy(copy, counts);
        // The last moment a stop is taken: after it the copy is put in place.
        report(progress, 4, 4);
        return checked;
    });
    if (!made) {
        if (made.cancelled)
            return undone(made);
        return undone(Result::failure((made.message.startsWith(lead) ? made.message : lead + QStringLiteral(": ") + made.message)
                                      + unchanged));
    }
    // Renaming over the old file is one step: until it, the old file is whole
    // in its place; after it, the checked copy is.
    bool placed = false;
    const Result reopened = world.closedwhile([&](const QString &target) {
        std::error_code error;
        std::filesystem::rename(std::filesystem::path(copy.toStdWString()), std::filesystem::path(target.toStdWString()),
                                error);
        if (error)
            return Result::failure(lead + QStringLiteral(": Die Kopie lässt sich nicht an ihren Platz bringen (%1).")
                                              .arg(QString::fromStdString(error.message())));
        placed = true;
        return Result::success();
    });
    if (!placed)
        return undone(Result::failure(reopened.message + unchanged));
    world.prunerestorepoints();
    if (!reopened)
        return reopened;
    return Result::success(QStringLiteral("Die Datenbank wurde komprimiert (%1 statt %2).%3")
                               .arg(sizetext(QFileInfo(path).size()), sizetext(before),
                                    dropHistory ? QStringLiteral(" Der Verlauf wurde gelöscht.") : QString()));
}

} // namespace zorbo
