#pragma once

namespace zorbo {

// The game shows its crests at 64 x 64 pixels and the editor's picker at 66;
// a side of 256 leaves room for drawings made larger on purpose, and keeps a
// thousand crests to a few hundred megabytes at most.
inline constexpr int CrestMaxSide = 256;

// The 16-bit pixel of the game: red in bits 15-11, green 10-5, blue 4-0.
constexpr int to5bit(int v) { return v / 8; }
constexpr int to6bit(int v) { return v / 4; }
constexpr int pack565(int r, int g, int b) { return r * 2048 | g * 32 | b; }
constexpr int blue565(int p) { return p % 32; }
constexpr int green565(int p) { return (p / 32) & 63; }
constexpr int red565(int p) { return (p & ~0x7FF) / 2048; }

// The game's own widening: odd values fill the low bits with ones, even ones
// with zeros, so 31 reaches 255 while 30 stays at 240. Not a shift or a scale.
constexpr int expand5(int c) { return c % 2 == 0 ? c * 8 : (c + 1) * 8 - 1; }
constexpr int expand6(int c) { return c % 2 == 0 ? c * 4 : (c + 1) * 4 - 1; }

} // namespace zorbo
