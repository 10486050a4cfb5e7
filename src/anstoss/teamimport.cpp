#include "anstoss/importsave.h"

#include "core/columnrules.h"
#include "core/fieldcheck.h"
#include "core/kitcolours.h"
#include "core/landneu.h"
#include "core/teamrules.h"
#include "platform/runner.h"

#include <QFileInfo>

namespace zorbo {

namespace {

const QString black = QStringLiteral("  0,  0,  0");

qint64 seats(const QString &caption, const QString &text)
{
    qint64 value = 0;
    const Result checked = checkwholenumber(caption, text, &value);
    if (!checked)
        throw Fault(checked.message, Finding{checked.message, {}, 0, caption});
    return value;
}

} // namespace

ClubShown readclubshown(Database &db, qint64 club)
{
    Statement st = db.prepare(QStringLiteral(
        "SELECT NUMMER, GRAFIK_NR, NAME, KURZNAME, STADT, NATION, STADION_NAME, STADION_SITZPL, STADION_STEHPL, "
        "TRIKOT_ART, AUSWEICH_TRIKOT_ART, TW_TRIKOT_ART, F_TRIKOT_SPIELER, F_AUSW_TRIKOT_SPIELER, "
        "F_ALTERN_TRIKOT_SPIELER, F_HOSE_SPIELER, F_AUSW_HOSE_SPIELER, F_ALTERN_HOSE_SPIELER, F_TRIKOT_WERBUNG, "
        "F_HOSE_STREIFEN, F_TRIKOT_TORWART, F_HOSE_TORWART, F_TRIKOT_TRAINER, F_HOSE_TRAINER FROM vereine WHERE NUMMER = ?1"));
    st.bind(1, club);
    ClubShown c;
    if (!st.step())
        return c;
    c.found = true;
    c.nummer = st.integer(0);
    QString *texts[] = {&c.grafiknr, &c.name, &c.kurzname, &c.stadt, &c.nation, &c.stadion, &c.sitz, &c.steh};
    for (int i = 0; i < 8; ++i)
        *texts[i] = st.text(i + 1);
    for (int i = 0; i < 3; ++i)
        c.kitart[size_t(i)] = st.value(9 + i);
    for (int i = 0; i < 12; ++i)
        c.colours[size_t(i)] = st.text(12 + i);
    return c;
}

TeamImport teamfromfile(Database &db, const AetFile &file, qint64 club)
{
    TeamImport t;
    const QString team = QStringLiteral("team");
    t.name = file.value(team, QStringLiteral("Name"));
    t.stadt = file.value(team, QStringLiteral("Stadt"));
    t.land = file.value(team, QStringLiteral("Land"));
    t.stadion = file.value(team, QStringLiteral("stadion"));
    t.sitz = file.value(team, QStringLiteral("Stadionsitz"));
    t.steh = file.value(team, QStringLiteral("Stadionsteh"));
    Statement st = db.prepare(
        QStringLiteral("SELECT TRIKOT_ART, AUSWEICH_TRIKOT_ART, TW_TRIKOT_ART FROM vereine WHERE NUMMER = ?1"));
    st.bind(1, club);
    if (st.step()) {
        for (int i = 0; i < 3; ++i)
            t.kitart[size_t(i)] = st.value(i);
    }
    return t;
}

Step importteamstep(qint64 club, const QString &path)
{
    return {QStringLiteral("Werkbank: Verein %1 aus %2 gespeichert").arg(club).arg(QFileInfo(path).fileName())};
}

AnstossResult saveimportteam(Database &db, const AetFile &file, qint64 club, const TeamImport &t, int trikotsatz)
{
    return runtransaction(db, QStringLiteral("Der Verein wurde nicht gespeichert"), [&] {
        AnstossResult r;
        if (!t.team && !t.stadium && !t.kits)
            throw Fault(QStringLiteral("Es ist keine der Gruppen Teamdaten, Stadiondaten oder Teamtrikots angekreuzt; "
                                       "es wurde nichts gespeichert."));
        if (db.scalar(QStringLiteral("SELECT 1 FROM vereine WHERE NUMMER = ?1"), club).isNull())
            throw Fault(QStringLiteral("Den Verein %1 gibt es in vereine nicht.").arg(club));
        // Everything the save can refuse is checked before the first write.
        if (t.team) {
            if (const Result row = checkteamrow(TeamTable::Vereine, t.name, t.land); !row)
                throw Fault(row.message);
        }
        qint64 sitz = 0, steh = 0;
        if (t.stadium) {
            sitz = seats(QStringLiteral("Sitzplätze:"), t.sitz);
            steh = seats(QStringLiteral("Stehplätze:"), t.steh);
        }
        for (const auto &[column, text] : {std::pair{QStringLiteral("NAME"), t.name}, {QStringLiteral("STADT"), t.stadt},
                                           {QStringLiteral("STADION_NAME"), t.stadion}}) {
            if (const QString problem = lengthproblem(column, text.size()); !problem.isEmpty())
                throw Fault(QStringLiteral("Im Feld %1 steht %2.").arg(column, problem), Finding{problem, {}, 0, column});
        }
        QStringList colours;
        if (t.kits) {
            for (const char *key : {"trikoth0", "trikoth1", "trikoth2", "trikota0", "trikota1", "trikota2"})
                colours.append(aetcolourtext(file, QLatin1String(key), black));
        }
        if (t.team)
            db.run(QStringLiteral("UPDATE vereine SET NAME = ?1, STADT = ?2, NATION = ?3 WHERE NUMMER = ?4"), t.name,
                   t.stadt, landneu(db, t.land), club);
        if (t.stadium)
            db.run(QStringLiteral("UPDATE vereine SET STADION_NAME = ?1, STADION_SITZPL = ?2, STADION_STEHPL = ?3 "
                                  "WHERE NUMMER = ?4"),
                   t.stadion, sitz, steh, club);
        db.run(QStringLiteral("UPDATE vereine SET TRIKOT_ART = ?1, AUSWEICH_TRIKOT_ART = ?2, TW_TRIKOT_ART = ?3 "
                              "WHERE NUMMER = ?4"),
               t.kitart[0], t.kitart[1], t.kitart[2], club);
        settrikotfarbe(db, club, TeamTable::Vereine, trikotsatz);
        if (t.kits) {
            db.run(QStringLiteral("UPDATE vereine SET F_TRIKOT_SPIELER = ?1, F_AUSW_TRIKOT_SPIELER = ?2, "
                                  "F_ALTERN_TRIKOT_SPIELER = ?3, F_HOSE_SPIELER = ?4 WHERE NUMMER = ?5"),
                   colours[0], colours[1], colours[2], black, club);
            db.run(QStringLiteral("UPDATE vereine SET F_AUSW_HOSE_SPIELER = ?1, F_ALTERN_HOSE_SPIELER = ?2, "
                                  "F_TRIKOT_WERBUNG = ?3, F_HOSE_STREIFEN = ?4 WHERE NUMMER = ?5"),
                   colours[3], colours[4], colours[5], black, club);
        }
        // What the file brought that the windows can't show.
        r.kept = int(t.team && outsidewindow(QStringLiteral("NAME"), t.name.size()))
               + int(t.team && outsidewindow(QStringLiteral("STADT"), t.stadt.size()))
               + int(t.stadium && outsidewindow(QStringLiteral("STADION_NAME"), t.stadion.size()))
               + int(t.stadium && outsidewindow(QStringLiteral("STADION_SITZPL"), double(sitz)))
               + int(t.stadium && outsidewindow(QStringLiteral("STADION_STEHPL"), double(steh)));
        r.clubs = 1;
        r.result = Result::success(withkept(QStringLiteral("Verein %1 gespeichert.").arg(club), r.kept));
        return r;
    });
}

} // namespace zorbo
