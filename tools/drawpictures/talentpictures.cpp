// Talent pictures: 16 x 16, drawn on a 64-unit grid. The ground colour tells the
// group (field players, all players, goalkeepers), the sign tells the talent.
#include "pictures.h"

#include <QPainter>
#include <QPainterPath>
#include <functional>

namespace zorbo {

namespace {

const QColor ink(30, 30, 30);
const QColor white(255, 255, 255);
const QColor yellow(255, 220, 0);
const QColor red(220, 40, 40);

void ball(QPainter &p, QPointF c, double r)
{
    p.setPen(QPen(ink, 3));
    p.setBrush(white);
    p.drawEllipse(c, r, r);
    p.setBrush(ink);
    p.setPen(Qt::NoPen);
    p.drawEllipse(c, r * 0.38, r * 0.38);
}

void head(QPainter &p, QPointF c, double r)
{
    p.setPen(QPen(ink, 3));
    p.setBrush(QColor(240, 200, 160));
    p.drawEllipse(c, r, r * 1.1);
}

void boot(QPainter &p, QPointF at, bool mirrored = false)
{
    p.save();
    p.translate(at);
    if (mirrored)
        p.scale(-1, 1);
    QPainterPath b;
    b.moveTo(-12, -14);
    b.lineTo(-2, -14);
    b.lineTo(0, -2);
    b.lineTo(14, 2);
    b.quadTo(18, 10, 10, 10);
    b.lineTo(-12, 10);
    b.closeSubpath();
    p.setPen(QPen(ink, 3));
    p.setBrush(QColor(20, 20, 20));
    p.drawPath(b);
    p.setPen(QPen(white, 2));
    p.drawLine(QPointF(-10, 12), QPointF(10, 12));
    p.restore();
}

void arrow(QPainter &p, QPointF from, QPointF to, QColor colour = white, double width = 5)
{
    p.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(from, to);
    const QLineF l(to, from);
    QLineF a = l, b = l;
    a.setLength(12);
    b.setLength(12);
    a.setAngle(l.angle() + 35);
    b.setAngle(l.angle() - 35);
    p.drawLine(a);
    p.drawLine(b);
}

void curve(QPainter &p, QPointF from, QPointF ctrl, QPointF to, QColor colour = white)
{
    QPainterPath path(from);
    path.quadTo(ctrl, to);
    p.setPen(QPen(colour, 4, Qt::DashLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawPath(path);
}

void goal(QPainter &p, QRectF r)
{
    p.setPen(QPen(QColor(200, 200, 200), 1.5));
    for (double x = r.left() + 6; x < r.right(); x += 6)
        p.drawLine(QPointF(x, r.top()), QPointF(x, r.bottom()));
    for (double y = r.top() + 6; y < r.bottom(); y += 6)
        p.drawLine(QPointF(r.left(), y), QPointF(r.right(), y));
    p.setPen(QPen(white, 4));
    p.drawLine(r.bottomLeft(), r.topLeft());
    p.drawLine(r.topLeft(), r.topRight());
    p.drawLine(r.topRight(), r.bottomRight());
}

void lightning(QPainter &p, QPointF c, double s, QColor colour = QColor(255, 220, 0))
{
    QPolygonF z;
    z << QPointF(4, -20) << QPointF(-10, 2) << QPointF(0, 2) << QPointF(-4, 20) << QPointF(10, -4)
      << QPointF(0, -4);
    QTransform t;
    t.translate(c.x(), c.y());
    t.scale(s, s);
    p.setPen(QPen(ink, 2));
    p.setBrush(colour);
    p.drawPolygon(t.map(z));
}

void star(QPainter &p, QPointF c, double r, QColor colour = QColor(255, 215, 0))
{
    QPolygonF s;
    for (int i = 0; i < 10; ++i) {
        const double a = -M_PI / 2 + i * M_PI / 5, rr = i % 2 ? r * 0.45 : r;
        s << QPointF(c.x() + rr * std::cos(a), c.y() + rr * std::sin(a));
    }
    p.setPen(QPen(ink, 2));
    p.setBrush(colour);
    p.drawPolygon(s);
}

void shield(QPainter &p, QPointF c, double s, QColor colour = QColor(190, 200, 215))
{
    QPainterPath path;
    path.moveTo(c.x() - 16 * s, c.y() - 18 * s);
    path.lineTo(c.x() + 16 * s, c.y() - 18 * s);
    path.lineTo(c.x() + 16 * s, c.y());
    path.quadTo(c.x() + 14 * s, c.y() + 16 * s, c.x(), c.y() + 22 * s);
    path.quadTo(c.x() - 14 * s, c.y() + 16 * s, c.x() - 16 * s, c.y());
    path.closeSubpath();
    p.setPen(QPen(ink, 3));
    p.setBrush(colour);
    p.drawPath(path);
}

void glove(QPainter &p, QPointF c)
{
    p.setPen(QPen(ink, 3));
    p.setBrush(QColor(255, 140, 0));
    p.drawRoundedRect(QRectF(c.x() - 12, c.y() - 4, 24, 20), 5, 5);
    for (int i = 0; i < 4; ++i)
        p.drawRoundedRect(QRectF(c.x() - 12 + i * 6, c.y() - 18, 6, 16), 3, 3);
    p.drawRoundedRect(QRectF(c.x() - 20, c.y() - 2, 10, 8), 3, 3);
}

void heart(QPainter &p, QPointF c, double s)
{
    QPainterPath h;
    h.moveTo(c.x(), c.y() + 18 * s);
    h.cubicTo(c.x() - 28 * s, c.y(), c.x() - 16 * s, c.y() - 22 * s, c.x(), c.y() - 8 * s);
    h.cubicTo(c.x() + 16 * s, c.y() - 22 * s, c.x() + 28 * s, c.y(), c.x(), c.y() + 18 * s);
    p.setPen(QPen(ink, 3));
    p.setBrush(QColor(220, 30, 40));
    p.drawPath(h);
}

void eye(QPainter &p, QPointF c)
{
    QPainterPath e;
    e.moveTo(c.x() - 24, c.y());
    e.quadTo(c.x(), c.y() - 22, c.x() + 24, c.y());
    e.quadTo(c.x(), c.y() + 22, c.x() - 24, c.y());
    p.setPen(QPen(ink, 3));
    p.setBrush(white);
    p.drawPath(e);
    p.setBrush(QColor(40, 110, 200));
    p.drawEllipse(c, 8, 8);
    p.setBrush(ink);
    p.drawEllipse(c, 3.5, 3.5);
}

void flag(QPainter &p, QPointF foot, QColor colour)
{
    p.setPen(QPen(white, 4));
    p.drawLine(foot, foot + QPointF(0, -40));
    p.setPen(QPen(ink, 2));
    p.setBrush(colour);
    p.drawPolygon(QPolygonF() << foot + QPointF(2, -40) << foot + QPointF(24, -32) << foot + QPointF(2, -24));
}

using Sign = std::function<void(QPainter &)>;

struct Talent {
    int group; // 0 field players, 1 all, 2 goalkeepers
    Sign draw;
};

QList<Talent> talents()
{
    return {
        {0, [](QPainter &p) { head(p, {32, 42}, 14); ball(p, {32, 14}, 10); }}, // Kopfball
        {0, [](QPainter &p) { curve(p, {6, 56}, {20, 0}, {52, 24}); ball(p, {50, 26}, 9); }}, // Flanken
        {0, [](QPainter &p) { p.setPen(QPen(white, 4)); p.drawPolyline(QPolygonF() << QPointF(6, 50) << QPointF(18, 34) << QPointF(28, 48) << QPointF(40, 30)); ball(p, {48, 22}, 10); }}, // Dribbling
        {0, [](QPainter &p) { boot(p, {22, 40}); lightning(p, {48, 22}, 0.9); }}, // Schusskraft
        {0, [](QPainter &p) { goal(p, {38, 10, 22, 22}); arrow(p, {4, 58}, {44, 24}); }}, // Weitschuss
        {0, [](QPainter &p) { p.setPen(QPen(ink, 2)); p.setBrush(QColor(230, 230, 230)); for (int i = 0; i < 3; ++i) p.drawRoundedRect(QRectF(26 + i * 11, 18, 10, 34), 4, 4); ball(p, {12, 48}, 9); curve(p, {14, 36}, {30, 0}, {58, 12}, yellow); }}, // Freistöße
        {0, [](QPainter &p) { goal(p, {8, 8, 48, 26}); p.setBrush(white); p.setPen(Qt::NoPen); p.drawEllipse(QPointF(32, 50), 6, 6); }}, // Elfmeter
        {0, [](QPainter &p) { p.setPen(QPen(white, 3)); p.drawArc(QRectF(-12, 40, 30, 30), 0, 90 * 16); flag(p, {8, 54}, QColor(255, 80, 0)); ball(p, {44, 46}, 9); }}, // Ecken
        {0, [](QPainter &p) { ball(p, {12, 32}, 9); arrow(p, {22, 32}, {58, 32}); }}, // Passspiel
        {0, [](QPainter &p) { arrow(p, {16, 58}, {40, 6}); p.setPen(QPen(white, 3)); p.drawLine(QPointF(4, 30), QPointF(60, 30)); }}, // Steilpässe
        {0, [](QPainter &p) { boot(p, {30, 46}); ball(p, {34, 16}, 11); }}, // Ballkontrolle
        {0, [](QPainter &p) { ball(p, {26, 38}, 14); star(p, {48, 16}, 13); }}, // Technik
        {0, [](QPainter &p) { lightning(p, {32, 32}, 1.4); }}, // Schnelligkeit
        {0, [](QPainter &p) { p.setPen(QPen(white, 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin)); p.setBrush(Qt::NoBrush); for (int x : {10, 28}) p.drawPolyline(QPolygonF() << QPointF(x, 14) << QPointF(x + 16, 32) << QPointF(x, 50)); p.setPen(QPen(yellow, 6)); p.drawLine(QPointF(50, 12), QPointF(50, 52)); }}, // Antritt
        {0, [](QPainter &p) { head(p, {18, 30}, 12); head(p, {46, 30}, 12); p.setPen(QPen(red, 5)); p.drawLine(QPointF(28, 50), QPointF(36, 58)); p.drawLine(QPointF(36, 50), QPointF(28, 58)); }}, // Zweikampf
        {0, [](QPainter &p) { p.setPen(QPen(QColor(140, 90, 40), 5)); p.drawLine(QPointF(4, 56), QPointF(40, 44)); boot(p, {44, 42}); ball(p, {52, 18}, 9); }}, // Grätsche
        {0, [](QPainter &p) { head(p, {24, 34}, 14); p.setPen(QPen(yellow, 4, Qt::DotLine)); p.setBrush(Qt::NoBrush); p.drawEllipse(QPointF(36, 34), 24, 24); }}, // Manndeckung
        {0, [](QPainter &p) { p.setPen(QPen(white, 4)); p.setBrush(Qt::NoBrush); p.drawEllipse(QPointF(32, 32), 20, 20); p.drawLine(QPointF(32, 4), QPointF(32, 60)); p.drawLine(QPointF(4, 32), QPointF(60, 32)); p.setBrush(red); p.setPen(Qt::NoPen); p.drawEllipse(QPointF(32, 32), 6, 6); }}, // Stellungsspiel
        {0, [](QPainter &p) { shield(p, {30, 38}, 1.1); ball(p, {48, 12}, 9); head(p, {30, 36}, 8); }}, // Kopfballabwehr
        {0, [](QPainter &p) { flag(p, {20, 56}, yellow); p.setPen(QPen(white, 3, Qt::DashLine)); p.drawLine(QPointF(44, 4), QPointF(44, 60)); }}, // Abseitsfalle
        {0, [](QPainter &p) { shield(p, {18, 44}, 0.6); arrow(p, {28, 44}, {56, 10}); }}, // Spieleröffnung
        {0, [](QPainter &p) { goal(p, {6, 10, 52, 28}); star(p, {32, 46}, 14); }}, // Torinstinkt
        {0, [](QPainter &p) { goal(p, {6, 10, 52, 36}); ball(p, {32, 30}, 10); }}, // Abschluss
        {0, [](QPainter &p) { boot(p, {20, 30}); p.setPen(QPen(white, 3, Qt::DotLine)); p.drawLine(QPointF(36, 40), QPointF(60, 58)); ball(p, {42, 16}, 10); }}, // Volleyschuss
        {0, [](QPainter &p) { p.setPen(QPen(white, 5)); p.setBrush(Qt::NoBrush); p.drawArc(QRectF(12, 10, 40, 40), 30 * 16, 280 * 16); boot(p, {30, 12}, true); ball(p, {12, 50}, 8); }}, // Fallrückzieher
        {0, [](QPainter &p) { boot(p, {40, 26}, true); arrow(p, {34, 50}, {4, 50}, yellow); }}, // Hackentrick
        {0, [](QPainter &p) { eye(p, {32, 32}); }}, // Übersicht
        {0, [](QPainter &p) { QPolygonF c; c << QPointF(8, 46) << QPointF(8, 18) << QPointF(20, 32) << QPointF(32, 12) << QPointF(44, 32) << QPointF(56, 18) << QPointF(56, 46); p.setPen(QPen(ink, 3)); p.setBrush(QColor(255, 215, 0)); p.drawPolygon(c); ball(p, {32, 52}, 7); }}, // Spielmacher
        {0, [](QPainter &p) { p.setPen(Qt::NoPen); p.setBrush(white); for (int i = 0; i < 3; ++i) { p.drawEllipse(QRectF(8 + i * 18, 44 - i * 16, 10, 16)); p.drawEllipse(QRectF(14 + i * 18, 52 - i * 16, 8, 8)); } }}, // Laufstärke
        {0, [](QPainter &p) { arrow(p, {4, 8}, {26, 30}, yellow); arrow(p, {60, 8}, {38, 30}, yellow); arrow(p, {32, 62}, {32, 40}, yellow); ball(p, {32, 32}, 7); }}, // Pressing
        {0, [](QPainter &p) { p.setPen(QPen(white, 5, Qt::SolidLine, Qt::RoundCap)); p.setBrush(Qt::NoBrush); p.drawArc(QRectF(10, 24, 30, 30), 180 * 16, 180 * 16); p.drawLine(QPointF(10, 39), QPointF(10, 20)); arrow(p, {40, 39}, {40, 6}, yellow); }}, // Konter
        {0, [](QPainter &p) { QPainterPath w; w.moveTo(8, 40); w.cubicTo(16, 8, 40, 6, 58, 10); w.cubicTo(46, 18, 50, 24, 38, 26); w.cubicTo(48, 32, 40, 36, 30, 36); w.cubicTo(34, 42, 24, 44, 8, 40); p.setPen(QPen(ink, 3)); p.setBrush(white); p.drawPath(w); p.setPen(QPen(white, 3)); p.drawLine(QPointF(58, 4), QPointF(58, 60)); }}, // Flügelspiel
        {0, [](QPainter &p) { arrow(p, {6, 22}, {56, 22}); arrow(p, {58, 44}, {8, 44}, yellow); }}, // Doppelpass
        {0, [](QPainter &p) { p.setPen(QPen(ink, 3)); p.setBrush(QColor(240, 200, 160)); p.drawRoundedRect(QRectF(10, 30, 14, 24), 5, 5); p.drawRoundedRect(QRectF(40, 30, 14, 24), 5, 5); ball(p, {32, 18}, 13); }}, // Einwürfe
        {0, [](QPainter &p) { shield(p, {24, 30}, 1.1); ball(p, {48, 46}, 11); }}, // Ballbehauptung
        {0, [](QPainter &p) { shield(p, {20, 40}, 0.8); arrow(p, {40, 58}, {40, 6}, yellow, 6); }}, // Offensivdrang
        {0, [](QPainter &p) { boot(p, {18, 36}, true); boot(p, {46, 36}); }}, // Beidfüßig
        {0, [](QPainter &p) { p.setPen(QPen(ink, 3)); p.setBrush(QColor(255, 220, 0)); p.drawEllipse(QPointF(32, 32), 24, 24); p.setBrush(ink); p.drawEllipse(QPointF(23, 26), 4, 5); p.setPen(QPen(ink, 4, Qt::SolidLine, Qt::RoundCap)); p.drawLine(QPointF(36, 26), QPointF(46, 26)); p.setBrush(Qt::NoBrush); p.drawArc(QRectF(18, 26, 28, 22), 200 * 16, 140 * 16); }}, // Schlitzohr
        {0, [](QPainter &p) { p.setPen(QPen(white, 3, Qt::DotLine)); p.drawLine(QPointF(6, 10), QPointF(30, 54)); p.drawLine(QPointF(30, 54), QPointF(44, 26)); goal(p, {40, 6, 22, 18}); ball(p, {44, 30}, 9); }}, // Abstauber
        {0, [](QPainter &p) { p.setPen(QPen(ink, 3)); p.setBrush(QColor(255, 140, 0)); p.drawRoundedRect(QRectF(24, 36, 16, 24), 4, 4); curve(p, {6, 56}, {32, -20}, {58, 56}); ball(p, {56, 52}, 7); }}, // Lupfer
        {1, [](QPainter &p) { heart(p, {32, 34}, 1.3); }}, // Kondition
        {1, [](QPainter &p) { p.setPen(QPen(ink, 3)); p.setBrush(QColor(255, 215, 0)); p.drawRoundedRect(QRectF(6, 18, 52, 28), 6, 6); p.setPen(QPen(ink, 5, Qt::SolidLine, Qt::RoundCap)); p.setBrush(Qt::NoBrush); p.drawArc(QRectF(22, 22, 20, 20), 45 * 16, 270 * 16); }}, // Führungsspieler
        {1, [](QPainter &p) { p.setPen(QPen(QColor(180, 230, 255), 5, Qt::SolidLine, Qt::RoundCap)); for (int a = 0; a < 3; ++a) { QLineF l(QPointF(32, 32), QPointF(32, 6)); l.setAngle(90 + a * 60); QLineF m = l; m.setAngle(l.angle() + 180); p.drawLine(l); p.drawLine(m); } }}, // Nervenstärke
        {1, [](QPainter &p) { p.setPen(QPen(ink, 3)); p.setBrush(QColor(150, 150, 160)); p.drawPolygon(QPolygonF() << QPointF(6, 54) << QPointF(12, 20) << QPointF(30, 8) << QPointF(54, 16) << QPointF(58, 54)); p.setPen(QPen(QColor(90, 90, 100), 3)); p.drawLine(QPointF(20, 30), QPointF(34, 40)); }}, // Robustheit
        {1, [](QPainter &p) { p.setPen(QPen(ink, 2)); p.setBrush(QColor(255, 220, 0)); p.drawRect(QRectF(18, 8, 28, 40)); p.setPen(QPen(QColor(0, 170, 60), 6, Qt::SolidLine, Qt::RoundCap)); p.drawLine(QPointF(6, 40), QPointF(18, 54)); p.drawLine(QPointF(18, 54), QPointF(58, 20)); }}, // Fairness
        {1, [](QPainter &p) { QPainterPath f; f.moveTo(32, 60); f.cubicTo(6, 56, 10, 30, 24, 6); f.cubicTo(28, 24, 36, 24, 40, 16); f.cubicTo(56, 32, 56, 56, 32, 60); p.setPen(QPen(ink, 2)); p.setBrush(QColor(240, 80, 0)); p.drawPath(f); p.setBrush(QColor(255, 210, 0)); p.drawEllipse(QRectF(24, 38, 16, 20)); }}, // Kampfgeist
        {1, [](QPainter &p) { star(p, {14, 40}, 11, QColor(205, 127, 50)); star(p, {32, 22}, 13); star(p, {50, 40}, 11, QColor(200, 200, 210)); }}, // Erfahrung
        {2, [](QPainter &p) { glove(p, {26, 40}); lightning(p, {48, 20}, 0.8); }}, // Reflexe
        {2, [](QPainter &p) { curve(p, {4, 40}, {20, 0}, {40, 14}); glove(p, {36, 44}); ball(p, {44, 12}, 8); }}, // Flankenabfangen
        {2, [](QPainter &p) { glove(p, {32, 30}); p.setBrush(white); p.setPen(Qt::NoPen); p.drawEllipse(QPointF(32, 56), 5, 5); p.setPen(QPen(QColor(220, 40, 40), 4)); p.drawLine(QPointF(8, 8), QPointF(56, 52)); }}, // Elfmeterkiller
        {2, [](QPainter &p) { ball(p, {14, 50}, 9); curve(p, {18, 42}, {36, -6}, {60, 30}); arrow(p, {44, 20}, {60, 32}, white, 3); }}, // Abschlag
        {2, [](QPainter &p) { glove(p, {22, 30}); boot(p, {44, 48}); }}, // Torwartlibero
        {2, [](QPainter &p) { glove(p, {18, 36}); arrow(p, {30, 36}, {60, 36}, QColor(255, 220, 0)); }}, // Herauslaufen
    };
}

QImage canvas(int size)
{
    QImage img(size, size, QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    return img;
}

QImage statepicture(bool learned)
{
    QImage img = canvas(16);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(0.25, 0.25);
    if (learned) {
        p.setPen(QPen(QColor(0, 120, 40), 12, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.drawPolyline(QPolygonF() << QPointF(8, 34) << QPointF(24, 52) << QPointF(56, 12));
    } else {
        p.setPen(QPen(QColor(60, 60, 60), 7));
        p.setBrush(Qt::NoBrush);
        p.drawArc(QRectF(18, 4, 28, 34), 0, 180 * 16);
        p.drawLine(QPointF(18, 21), QPointF(18, 30));
        p.drawLine(QPointF(46, 21), QPointF(46, 30));
        p.setPen(QPen(QColor(40, 40, 40), 3));
        p.setBrush(QColor(200, 30, 30));
        p.drawRoundedRect(QRectF(10, 28, 44, 32), 5, 5);
        p.setBrush(QColor(40, 40, 40));
        p.drawEllipse(QPointF(32, 42), 4, 4);
    }
    return img;
}

} // namespace

QList<Picture> talentpictures()
{
    const QColor grounds[] = {QColor(34, 120, 52), QColor(40, 80, 160), QColor(170, 80, 20)};
    QList<Picture> out;
    const QList<Talent> list = talents();
    for (int i = 0; i < list.size(); ++i) {
        QImage img = canvas(16);
        QPainter p(&img);
        p.setRenderHint(QPainter::Antialiasing);
        p.scale(0.25, 0.25);
        p.setPen(Qt::NoPen);
        p.setBrush(grounds[list[i].group]);
        p.drawRoundedRect(QRectF(0, 0, 64, 64), 10, 10);
        list[i].draw(p);
        p.end();
        out << Picture{QStringLiteral("attribute_hell_%1.gif").arg(i, 2, 10, QLatin1Char('0')), img};
    }
    out << Picture{QStringLiteral("erlernt.png"), statepicture(true)}
        << Picture{QStringLiteral("gesperrt.png"), statepicture(false)};
    return out;
}

} // namespace zorbo
