#include "editor/teamsave.h"

#include "core/fieldcheck.h"
#include "editor/generator.h"

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
    qint64 grafik = 0, sitz = 0, steh = 0;
    for (const Result &check : {checkwholenumber(QStringLiteral("Grafiknummer:"), form.grafiknr, &grafik),
                                checkwholenumber(QStringLiteral("Sitzplätze:"), form.sitz, &sitz),
                                checkwholenumber(QStringLiteral("Stehplätze:"), form.steh, &steh)}) {
        if (!check)
            return check;
    }
    const bool national = form.table == TeamTable::VereineNational;
    const QString t = teamtablename(form.table);
    try {
        Transaction tx(db);
        if (isNew) {
            db.run(QStringLiteral("INSERT INTO %1 (NUMMER) VALUES (?1)").arg(t), form.nummer);
            if (!national)
                spieler20new(db, form.nummer, form.land, 20);
        }
        if (national) {
            db.run(QStringLiteral("UPDATE spieler SET NATION = ?1 WHERE samename(NATION, ?2)"), form.name, oldName);
            db.run(QStringLiteral("UPDATE vereine SET NATION = ?1 WHERE samename(NATION, ?2)"), form.name, oldName);
        }
        // A national team's NATION follows its NAME on every save; a second
        // name of the country is gone after that.
        Statement st = db.prepare(
            QStringLiteral("UPDATE %1 SET NAME = ?2, KURZNAME = ?3, GRAFIK_NR = ?4, STADION_NAME = ?5, STADT = ?6, "
                           "NATION = ?7, %2 STADION_SITZPL = ?9, STADION_STEHPL = ?10, TRIKOT_ART = ?11, "
                           "TW_TRIKOT_ART = ?12, AUSWEICH_TRIKOT_ART = ?13, AUSWEICH_TW_TRIKOT_ART = 0 "
                           "WHERE NUMMER = ?1")
                .arg(t, national ? QStringLiteral("KONTINENT = ?8,") : QString()));
        st.bindAll(form.nummer, form.name, form.kurzname, grafik, form.stadion, form.stadt,
                   national ? form.name : form.land);
        if (national)
            st.bind(8, form.kontinent);
        st.bind(9, sitz).bind(10, steh).bind(11, form.arts[0]).bind(12, form.arts[2]).bind(13, form.arts[1]);
        st.exec();
        settrikotfarbe(db, form.nummer, form.table, trikotsatz);
        tx.commit();
    } catch (const DbError &e) {
        return Result::failure(QStringLiteral("»%1« lässt sich nicht speichern: %2").arg(form.name, e.text()));
    }
    return Result::success();
}

} // namespace zorbo
