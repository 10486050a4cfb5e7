#pragma once

#include <QColor>
#include <QRect>
#include <array>

class QPainter;

namespace zorbo {

// Twips of a kit's frame to pixels of a kit preview, which starts at the
// drawing's left and the figure's top.
QRect kitpixels(int left, int top, int width, int height);

// The small kit figure of fourteen shapes in the kit's four colours
// (Trikot1, Trikot2, Hose, Streifen), right of the drawing, as every kit
// preview shows it.
void paintkitfigure(QPainter &painter, const std::array<QColor, 4> &colours);

} // namespace zorbo
