// The program's icon for the desktop: a white shirt with a ball on a green
// pitch. One list of shapes on a 64-unit grid gives the SVG and every PNG
// size, so the two can't drift apart.
#include "pictures.h"

#include <QPainter>
#include <QPolygonF>
#include <QRegularExpression>

namespace zorbo {

namespace {

struct Shape {
    enum Kind { RoundedRect, Polygon, Circle } kind;
    QPolygonF points; // the rectangle's corners, the polygon, or the circle's centre and (radius, 0)
    QColor fill;
    QColor stroke;
    double width;
};

QList<Shape> shapes()
{
    const QColor ink(40, 40, 40), pitch(46, 125, 50), line(230, 240, 230);
    QPolygonF shirt;
    // The tree's shirt, a little smaller and to the upper left.
    for (const QPointF p : {QPointF(22, 6), QPointF(42, 6), QPointF(62, 18), QPointF(54, 32), QPointF(48, 28),
                            QPointF(48, 60), QPointF(16, 60), QPointF(16, 28), QPointF(10, 32), QPointF(2, 18)})
        shirt << QPointF(6 + p.x() * 0.72, 6 + p.y() * 0.72);
    QPolygonF pentagon;
    const QPointF centre(45, 45);
    const QPointF corners[] = {{0, -4.5}, {4.3, -1.4}, {2.6, 3.6}, {-2.6, 3.6}, {-4.3, -1.4}};
    for (const QPointF c : corners)
        pentagon << centre + c;
    return {
        {Shape::RoundedRect, QPolygonF() << QPointF(2, 2) << QPointF(62, 62), pitch, QColor(27, 94, 32), 2},
        {Shape::Circle, QPolygonF() << QPointF(32, 62) << QPointF(14, 0), Qt::transparent, line, 1.5},
        {Shape::Polygon, shirt, Qt::white, ink, 2.5},
        {Shape::Polygon, QPolygonF() << QPointF(24, 10.5) << QPointF(29, 16) << QPointF(34, 10.5), QColor(200, 40, 40),
         QColor(200, 40, 40), 1},
        {Shape::Circle, QPolygonF() << centre << QPointF(11, 0), Qt::white, ink, 2.5},
        {Shape::Polygon, pentagon, ink, ink, 1},
    };
}

QString num(double v)
{
    return QString::number(v, 'f', 2).remove(QRegularExpression(QStringLiteral("\\.?0+$")));
}

QString colour(const QColor &c)
{
    return c.alpha() == 0 ? QStringLiteral("none") : c.name();
}

} // namespace

QByteArray programiconsvg()
{
    QString svg = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                 "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"64\" height=\"64\" viewBox=\"0 0 64 64\">\n");
    for (const Shape &s : shapes()) {
        const QString paint = QStringLiteral(" fill=\"%1\" stroke=\"%2\" stroke-width=\"%3\" stroke-linejoin=\"round\"/>\n")
                                  .arg(colour(s.fill), colour(s.stroke), num(s.width));
        if (s.kind == Shape::RoundedRect) {
            const QRectF r(s.points[0], s.points[1]);
            svg += QStringLiteral("  <rect x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\" rx=\"12\"")
                       .arg(num(r.x()), num(r.y()), num(r.width()), num(r.height())) + paint;
        } else if (s.kind == Shape::Circle) {
            svg += QStringLiteral("  <circle cx=\"%1\" cy=\"%2\" r=\"%3\"")
                       .arg(num(s.points[0].x()), num(s.points[0].y()), num(s.points[1].x())) + paint;
        } else {
            QStringList points;
            for (const QPointF p : s.points)
                points << num(p.x()) + QLatin1Char(',') + num(p.y());
            svg += QStringLiteral("  <polygon points=\"%1\"").arg(points.join(QLatin1Char(' '))) + paint;
        }
    }
    svg += QStringLiteral("</svg>\n");
    return svg.toUtf8();
}

QList<Picture> programicons()
{
    QList<Picture> out;
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        QImage img(size, size, QImage::Format_ARGB32);
        img.fill(Qt::transparent);
        QPainter p(&img);
        p.setRenderHint(QPainter::Antialiasing);
        p.scale(size / 64.0, size / 64.0);
        // The pitch's rounded corner clips the centre circle, as in the SVG's viewBox.
        p.setClipRect(QRectF(0, 0, 64, 64));
        for (const Shape &s : shapes()) {
            p.setPen(s.stroke.alpha() ? QPen(s.stroke, s.width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin) : QPen(Qt::NoPen));
            p.setBrush(s.fill.alpha() ? QBrush(s.fill) : QBrush(Qt::NoBrush));
            if (s.kind == Shape::RoundedRect)
                p.drawRoundedRect(QRectF(s.points[0], s.points[1]), 12, 12);
            else if (s.kind == Shape::Circle)
                p.drawEllipse(s.points[0], s.points[1].x(), s.points[1].x());
            else
                p.drawPolygon(s.points);
        }
        p.end();
        out << Picture{QStringLiteral("zorbo-editor-%1.png").arg(size), img};
    }
    return out;
}

} // namespace zorbo
