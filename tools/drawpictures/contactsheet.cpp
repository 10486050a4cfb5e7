#include "pictures.h"

#include <QPainter>

namespace zorbo {

QImage contactsheet(const QList<Picture> &pictures, int scale, int columns)
{
    int cellW = 0, cellH = 0;
    for (const Picture &p : pictures) {
        cellW = std::max(cellW, p.image.width() * scale);
        cellH = std::max(cellH, p.image.height() * scale);
    }
    cellW = std::max(cellW, 90) + 8;
    cellH += 20;
    const int rows = int((pictures.size() + columns - 1) / columns);
    QImage sheet(columns * cellW, rows * cellH, QImage::Format_RGB32);
    sheet.fill(QColor(212, 208, 200));
    QPainter p(&sheet);
    QFont font;
    font.setPixelSize(9);
    p.setFont(font);
    for (int i = 0; i < pictures.size(); ++i) {
        const int x = (i % columns) * cellW, y = (i / columns) * cellH;
        const QImage &img = pictures[i].image;
        const QImage big = img.scaled(img.width() * scale, img.height() * scale);
        p.drawImage(x + (cellW - big.width()) / 2, y + 2, big);
        QString label = pictures[i].name;
        label.remove(QStringLiteral(".gif"));
        label.remove(QStringLiteral(".png"));
        label.remove(QStringLiteral("sp_gesicht_"));
        p.setPen(Qt::black);
        p.drawText(QRect(x, y + cellH - 17, cellW, 16), Qt::AlignCenter, label);
    }
    return sheet;
}

} // namespace zorbo
