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
    return {QStringLiteral("Datenbank gelöscht"), QStringLiteral("Datenbank löschen")};
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

Result comp_db(World &world, const Progress &progress)
{
    Database *db = world.db();
    if (!db)
        return Result::failure(QStringLiteral("Es ist keine Datenbank geöffnet."));
    if (const Result kept = world.keeprestorepoint(QStringLiteral("Komprimieren")); !kept)
        return Result::failure(kept.message + QStringLiteral(" Die Datenbank wurde nicht komprimiert."));
    const QString path = db->path();
    const QString copy = QFileInfo(path).dir().filePath(QStringLiteral("zorbo_komprimiert.tmp"));
    const QString lead = QStringLiteral("Die Datenbank lässt sich nicht komprimieren");
    const qint64 before = QFileInfo(path).size();
    const Result made = runguarded(lead, [&] {
        // A copy left by an earlier failure is ours and incomplete.
        if (QFileInfo(copy).isFile())
            QFile::remove(copy);
        report(progress, 0, 3);
        const auto counts = tablecounts(*db);
        db->run(QStringLiteral("VACUUM INTO ?1"), copy);
        report(progress, 1, 3);
        const Result checked = checkcopy(copy, counts);
        report(progress, 2, 3);
        return checked;
    });
    if (!made) {
        if (QFileInfo(copy).isFile())
            QFile::remove(copy);
        if (made.cancelled)
            return made;
        return Result::failure(made.message.startsWith(lead) ? made.message : lead + QStringLiteral(": ") + made.message);
    }
    // Renaming over the old file is one step: until it, the old file is whole
    // in its place; after it, the checked copy is.
    Result placed = world.closedwhile([&](const QString &target) {
        std::error_code error;
        std::filesystem::rename(std::filesystem::path(copy.toStdWString()), std::filesystem::path(target.toStdWString()),
                                error);
        if (error)
            return Result::failure(lead + QStringLiteral(": Die Kopie lässt sich nicht an ihren Platz bringen (%1); die "
                                                         "alte Datenbank bleibt.")
                                              .arg(QString::fromStdString(error.message())));
        return Result::success();
    });
    if (!placed) {
        QFile::remove(copy);
        return placed;
    }
    report(progress, 3, 3);
    return Result::success(QStringLiteral("Die Datenbank wurde komprimiert (%1 statt %2).")
                               .arg(sizetext(QFileInfo(path).size()), sizetext(before)));
}

} // namespace zorbo
