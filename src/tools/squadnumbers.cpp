#include "tools/squadnumbers.h"

#include "platform/runner.h"

namespace zorbo {

QString SquadLine::text() const
{
    return (repeat ? QStringLiteral("*") : QString()) + QString::number(number) + QLatin1Char(' ') + name
           + QStringLiteral(", ") + vorname;
}

QList<NamedTeam> clubswithrepeats(Database &db, const Progress &progress)
{
    QList<qint64> teams;
    Statement st = db.prepare(QStringLiteral(
        "SELECT verein FROM kaderzeilen v JOIN spieler s ON s.NUMMER = v.spieler WHERE verein > 0 "
        "GROUP BY verein, RUECKENNUMMER HAVING count(RUECKENNUMMER) > 1 ORDER BY verein"));
    while (st.step()) {
        if (teams.isEmpty() || teams.last() != st.integer(0))
            teams << st.integer(0);
    }
    Statement club = db.prepare(QStringLiteral("SELECT NAME FROM vereine WHERE NUMMER = ?1"));
    Statement national = db.prepare(QStringLiteral("SELECT NAME FROM vereine_national WHERE NUMMER = ?1"));
    QList<NamedTeam> found;
    for (qsizetype i = 0; i < teams.size(); ++i) {
        NamedTeam t{teams[i], {}};
        club.bind(1, t.nummer);
        if (club.step()) {
            t.name = club.text(0);
        } else {
            national.bind(1, t.nummer);
            t.name = national.step() ? national.text(0) : QStringLiteral("Mannschaft %1").arg(t.nummer);
            national.reset();
        }
        club.reset();
        found << t;
        report(progress, i + 1, teams.size());
    }
    return found;
}

QList<SquadLine> squadlines(Database &db, qint64 team)
{
    Statement st = db.prepare(QStringLiteral(
        "SELECT rueckennummer, name, vorname, nummer FROM spielerinvereine WHERE verein = ?1 ORDER BY rueckennummer, nummer"));
    st.bind(1, team);
    QList<SquadLine> lines;
    qint64 before = 0;
    while (st.step()) {
        SquadLine line;
        line.number = st.integer(0);
        line.name = st.text(1);
        line.vorname = st.text(2);
        line.player = st.integer(3);
        line.repeat = line.number == before;
        before = line.number;
        lines << line;
    }
    return lines;
}

bool repeatshown(const QList<SquadLine> &lines)
{
    for (qsizetype i = 0; i < lines.size() && i < 20; ++i) {
        if (lines[i].repeat)
            return true;
    }
    return false;
}

Step squadnumberstep(qint64 player, qint64 number)
{
    return {QStringLiteral("Rückennummer %1 für Spieler %2").arg(number).arg(player)};
}

Result setsquadnumber(Database &db, qint64 player, qint64 number)
{
    if (number <= 0)
        return Result::failure(QStringLiteral("Die Rückennummer muss größer als 0 sein; sie wurde nicht gespeichert."));
    return runtransaction(db, QStringLiteral("Die Rückennummer lässt sich nicht speichern"), [&] {
        if (db.run(QStringLiteral("UPDATE spieler SET RUECKENNUMMER = ?1 WHERE NUMMER = ?2"), number, player) == 0)
            return Result::failure(QStringLiteral("Den Spieler %1 gibt es nicht (mehr).").arg(player));
        return Result::success(QStringLiteral("Spieler %1 trägt jetzt die Nummer %2.").arg(player).arg(number));
    });
}

} // namespace zorbo
