#include "core/kitcolours.h"

namespace zorbo {

namespace {

// Art column and the four colour columns of one kit slot, in the order
// Trikot1, Trikot2, Hose, Streifen. The column names come from the game's
// file format and don't tell the slot.
struct Slot {
    const char *art;
    const char *colours[4];
};

const std::array<Slot, 3> kitSlots = {{
    {"TRIKOT_ART", {"F_TRIKOT_SPIELER", "F_AUSW_TRIKOT_SPIELER", "F_ALTERN_TRIKOT_SPIELER", "F_HOSE_SPIELER"}},
    {"AUSWEICH_TRIKOT_ART", {"F_AUSW_HOSE_SPIELER", "F_ALTERN_HOSE_SPIELER", "F_TRIKOT_WERBUNG", "F_HOSE_STREIFEN"}},
    {"TW_TRIKOT_ART", {"F_TRIKOT_TORWART", "F_HOSE_TORWART", "F_TRIKOT_TRAINER", "F_HOSE_TRAINER"}},
}};

} // namespace

QString teamtablename(TeamTable table)
{
    return table == TeamTable::VereineNational ? QStringLiteral("vereine_national") : QStringLiteral("vereine");
}

QString kitcolourtable(int trikotsatz)
{
    return trikotsatz == 1 ? QStringLiteral("e_trikotfarbezorbode") : QStringLiteral("e_trikotfarbeoriginal");
}

void settrikotfarbe(Database &db, qint64 nummer, TeamTable table, int trikotsatz, const std::array<bool, 3> &chosen)
{
    // Table and column names come from the fixed lists above, never from input.
    const QString t = teamtablename(table);
    const QString c = kitcolourtable(trikotsatz);
    Transaction tx(db);
    for (size_t i = 0; i < kitSlots.size(); ++i) {
        if (!chosen[i])
            continue;
        const Slot &slot = kitSlots[i];
        const QString sql = QStringLiteral("UPDATE %1 SET %3 = c.Trikot1, %4 = c.Trikot2, %5 = c.Hose, %6 = c.Streifen "
                                           "FROM %2 AS c WHERE c.Nummer = %1.%7 AND %1.NUMMER = ?1")
                                .arg(t, c, QLatin1String(slot.colours[0]), QLatin1String(slot.colours[1]),
                                     QLatin1String(slot.colours[2]), QLatin1String(slot.colours[3]),
                                     QLatin1String(slot.art));
        db.run(sql, nummer);
    }
    tx.commit();
}

} // namespace zorbo
