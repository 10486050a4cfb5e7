// Program icons: tree, toolbar and the workbench's position shirts and drag
// cursors. 16 x 16, the cursors 32 x 32; drawn on a 64-unit grid.
#include "pictures.h"

#include <QPainter>
#include <QPainterPath>
#include <functional>

namespace zorbo {

namespace {

const QColor ink(40, 40, 40);

QImage draw(int size, const std::function<void(QPainter &)> &f)
{
    QImage img(size, size, QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / 64.0, size / 64.0);
    f(p);
    return img;
}

void page(QPainter &p)
{
    p.setPen(QPen(ink, 3));
    p.setBrush(Qt::white);
    p.drawPolygon(QPolygonF() << QPointF(12, 4) << QPointF(40, 4) << QPointF(54, 18) << QPointF(54, 60)
                              << QPointF(12, 60));
    p.drawPolyline(QPolygonF() << QPointF(40, 4) << QPointF(40, 18) << QPointF(54, 18));
}

void arrow(QPainter &p, QPointF from, QPointF to, QColor c)
{
    p.setPen(QPen(c, 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawLine(from, to);
    QLineF l(to, from), a(to, from);
    l.setLength(14);
    a.setLength(14);
    l.setAngle(l.angle() + 40);
    a.setAngle(a.angle() - 40);
    p.drawLine(l);
    p.drawLine(a);
}

void shirt(QPainter &p, QColor c, QColor trim)
{
    p.setPen(QPen(ink, 3));
    p.setBrush(c);
    p.drawPolygon(QPolygonF() << QPointF(22, 6) << QPointF(42, 6) << QPointF(62, 18) << QPointF(54, 32)
                              << QPointF(48, 28) << QPointF(48, 60) << QPointF(16, 60) << QPointF(16, 28)
                              << QPointF(10, 32) << QPointF(2, 18));
    p.setPen(QPen(trim, 4));
    p.drawArc(QRectF(24, -2, 16, 14), 180 * 16, 180 * 16);
}

void ball(QPainter &p, QPointF c, double r)
{
    p.setPen(QPen(ink, 3));
    p.setBrush(Qt::white);
    p.drawEllipse(c, r, r);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawEllipse(c, r * 0.4, r * 0.4);
}

void box(QPainter &p, QRectF r, QColor c)
{
    p.setPen(QPen(ink, 3));
    p.setBrush(c);
    p.drawRect(r);
}

} // namespace

QList<Picture> iconpictures()
{
    QList<Picture> out;
    out << Picture{QStringLiteral("kontinent.png"), draw(16, [](QPainter &p) {
                       p.setPen(QPen(ink, 3));
                       p.setBrush(QColor(70, 130, 210));
                       p.drawEllipse(QPointF(32, 32), 28, 28);
                       p.setPen(Qt::NoPen);
                       p.setBrush(QColor(60, 160, 70));
                       p.drawEllipse(QRectF(14, 12, 20, 16));
                       p.drawEllipse(QRectF(30, 32, 18, 20));
                   })};
    // Every country and the root wear it, so it is no country's flag: one
    // plain colour, waving, on a pole.
    out << Picture{QStringLiteral("land.png"), draw(16, [](QPainter &p) {
                       p.setPen(QPen(ink, 4));
                       p.drawLine(QPointF(10, 4), QPointF(10, 62));
                       QPainterPath flag;
                       flag.moveTo(12, 6);
                       flag.cubicTo(26, 0, 40, 14, 58, 6);
                       flag.lineTo(58, 36);
                       flag.cubicTo(40, 44, 26, 30, 12, 36);
                       flag.closeSubpath();
                       p.setPen(QPen(ink, 3));
                       p.setBrush(QColor(90, 160, 190));
                       p.drawPath(flag);
                   })};
    out << Picture{QStringLiteral("verein.png"), draw(16, [](QPainter &p) {
                       QPainterPath s;
                       s.moveTo(8, 6);
                       s.lineTo(56, 6);
                       s.lineTo(56, 30);
                       s.quadTo(52, 52, 32, 60);
                       s.quadTo(12, 52, 8, 30);
                       s.closeSubpath();
                       p.setPen(QPen(ink, 3));
                       p.setBrush(QColor(200, 30, 40));
                       p.drawPath(s);
                       ball(p, {32, 28}, 12);
                   })};
    out << Picture{QStringLiteral("neu.png"), draw(16, [](QPainter &p) {
                       page(p);
                       p.setPen(QPen(QColor(250, 190, 0), 6));
                       p.drawLine(QPointF(46, 36), QPointF(46, 60));
                       p.drawLine(QPointF(34, 48), QPointF(58, 48));
                   })};
    out << Picture{QStringLiteral("oeffnen.png"), draw(16, [](QPainter &p) {
                       p.setPen(QPen(ink, 3));
                       p.setBrush(QColor(230, 190, 80));
                       p.drawPolygon(QPolygonF() << QPointF(4, 14) << QPointF(24, 14) << QPointF(30, 20)
                                                 << QPointF(52, 20) << QPointF(52, 56) << QPointF(4, 56));
                       p.setBrush(QColor(250, 220, 120));
                       p.drawPolygon(QPolygonF() << QPointF(12, 30) << QPointF(62, 30) << QPointF(52, 56)
                                                 << QPointF(4, 56));
                   })};
    out << Picture{QStringLiteral("speichern.png"), draw(16, [](QPainter &p) {
                       box(p, {6, 6, 52, 52}, QColor(50, 90, 170));
                       box(p, {16, 6, 32, 20}, QColor(230, 230, 230));
                       box(p, {14, 36, 36, 22}, QColor(250, 250, 250));
                   })};
    out << Picture{QStringLiteral("importconfig.png"), draw(16, [](QPainter &p) {
                       page(p);
                       arrow(p, {32, 12}, {32, 52}, QColor(0, 140, 60));
                   })};
    out << Picture{QStringLiteral("exportconfig.png"), draw(16, [](QPainter &p) {
                       page(p);
                       arrow(p, {32, 52}, {32, 14}, QColor(200, 60, 0));
                   })};
    out << Picture{QStringLiteral("importanstoss.png"), draw(16, [](QPainter &p) {
                       shirt(p, QColor(200, 30, 40), Qt::white);
                       arrow(p, {40, 40}, {14, 40}, QColor(0, 140, 60));
                   })};
    out << Picture{QStringLiteral("trikotoriginal.png"), draw(16, [](QPainter &p) {
                       shirt(p, Qt::white, QColor(200, 30, 40));
                       p.setPen(Qt::NoPen);
                       p.setBrush(QColor(200, 30, 40));
                       p.drawRect(QRectF(28, 10, 8, 48));
                   })};
    out << Picture{QStringLiteral("trikotzorbode.png"), draw(16, [](QPainter &p) {
                       shirt(p, QColor(30, 80, 180), QColor(250, 200, 0));
                       p.setPen(Qt::NoPen);
                       p.setBrush(QColor(250, 200, 0));
                       for (int y = 22; y < 58; y += 14)
                           p.drawRect(QRectF(17, y, 30, 6));
                   })};
    const QColor positions[] = {QColor(140, 20, 20), QColor(170, 140, 0), QColor(20, 110, 40), QColor(80, 80, 80)};
    // Images 1 to 4 of the workbench's iltrikot: strikers dark red, midfield
    // dark yellow, defence dark green, goalkeepers dark grey.
    const char *names[] = {"sturm", "mittelfeld", "abwehr", "tor"};
    for (int i = 0; i < 4; ++i)
        out << Picture{QStringLiteral("iltrikot_%1.png").arg(QLatin1String(names[i])),
                       draw(16, [&](QPainter &p) { shirt(p, positions[i], QColor(212, 208, 200)); })};
    out << Picture{QStringLiteral("cursor_verboten.png"), draw(32, [](QPainter &p) {
                       p.setPen(QPen(QColor(200, 20, 20), 8));
                       p.setBrush(Qt::white);
                       p.drawEllipse(QPointF(32, 32), 24, 24);
                       p.drawLine(QPointF(15, 15), QPointF(49, 49));
                   })};
    out << Picture{QStringLiteral("cursor_ablegen.png"), draw(32, [](QPainter &p) {
                       p.setPen(QPen(ink, 3, Qt::DotLine));
                       p.setBrush(Qt::NoBrush);
                       p.drawRect(QRectF(20, 34, 40, 24));
                       p.setPen(QPen(Qt::black, 2));
                       p.setBrush(Qt::white);
                       p.drawPolygon(QPolygonF() << QPointF(4, 2) << QPointF(4, 40) << QPointF(14, 30) << QPointF(22, 46)
                                                 << QPointF(28, 43) << QPointF(20, 28) << QPointF(32, 28));
                   })};
    return out;
}

} // namespace zorbo
