#include "exchange/configruns.h"

#include "core/market.h"
#include "exchange/playerconfig.h"
#include "exchange/teamconfigreader.h"
#include "exchange/teamconfigwriter.h"
#include "platform/runner.h"

namespace zorbo {

namespace {

template <typename Read>
ExchangeResult run(Database &db, const QString &path, const QStringList &tables, const Read &read)
{
    return runtransaction(db, QStringLiteral("Der Import ist gescheitert, die Welt bleibt unverändert"), [&] {
        for (const QString &t : tables)
            db.exec(QStringLiteral("DELETE FROM ") + t);
        ExchangeResult result = read();
        if (!result.ok())
            return result; // the transaction rolls the emptied tables back
        result.marketCreated = ensuretransfermarket(db);
        if (result.marketCreated)
            result.findings << Finding{.text = QStringLiteral("Die Datei hat keinen Transfermarkt; er wurde mit %1 Spielern "
                                                              "neu angelegt.")
                                                   .arg(marketPlayerCount),
                                       .file = path,
                                       .team = 0};
        return result;
    });
}

} // namespace

ExchangeResult importteamsrun(Database &db, const QString &path, const Progress &progress, FileEncoding encoding)
{
    return run(db, path, {QStringLiteral("vereine"), QStringLiteral("vereine_national"), QStringLiteral("kaderzeilen")},
               [&] { return importvereine(db, path, progress, encoding); });
}

ExchangeResult importplayersrun(Database &db, const QString &path, const Progress &progress, FileEncoding encoding)
{
    return run(db, path, {QStringLiteral("spieler")}, [&] { return importspieler(db, path, progress, encoding); });
}

ExchangeResult importconfig(Database &db, const QString &path, ConfigKind kind, const Progress &progress,
                            FileEncoding encoding)
{
    return kind == ConfigKind::Teams ? importteamsrun(db, path, progress, encoding)
                                     : importplayersrun(db, path, progress, encoding);
}

ExchangeResult exportconfig(Database &db, const QString &path, ConfigKind kind, const Progress &progress, bool nearest)
{
    const QDateTime now = QDateTime::currentDateTime();
    return kind == ConfigKind::Teams ? exportvereine(db, path, progress, now, nearest)
                                     : exportspieler(db, path, progress, now, nearest);
}

} // namespace zorbo
