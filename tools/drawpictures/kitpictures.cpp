// Kit drawings: 61 x 71, one per kit art, in the colours of the kit set's own
// colour table. The two sets differ in figure: set 0 is a shirt on white, set 1
// a shirt with shorts on a grey card.
#include "pictures.h"

#include <QFile>
#include <QPainter>
#include <QPainterPath>
#include <QTextStream>

namespace zorbo {

namespace {

struct KitColours {
    QColor shirt1, shirt2, shorts, trim;
};

QColor parsecolour(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 3)
        return Qt::white;
    return QColor(parts[0].trimmed().toInt(), parts[1].trimmed().toInt(), parts[2].trimmed().toInt());
}

QList<KitColours> readtable(const QString &path)
{
    QList<KitColours> rows(80, KitColours{Qt::white, Qt::white, Qt::white, Qt::black});
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly | QIODevice::Text))
        return rows;
    QTextStream in(&f);
    in.readLine();
    while (!in.atEnd()) {
        const QStringList cols = in.readLine().split(QLatin1Char('\t'));
        if (cols.size() < 5)
            continue;
        const int n = cols[0].toInt();
        if (n >= 0 && n < 80)
            rows[n] = {parsecolour(cols[1]), parsecolour(cols[2]), parsecolour(cols[3]), parsecolour(cols[4])};
    }
    return rows;
}

QPainterPath shirtpath(int kitset)
{
    QPainterPath s;
    if (kitset == 0) {
        s.moveTo(22, 6);
        s.lineTo(39, 6);
        s.lineTo(58, 16);
        s.lineTo(52, 30);
        s.lineTo(46, 27);
        s.lineTo(46, 66);
        s.lineTo(15, 66);
        s.lineTo(15, 27);
        s.lineTo(9, 30);
        s.lineTo(3, 16);
    } else {
        s.moveTo(23, 4);
        s.lineTo(38, 4);
        s.lineTo(54, 12);
        s.lineTo(58, 38);
        s.lineTo(51, 39);
        s.lineTo(46, 22);
        s.lineTo(46, 46);
        s.lineTo(15, 46);
        s.lineTo(15, 22);
        s.lineTo(10, 39);
        s.lineTo(3, 38);
        s.lineTo(7, 12);
    }
    s.closeSubpath();
    return s;
}

void pattern(QPainter &p, int kind, const KitColours &c)
{
    p.setPen(Qt::NoPen);
    p.fillRect(QRect(0, 0, 61, 71), c.shirt1);
    p.setBrush(c.shirt2);
    switch (kind) {
    case 0: // plain
        break;
    case 1: // broad stripes
        for (int x = 18; x < 46; x += 10)
            p.drawRect(QRect(x, 0, 5, 71));
        break;
    case 2: // hoops
        for (int y = 14; y < 71; y += 10)
            p.drawRect(QRect(0, y, 61, 5));
        break;
    case 3: // halves
        p.drawRect(QRect(31, 0, 30, 71));
        break;
    case 4: // sash
        p.drawPolygon(QPolygonF() << QPointF(10, 6) << QPointF(20, 6) << QPointF(52, 71) << QPointF(40, 71));
        break;
    case 5: // pinstripes
        for (int x = 16; x < 48; x += 4)
            p.drawRect(QRect(x, 0, 1, 71));
        break;
    case 6: // chest band
        p.drawRect(QRect(0, 22, 61, 9));
        break;
    case 7: // quarters
        p.drawRect(QRect(31, 0, 30, 30));
        p.drawRect(QRect(0, 30, 31, 41));
        break;
    case 8: // chevron
        p.drawPolygon(QPolygonF() << QPointF(0, 14) << QPointF(30.5, 34) << QPointF(61, 14) << QPointF(61, 22)
                                  << QPointF(30.5, 42) << QPointF(0, 22));
        break;
    default: // contrast sleeves and side panels
        p.drawRect(QRect(0, 0, 16, 71));
        p.drawRect(QRect(45, 0, 16, 71));
        break;
    }
}

QImage drawkit(int kitset, int art, const KitColours &c)
{
    QImage img(61, 71, QImage::Format_ARGB32);
    img.fill(kitset == 0 ? QColor(255, 255, 255) : QColor(200, 204, 210));
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    const QColor outline = QColor(40, 40, 40);
    const int kind = kitset == 0 ? art % 10 : (art * 7 + art / 10) % 10;
    const int collar = kitset == 0 ? art / 10 % 4 : (art / 10 + 2) % 4;
    if (kitset == 1) { // shorts below the shirt
        QPainterPath shorts;
        shorts.moveTo(15, 45);
        shorts.lineTo(46, 45);
        shorts.lineTo(49, 66);
        shorts.lineTo(33, 66);
        shorts.lineTo(30.5, 56);
        shorts.lineTo(28, 66);
        shorts.lineTo(12, 66);
        shorts.closeSubpath();
        p.setPen(QPen(outline, 1));
        p.setBrush(c.shorts);
        p.drawPath(shorts);
        p.setPen(QPen(c.trim, 2));
        p.drawLine(QPointF(14, 47), QPointF(12.5, 64));
        p.drawLine(QPointF(47, 47), QPointF(48.5, 64));
    }
    const QPainterPath shirt = shirtpath(kitset);
    p.save();
    p.setClipPath(shirt);
    pattern(p, kind, c);
    p.restore();
    p.setPen(QPen(outline, 1.2));
    p.setBrush(Qt::NoBrush);
    p.drawPath(shirt);
    p.setPen(QPen(c.trim, 2.5));
    const double top = kitset == 0 ? 6 : 4;
    switch (collar) {
    case 0: // round neck
        p.drawArc(QRectF(24, top - 5, 13, 11), 180 * 16, 180 * 16);
        break;
    case 1: // v-neck
        p.drawPolyline(QPolygonF() << QPointF(23, top) << QPointF(30.5, top + 9) << QPointF(38, top));
        break;
    case 2: // polo collar
        p.setBrush(c.trim);
        p.setPen(QPen(outline, 0.8));
        p.drawPolygon(QPolygonF() << QPointF(21, top) << QPointF(30.5, top + 4) << QPointF(27, top + 10));
        p.drawPolygon(QPolygonF() << QPointF(40, top) << QPointF(30.5, top + 4) << QPointF(34, top + 10));
        break;
    default: // wrap-over collar with buttons
        p.drawLine(QPointF(24, top), QPointF(37, top));
        p.setPen(QPen(c.trim, 1.5));
        p.drawLine(QPointF(30.5, top), QPointF(30.5, top + 10));
        break;
    }
    p.setPen(QPen(c.trim, 2));
    if (kitset == 0) { // cuffs
        p.drawLine(QPointF(9.5, 29.5), QPointF(3.5, 17));
        p.drawLine(QPointF(51.5, 29.5), QPointF(57.5, 17));
    } else {
        p.drawLine(QPointF(4, 37), QPointF(10, 38));
        p.drawLine(QPointF(51, 38), QPointF(57, 37));
    }
    return img;
}

} // namespace

QList<Picture> kitpictures(int kitset, const QString &colourTable)
{
    const QList<KitColours> colours = readtable(colourTable);
    QList<Picture> out;
    for (int art = 0; art < 80; ++art)
        out << Picture{QStringLiteral("trikot_%1.gif").arg(art, 2, 10, QLatin1Char('0')),
                       drawkit(kitset, art, colours[art])};
    return out;
}

} // namespace zorbo
