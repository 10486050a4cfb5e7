#pragma once

#include "core/kitcolours.h"
#include "platform/database.h"

#include <QString>
#include <array>
#include <optional>

namespace zorbo {

inline constexpr int KitArtCount = 80;

// The drawing of a kit art in a kit folder (ending in '/'): "trikot_07.gif".
QString kitartfile(const QString &kitFolder, int art);

struct Rgb {
    int red = 0;
    int green = 0;
    int blue = 0;
    bool operator==(const Rgb &) const = default;
};

// Reads a colour text such as " 48, 48, 48" or "\"255,0,0\"": quotes go,
// each piece between commas is a number however it is padded. Missing or
// unreadable pieces count as 0, values are held to 0..255.
Rgb parsekitcolour(const QString &text);
// The form the game stores: each number right-aligned in three characters.
QString kitcolourtext(const Rgb &rgb);

// The four colours of a kit in the order Trikot1, Trikot2, Hose, Streifen.
using KitColours = std::array<Rgb, 4>;

// Art and colours of one slot of a team row; nothing when the row is missing.
struct KitSlot {
    int art = 0;
    KitColours colours{};
};
std::optional<KitSlot> readkitslot(Database &db, qint64 nummer, TeamTable table, int slot);
// The colours a drawing comes with in the kit set's colour table; nothing
// when the table has no row for the art.
std::optional<KitColours> readartcolours(Database &db, int trikotsatz, int art);

} // namespace zorbo
