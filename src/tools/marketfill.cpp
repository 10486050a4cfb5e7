#include "tools/marketfill.h"

#include "platform/runner.h"
#include "tools/freeplayer.h"

namespace zorbo {

Step marketfillstep()
{
    return {QStringLiteral("Freie Spieler in den Transfermarkt kopiert"), QStringLiteral("Transfermarkt füllen")};
}

MarketFill spielera4_nach_tmarkt(Database &db, const Progress &progress)
{
    return runtransaction(db, QStringLiteral("Die freien Spieler lassen sich nicht in den Transfermarkt kopieren"), [&] {
        MarketFill fill;
        QList<qint64> places;
        Statement market = db.prepare(QStringLiteral("SELECT spieler FROM kaderzeilen WHERE verein = 0 ORDER BY spieler"));
        while (market.step())
            places << market.integer(0);
        fill.slotcount = int(places.size());
        fill.freePlayers = int(db.scalar(QStringLiteral("SELECT count(*) FROM a4spieler")).toLongLong());
        if (fill.freePlayers == 0) {
            fill.result = Result::failure(QStringLiteral("Es gibt keine freien Spieler; der Transfermarkt bleibt, wie er ist."));
            return fill;
        }
        if (places.isEmpty()) {
            fill.result = Result::failure(QStringLiteral("Der Transfermarkt hat keine Spieler, die sich überschreiben lassen."));
            return fill;
        }
        const int n = int(std::min<qint64>(places.size(), fill.freePlayers));
        Staerkegewinn gain(Staerkegewinn::Base::Fractional);
        QHash<QString, QString> countries;
        Statement free = db.prepare(QStringLiteral("SELECT * FROM a4spielerzufall"));
        for (int i = 0; i < n && free.step(); ++i) {
            writefreeplayer(db, places[i], FreePlayer::read(free), gain, countries, false);
            fill.copied = i + 1;
            report(progress, i + 1, n);
        }
        fill.result = Result::success(
            QStringLiteral("%1 freie Spieler in den Transfermarkt kopiert.").arg(fill.copied));
        return fill;
    });
}

} // namespace zorbo
