#include "editor/teamsave.h"

#include "core/fieldcheck.h"
#include "core/generator.h"
#include "core/teamrules.h"
#include "platform/runner.h"

namespace zorbo {

namespace {

QString textAt(const Statement &st, int column)
{
    return st.isNull(column) ? QString() : st.text(column);
}

// A number column without a value shows as 0, so that the form can be
// saved as it stands.
QString numberAt(const Statement &st, int column)
{
    return st.isNull(column) ? QStringLiteral("0") : st.text(column);
}

int artAt(const Statement &st, int column)
{
    return st.isNull(column) ? 0 : int(st.integer(column));
}

const QString colourColumns = QStringLiteral(
    "F_TRIKOT_SPIELER, F_AUSW_TRIKOT_SPIELER, F_ALTERN_TRIKOT_SPIELER, F_HOSE_SPIELER, F_AUSW_HOSE_SPIELER, "
    "F_ALTERN_HOSE_SPIELER, F_TRIKOT_WERBUNG, F_HOSE_STREIFEN, F_TRIKOT_TORWART, F_HOSE_TORWART, F_TRIKOT_TRAINER, "
    "F_HOSE_TRAINER");
const QString emptyColours = QStringLiteral("'', '', '', '', '', '', '', '', '', '', '', ''");

// A new row holds every column the configuration file writes, so that the
// team goes out as a whole record and reads back: strength and start place 0
// as for generated clubs, a country the climate that created countries get,
// empty text elsewhere. The save then fills in the form and the kit colours.
void insertnewteam(Database &db, const TeamForm &form)
{
    if (form.table == TeamTable::VereineNational)
        db.run(QStringLiteral("INSERT INTO vereine_national (NUMMER, STAERKE, STARTPLATZ, SPIELER, KLIMA, NATIONALTEAM, "
                              "LANDNAME, AUSWEICH_TW_TRIKOT_ART, %1) VALUES (?1, 0, 0, '', '99,121,700', '', '', 0, %2)")
                   .arg(colourColumns, emptyColours),
               form.nummer);
    else
        db.run(QStringLiteral("INSERT INTO vereine (NUMMER, STAERKE, STARTPLATZ, SPIELER, AUSWEICH_TW_TRIKOT_ART, %1) "
                              "VALUES (?1, 0, 0, '', 0, %2)")
                   .arg(colourColumns, emptyColours),
               form.nummer);
}

// What the save compares with: a kit takes the colours of the kit set only
// when its drawing changes, and a national team's NATION follows its NAME
// only when the name changes, so that a save changes only what the user
// changed.
struct StoredTeam {
    std::array<int, 3> arts{-1, -1, -1};
    QString nation;
};

StoredTeam storedteam(Database &db, const TeamForm &form)
{
    StoredTeam stored;
    Statement st = db.prepare(QStringLiteral("SELECT TRIKOT_ART, AUSWEICH_TRIKOT_ART, TW_TRIKOT_ART, NATION FROM %1 "
                                             "WHERE NUMMER = ?1")
                                  .arg(teamtablename(form.table)));
    st.bind(1, form.nummer);
    if (st.step()) {
        for (int slot = 0; slot < 3; ++slot)
            stored.arts[size_t(slot)] = st.isNull(slot) ? -1 : int(st.integer(slot));
        stored.nation = st.isNull(3) ? QString() : st.text(3);
    }
    return stored;
}

} // namespace

std::optional<TeamForm> readteam(Database &db, qint64 nummer, TeamMode mode)
{
    TeamForm form;
    form.table = mode == NationalMode ? TeamTable::VereineNational : TeamTable::Vereine;
    // The two tables differ in their columns from NATION on, so they are
    // named rather than taken by position.
    const QString sql = QStringLiteral("SELECT NUMMER, NAME, KURZNAME, GRAFIK_NR, STADION_NAME, STADT, NATION, %1, "
                                       "STADION_SITZPL, STADION_STEHPL, TRIKOT_ART, AUSWEICH_TRIKOT_ART, TW_TRIKOT_ART "
                                       "FROM %2 WHERE NUMMER = ?1")
                            .arg(mode == NationalMode ? QStringLiteral("KONTINENT") : QStringLiteral("NULL"),
                                 teamtablename(form.table));
    Statement st = db.prepare(sql);
    st.bind(1, nummer);
    if (!st.step())
        return std::nullopt;
    form.nummer = st.integer(0);
    form.name = textAt(st, 1);
    form.grafiknr = numberAt(st, 3);
    if (mode == MarketMode)
        return form;
    form.kurzname = textAt(st, 2);
    form.stadion = textAt(st, 4);
    form.stadt = textAt(st, 5);
    form.land = textAt(st, 6);
    form.kontinent = textAt(st, 7);
    form.sitz = numberAt(st, 8);
    form.steh = numberAt(st, 9);
    form.arts = {artAt(st, 10), artAt(st, 11), artAt(st, 12)};
    return form;
}

TeamForm newcountryform(qint64 nummer, const QString &kontinent)
{
    TeamForm form;
    form.nummer = nummer;
    form.table = TeamTable::VereineNational;
    form.name = QStringLiteral("Land") + QString::number(nummer);
    form.kurzname = QStringLiteral("L") + QString::number(nummer);
    form.grafiknr = QStringLiteral("0");
    form.kontinent = kontinent;
    form.sitz = form.steh = QStringLiteral("0");
    return form;
}

TeamForm newclubform(qint64 nummer, const QString &land)
{
    TeamForm form = newcountryform(nummer, {});
    form.table = TeamTable::Vereine;
    form.name = QStringLiteral("Team") + QString::number(nummer);
    form.kurzname = QStringLiteral("T") + QString::number(nummer);
    form.land = land;
    return form;
}

Result teamsave(Database &db, const TeamForm &form, bool isNew, const QString &oldName, int trikotsatz)
{
    if (const Result row = checkteamrow(form.table, form.name, form.land); !row)
        return row;
    qint64 grafik = 0, sitz = 0, steh = 0;
    for (const Result &check : {checkwholenumber(QStringLiteral("Grafiknummer:"), form.grafiknr, &grafik),
                                checkwholenumber(QStringLiteral("Sitzplätze:"), form.sitz, &sitz),
                                checkwholenumber(QStringLiteral("Stehplätze:"), form.steh, &steh)}) {
        if (!check)
            return check;
    }
    const bool national = form.table == TeamTable::VereineNational;
    const QString t = teamtablename(form.table);
    return runtransaction(db, QStringLiteral("»%1« lässt sich nicht speichern").arg(form.name), [&] {
        if (isNew)
            insertnewteam(db, form);
        const StoredTeam stored = storedteam(db, form);
        const bool renamed = isNew || form.name != oldName;
        if (isNew && !national)
            spieler20new(db, form.nummer, form.land, 20);
        if (national && renamed) {
            db.run(QStringLiteral("UPDATE spieler SET NATION = ?1 WHERE samename(NATION, ?2)"), form.name, oldName);
            db.run(QStringLiteral("UPDATE vereine SET NATION = ?1 WHERE samename(NATION, ?2)"), form.name, oldName);
        }
        // A renamed national team's NATION follows its NAME; a second name of
        // the country is gone after that.
        Statement st = db.prepare(
            QStringLiteral("UPDATE %1 SET NAME = ?2, KURZNAME = ?3, GRAFIK_NR = ?4, STADION_NAME = ?5, STADT = ?6, "
                           "NATION = ?7, %2 STADION_SITZPL = ?9, STADION_STEHPL = ?10, TRIKOT_ART = ?11, "
                           "TW_TRIKOT_ART = ?12, AUSWEICH_TRIKOT_ART = ?13 WHERE NUMMER = ?1")
                .arg(t, national ? QStringLiteral("KONTINENT = ?8,") : QString()));
        st.bindAll(form.nummer, form.name, form.kurzname, grafik, form.stadion, form.stadt,
                   national ? (renamed ? form.name : stored.nation) : form.land);
        if (national)
            st.bind(8, form.kontinent);
        st.bind(9, sitz).bind(10, steh).bind(11, form.arts[0]).bind(12, form.arts[2]).bind(13, form.arts[1]);
        st.exec();
        std::array<bool, 3> drawn{};
        for (size_t slot = 0; slot < 3; ++slot)
            drawn[slot] = form.arts[slot] != stored.arts[slot];
        settrikotfarbe(db, form.nummer, form.table, trikotsatz, isNew ? std::array<bool, 3>{true, true, true} : drawn);
        return Result::success();
    });
}

} // namespace zorbo
