#include "tools/swap.h"

#include "core/gamedb.h"
#include "platform/runner.h"
#include "tools/freeplayer.h"

namespace zorbo {

namespace {

QList<SwapEntry> entries(Statement &st)
{
    QList<SwapEntry> list;
    while (st.step()) {
        SwapEntry e;
        e.key = st.integer(0);
        e.art = int(st.integer(1));
        e.text = st.text(3) + QLatin1Char(' ') + st.text(2);
        e.staerke = st.integer(4);
        list << e;
    }
    return list;
}

bool inteam(Database &db, qint64 team, qint64 player)
{
    return !db.scalar(QStringLiteral("SELECT 1 FROM kaderzeilen WHERE verein = ?1 AND spieler = ?2"), team, player).isNull();
}

// The one club of a player; a national team doesn't count, as a player
// stands there beside his club.
qint64 clubof(Database &db, qint64 player)
{
    Statement st = db.prepare(QStringLiteral("SELECT v.verein FROM kaderzeilen v JOIN vereine c ON c.NUMMER = v.verein "
                                             "WHERE v.spieler = ?1"));
    st.bind(1, player);
    QList<qint64> clubs;
    while (st.step())
        clubs << st.integer(0);
    if (clubs.size() == 1)
        return clubs.first();
    if (clubs.isEmpty())
        throw Fault(QStringLiteral("Spieler %1 gehört zu keinem Verein.").arg(player), {.player = player});
    throw Fault(QStringLiteral("Spieler %1 steht in mehreren Vereinen; bitte den Verein angeben.").arg(player),
                {.player = player});
}

} // namespace

QStringList freeclubs(Database &db)
{
    QStringList clubs;
    Statement st = db.prepare(QStringLiteral("SELECT DISTINCT verein FROM a4spieler ORDER BY verein"));
    while (st.step())
        clubs << st.text(0);
    return clubs;
}

QList<SwapEntry> freeplayers(Database &db, const QString &verein)
{
    Statement st = db.prepare(QStringLiteral(
        "SELECT id, position, name, vorname, staerke FROM a4spieler WHERE verein = ?1 ORDER BY position, name, vorname"));
    st.bind(1, verein);
    return entries(st);
}

QList<SwapEntry> squadentries(Database &db, qint64 team)
{
    Statement st = db.prepare(QStringLiteral(
        "SELECT nummer, art, name, vorname, \"stärke\" FROM spielerinvereine WHERE verein = ?1 ORDER BY art, name, vorname"));
    st.bind(1, team);
    return entries(st);
}

QString positionshort(int art)
{
    static const char *const names[] = {"TOR", "ABW", "MIT", "STU"};
    return art >= 0 && art < 4 ? QString::fromLatin1(names[art]) : QString::number(art);
}

Step swapstep(qint64 left, qint64 right)
{
    return {QStringLiteral("Spieler %1 und %2 getauscht").arg(left).arg(right)};
}

Step swapfreestep(qint64 freeid, qint64 nummer)
{
    return {QStringLiteral("Spieler %1 gegen den freien Spieler %2 getauscht").arg(nummer).arg(freeid)};
}

Result swapplayers(Database &db, qint64 left, qint64 right, qint64 leftclub, qint64 rightclub)
{
    return runtransaction(db, QStringLiteral("Die Spieler lassen sich nicht tauschen"), [&] {
        const qint64 l = leftclub >= 0 ? leftclub : clubof(db, left);
        const qint64 r = rightclub >= 0 ? rightclub : clubof(db, right);
        for (const auto &[player, team] : {std::pair{left, l}, std::pair{right, r}}) {
            if (!inteam(db, team, player))
                return Result::failure(QStringLiteral("Spieler %1 steht nicht (mehr) im Verein %2; es wurde nichts "
                                                      "getauscht. Bitte die Listen neu laden.")
                                           .arg(player)
                                           .arg(team));
        }
        if (left == right)
            return Result::failure(QStringLiteral("Ein Spieler lässt sich nicht mit sich selbst tauschen."));
        // Only the row of the club shown: a player's row in his national team stays.
        Statement move = db.prepare(QStringLiteral(
            "UPDATE kaderzeilen SET verein = ?1 WHERE rowid = (SELECT rowid FROM kaderzeilen WHERE verein = ?2 AND "
            "spieler = ?3 LIMIT 1)"));
        move.bindAll(r, l, left).exec();
        move.bindAll(l, r, right).exec();
        return Result::success(QStringLiteral("Spieler %1 wechselt zu Verein %2, Spieler %3 zu Verein %4.")
                                   .arg(left)
                                   .arg(r)
                                   .arg(right)
                                   .arg(l));
    });
}

Result swapfree(Database &db, qint64 freeid, qint64 nummer, qint64 team, const QString &verein)
{
    return runtransaction(db, QStringLiteral("Der Spieler lässt sich nicht mit dem freien Spieler tauschen"), [&] {
        Statement incoming = db.prepare(QStringLiteral("SELECT * FROM a4spieler WHERE id = ?1"));
        incoming.bind(1, freeid);
        if (!incoming.step())
            return Result::failure(QStringLiteral("Den freien Spieler %1 gibt es nicht (mehr); es wurde nichts getauscht.")
                                       .arg(freeid));
        const FreePlayer free = FreePlayer::read(incoming);
        incoming.reset();
        if (!verein.isNull() && free.verein != verein)
            return Result::failure(QStringLiteral("Der freie Spieler %1 gehört nicht (mehr) zu %2; es wurde nichts "
                                                  "getauscht.")
                                       .arg(freeid)
                                       .arg(verein));
        Statement outgoing = db.prepare(QStringLiteral(
            "SELECT NAME, VORNAME, NATION, ART, \"Stärke\", \"REST_EINSÄTZE\", RUECKENNUMMER, GESICHT, HAUTFARBE, "
            "HAARFARBE FROM spieler WHERE NUMMER = ?1"));
        outgoing.bind(1, nummer);
        if (!outgoing.step())
            return Result::failure(QStringLiteral("Den Spieler %1 gibt es nicht (mehr); es wurde nichts getauscht.").arg(nummer));
        if (team >= 0 && !inteam(db, team, nummer))
            return Result::failure(QStringLiteral("Spieler %1 steht nicht (mehr) im Verein %2; es wurde nichts getauscht.")
                                       .arg(nummer)
                                       .arg(team));
        // The outgoing player goes with the initial of his first name, as
        // every row written to a4spieler from spieler does; he takes the
        // incoming player's exporter club.
        Statement keep = db.prepare(QStringLiteral(
            "INSERT INTO a4spieler (name, vorname, land, verein, position, staerke, restspiele, rueckennummer, gesicht, "
            "hautfarbe, haarfarbe) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11)"));
        keep.bindAll(outgoing.value(0), initial(outgoing.text(1)), outgoing.value(2), free.verein, outgoing.value(3),
                     outgoing.value(4), outgoing.value(5), outgoing.value(6), outgoing.value(7), outgoing.value(8),
                     outgoing.value(9));
        const QString name = outgoing.text(1) + QLatin1Char(' ') + outgoing.text(0);
        outgoing.reset();
        keep.exec();
        Staerkegewinn gain(Staerkegewinn::Base::Fractional);
        QHash<QString, QString> countries;
        writefreeplayer(db, nummer, free, gain, countries, true);
        db.run(QStringLiteral("DELETE FROM a4spieler WHERE id = ?1"), freeid);
        a4deleteid(db);
        return Result::success(QStringLiteral("%1 %2 kommt auf den Platz von %3, der zu den freien Spielern von %4 geht.")
                                   .arg(free.vorname, free.name, name, free.verein));
    });
}

} // namespace zorbo
