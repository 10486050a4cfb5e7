#include "editor/kitart.h"

#include "platform/numbers.h"

#include <QStringList>

namespace zorbo {

namespace {

// The team row's colour columns in slot order, four to a slot.
const char *const colourColumns[12] = {
    "F_TRIKOT_SPIELER",    "F_AUSW_TRIKOT_SPIELER", "F_ALTERN_TRIKOT_SPIELER", "F_HOSE_SPIELER",
    "F_AUSW_HOSE_SPIELER", "F_ALTERN_HOSE_SPIELER", "F_TRIKOT_WERBUNG",        "F_HOSE_STREIFEN",
    "F_TRIKOT_TORWART",    "F_HOSE_TORWART",        "F_TRIKOT_TRAINER",        "F_HOSE_TRAINER",
};
const char *const artColumns[3] = {"TRIKOT_ART", "AUSWEICH_TRIKOT_ART", "TW_TRIKOT_ART"};

int channel(const QString &piece)
{
    return qBound(0, int(valtext(piece.trimmed())), 255);
}

} // namespace

QString kitartfile(const QString &kitFolder, int art)
{
    return kitFolder + QStringLiteral("trikot_%1.gif").arg(art, 2, 10, QLatin1Char('0'));
}

Rgb parsekitcolour(const QString &text)
{
    QString plain = text;
    plain.remove(QLatin1Char('"'));
    const QStringList pieces = plain.split(QLatin1Char(','));
    Rgb rgb;
    if (pieces.size() > 0)
        rgb.red = channel(pieces[0]);
    if (pieces.size() > 1)
        rgb.green = channel(pieces[1]);
    if (pieces.size() > 2)
        rgb.blue = channel(pieces[2]);
    return rgb;
}

QString kitcolourtext(const Rgb &rgb)
{
    return QStringLiteral("%1,%2,%3").arg(rgb.red, 3).arg(rgb.green, 3).arg(rgb.blue, 3);
}

std::optional<KitSlot> readkitslot(Database &db, qint64 nummer, TeamTable table, int slot)
{
    if (slot < 0 || slot > 2)
        return std::nullopt;
    // Column and table names come from the fixed lists above.
    const QString sql = QStringLiteral("SELECT %1, %2, %3, %4, %5 FROM %6 WHERE NUMMER = ?1")
                            .arg(QLatin1String(artColumns[slot]), QLatin1String(colourColumns[slot * 4]),
                                 QLatin1String(colourColumns[slot * 4 + 1]), QLatin1String(colourColumns[slot * 4 + 2]),
                                 QLatin1String(colourColumns[slot * 4 + 3]), teamtablename(table));
    Statement st = db.prepare(sql);
    st.bind(1, nummer);
    if (!st.step())
        return std::nullopt;
    KitSlot kit;
    kit.art = int(st.integer(0));
    for (int i = 0; i < 4; ++i)
        kit.colours[size_t(i)] = parsekitcolour(st.text(i + 1));
    return kit;
}

std::optional<KitColours> readartcolours(Database &db, int trikotsatz, int art)
{
    Statement st = db.prepare(
        QStringLiteral("SELECT Trikot1, Trikot2, Hose, Streifen FROM %1 WHERE Nummer = ?1").arg(kitcolourtable(trikotsatz)));
    st.bind(1, art);
    if (!st.step())
        return std::nullopt;
    KitColours colours;
    for (int i = 0; i < 4; ++i)
        colours[size_t(i)] = parsekitcolour(st.text(i));
    return colours;
}

} // namespace zorbo
