#include "tools/freeplayer.h"

#include "core/columnrules.h"
#include "core/landneu.h"
#include "platform/operation.h"

namespace zorbo {

FreePlayer FreePlayer::read(const Statement &row)
{
    FreePlayer p;
    p.id = row.integer(0);
    p.name = row.text(1);
    p.vorname = row.text(2);
    p.land = row.text(3);
    p.verein = row.text(4);
    p.position = int(row.integer(5));
    p.staerke = row.integer(6);
    p.restspiele = row.integer(7);
    p.rueckennummer = row.integer(8);
    p.gesicht = row.integer(9);
    p.hautfarbe = row.integer(10);
    p.haarfarbe = row.integer(11);
    return p;
}

QString initial(const QString &vorname)
{
    return vorname.left(1) + QLatin1Char('.');
}

void writefreeplayer(Database &db, qint64 nummer, const FreePlayer &player, Staerkegewinn &gain,
                     QHash<QString, QString> &countries, bool withNumber)
{
    // A free player without a country stays without one: landneu makes no
    // country of a blank name.
    // The gain can carry a strength the file had at the edge of 32 bits
    // beyond it; such a maximum can't be stored, and the whole run stops.
    const qint64 maximum = gain.maximum(double(player.staerke));
    const QString column = QStringLiteral("Max_Stärke");
    if (const QString problem = rangeproblem(column, double(maximum)); !problem.isEmpty())
        throw Fault(QStringLiteral("Der freie Spieler %1, %2 bekäme im Feld %3 den Wert %4; %5.")
                        .arg(player.name, player.vorname, column)
                        .arg(maximum)
                        .arg(problem),
                    Finding{problem, {}, 0, column});
    auto country = countries.constFind(player.land);
    if (country == countries.constEnd())
        country = countries.insert(player.land, landneu(db, player.land));
    const QString sql = QStringLiteral(
        "UPDATE spieler SET NAME = ?1, VORNAME = ?2, \"Stärke\" = ?3, \"Max_Stärke\" = ?4, "
        "NATION = ?5, ART = ?6, \"REST_EINSÄTZE\" = ?7, GESICHT = ?8, HAUTFARBE = ?9, HAARFARBE = ?10, "
        "ERLERNT = '', GESPERRT = ''%1 "
        "WHERE NUMMER = ?11");
    Statement st = db.prepare(sql.arg(withNumber ? QStringLiteral(", RUECKENNUMMER = ?12") : QString()));
    st.bindAll(player.name, initial(player.vorname), player.staerke, maximum, *country,
               player.position, player.restspiele, player.gesicht, player.hautfarbe, player.haarfarbe, nummer);
    if (withNumber)
        st.bind(12, player.rueckennummer);
    st.exec();
}

} // namespace zorbo
