#include "core/landneu.h"

#include "core/gamedb.h"
#include "core/teamrules.h"

namespace zorbo {

QString landneu(Database &db, const QString &land, bool *created)
{
    if (created)
        *created = false;
    // No country is made without a name: whoever has none keeps an empty one.
    if (blankname(land))
        return QStringLiteral("");
    // SQLite's = is exact and case-sensitive, which is the test that decides;
    // names that only begin, end or are spelt like L never stop the insert.
    const QVariant found = db.scalar(QStringLiteral("SELECT NAME FROM vereine_national WHERE NAME = ?1"), land);
    if (!found.isNull())
        return found.toString();

    const QVariant continent =
        db.scalar(QStringLiteral("SELECT kontinent FROM e_landkontinent WHERE samename(land, ?1) ORDER BY id"), land);
    Statement st = db.prepare(QStringLiteral(
        "INSERT INTO vereine_national (NUMMER, NAME, KURZNAME, GRAFIK_NR, STAERKE, STARTPLATZ, SPIELER, STADION_NAME, STADT, "
        "KLIMA, NATION, KONTINENT, STADION_SITZPL, STADION_STEHPL, TRIKOT_ART, TW_TRIKOT_ART, AUSWEICH_TRIKOT_ART, "
        "AUSWEICH_TW_TRIKOT_ART, F_TRIKOT_SPIELER, F_AUSW_TRIKOT_SPIELER, F_ALTERN_TRIKOT_SPIELER, F_HOSE_SPIELER, "
        "F_AUSW_HOSE_SPIELER, F_ALTERN_HOSE_SPIELER, F_TRIKOT_WERBUNG, F_HOSE_STREIFEN, F_TRIKOT_TORWART, F_HOSE_TORWART, "
        "F_TRIKOT_TRAINER, F_HOSE_TRAINER, NATIONALTEAM, LANDNAME) VALUES (?1, ?2, ?2, 292, 0, 0, '', ?2, ?2, "
        "'99,121,700', ?2, ?3, 8000, 3000, 16, 62, 58, 0, '144, 32, 56', '120,  8, 24', ' 48, 40,120', '  0,  0,  0', "
        "'  8, 64,200', '  0, 40,160', ' 24, 24, 24', '  0,  0,  0', '240,184, 32', '200,144,  8', ' 24, 24, 24', "
        "'  0,  0,  0', '', '')"));
    st.bindAll(newteamnumber(db), land,
               continent.isNull() ? QStringLiteral("Atlantis") : continent.toString());
    st.exec();
    if (created)
        *created = true;
    return land;
}

} // namespace zorbo
