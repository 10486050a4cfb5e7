#include "core/ui/kitfigurepainter.h"

#include "core/kitfigure.h"

#include <QPainter>

namespace zorbo {

namespace {

// The highest shapes, the sleeves and the outer stripes, stand this far down the frame.
constexpr int figureTop = 195;

} // namespace

QRect kitpixels(int left, int top, int width, int height)
{
    return QRect(twipstopixels(left - KitPictureLeft), twipstopixels(top - figureTop), twipstopixels(width),
                 twipstopixels(height));
}

void paintkitfigure(QPainter &painter, const std::array<QColor, 4> &colours)
{
    painter.setPen(Qt::black);
    for (const KitShape &s : kitfigure()) {
        painter.setBrush(colours[size_t(s.colour)]);
        painter.drawRect(kitpixels(s.left, s.top, s.width, s.height).adjusted(0, 0, -1, -1));
    }
}

} // namespace zorbo
