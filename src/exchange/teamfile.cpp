#include "exchange/teamfile.h"

#include "exchange/cfgfile.h"
#include "exchange/cfgwriter.h"
#include "platform/numbers.h"
#include "platform/profilefile.h"

namespace zorbo {

namespace {

// place names the team or player of the section.
void writeSection(CfgWriter &out, Statement &row, const QString &section, Finding place)
{
    out.line(QLatin1Char('[') + section + QLatin1Char(']'));
    for (int c = 0; c < row.columnCount(); ++c) {
        const QString key = teamfilekey(row.columnName(c));
        out.text(key + QLatin1Char('='), section);
        if (!row.isNull(c)) {
            const QVariant v = row.value(c);
            place.field = key;
            if (v.typeId() == QMetaType::QString)
                out.text(ProfileFile::writtenvalue(v.toString()), QStringLiteral("[%1] %2").arg(section, key), place);
            else if (v.typeId() == QMetaType::Double)
                // The system's conversion of a German system, whatever locale
                // the program runs in; opening takes both decimal signs.
                out.bytes(formatDecimal(v.toDouble(), QLatin1Char(',')).toLatin1());
            else
                out.bytes(numbertext(row, c));
        }
        out.endLine();
    }
}

} // namespace

QString teamfilekey(const QString &column)
{
    const QString upper = column.toUpper();
    if (upper == QStringLiteral("STÄRKE") || upper == QStringLiteral("MAX_STÄRKE"))
        return QString(column).replace(QStringLiteral("ä"), QStringLiteral("ae")).replace(QStringLiteral("Ä"), QStringLiteral("AE"));
    return column;
}

ExchangeResult exportverein(Database &db, const QString &path, qint64 team, const Progress &progress, const QDateTime &now)
{
    return runtransaction(db, QStringLiteral("%1 wurde nicht geschrieben").arg(path), [&] {
        ExchangeResult result;
        result.team = team;
        CfgWriter out(path);
        out.line(exportdateline(now));
        out.line(versionline());
        out.endLine();
        bool found = false;
        for (const char *table : {"vereine", "vereine_national"}) {
            Statement row = db.prepare(QStringLiteral("SELECT * FROM %1 WHERE NUMMER = ?1").arg(QLatin1String(table)));
            row.bind(1, team);
            if (row.step()) {
                writeSection(out, row, QStringLiteral("Team"), Finding{.team = team});
                found = true;
                ++(table == QLatin1String("vereine") ? result.teams : result.nationalTeams);
                break;
            }
        }
        if (!found)
            return ExchangeResult::failure(QStringLiteral("Team %1 gibt es weder unter den Vereinen noch unter den "
                                                          "Nationalteams; %2 wurde nicht geschrieben.")
                                               .arg(team)
                                               .arg(path));
        const qint64 total = db.scalar(QStringLiteral("SELECT count(DISTINCT spieler) FROM kaderzeilen WHERE verein = ?1"), team)
                                 .toLongLong();
        // Sections follow the squad's order, the order in which opening the file
        // over a club hands them out again, so a file saved and opened over
        // the same club gives every player his own data back.
        Statement players = db.prepare(QStringLiteral(
            "SELECT s.* FROM spieler s JOIN (SELECT spieler, min(rowid) AS platz FROM kaderzeilen WHERE verein = ?1 "
            "GROUP BY spieler) v ON v.spieler = s.NUMMER ORDER BY v.platz"));
        players.bind(1, team);
        while (players.step()) {
            writeSection(out, players, QStringLiteral("Spieler%1").arg(++result.players),
                         Finding{.player = players.integer(0)});
            // The file is replaced only after the last player.
            report(progress, result.players, total);
        }
        result.result = out.save();
        if (result.ok())
            result.result.message = QStringLiteral("Team %1 mit %2 Spielern nach %3 geschrieben.").arg(team).arg(result.players).arg(path);
        return result;
    });
}

} // namespace zorbo
