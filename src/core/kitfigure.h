#pragma once

#include <array>

namespace zorbo {

// Twips of the old window layouts: 15 to the pixel at 96 dots per inch.
inline constexpr int TwipsPerPixel = 15;
constexpr int twipstopixels(int twips) { return (twips + TwipsPerPixel / 2) / TwipsPerPixel; }

// One of the fourteen shapes of the small kit figure, in twips within the
// kit's frame. colour: 0 Trikot1, 1 Trikot2, 2 Hose, 3 Streifen.
struct KitShape {
    const char *name; // control array: shpstreif, shpsock, shparm, shphose, shpstreifh
    int index;        // index within the slot; the array index is slot * per-slot count + index
    int colour;
    int left, top, width, height;
};

// Shirt of five stripes, socks, sleeves, shorts and the shorts' side stripes,
// in drawing order; the same for every slot.
const std::array<KitShape, 14> &kitfigure();

// Where the kit drawing stands in its frame, in twips.
inline constexpr int KitPictureLeft = 240;
inline constexpr int KitPictureTop = 360;
inline constexpr int KitPictureWidth = 975;
inline constexpr int KitPictureHeight = 1125;

} // namespace zorbo
