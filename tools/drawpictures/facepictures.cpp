// Face parts: 85 x 100, transparent outside the part, so that background, chin,
// eyes, nose, mouth and hair stacked in that order give one cartoon face.
// Variants come from the picture number by fixed arithmetic.
#include "pictures.h"

#include <QFile>
#include <QHash>
#include <QPainter>
#include <QTextStream>
#include <QPainterPath>

namespace zorbo {

namespace {

constexpr int W = 85, H = 100;
constexpr double CX = 42.5;

struct Skin {
    const char *word;
    QColor tone, shade, lip;
    int noses, mouths, hairs, eyes, chins;
};

const Skin skins[] = {
    {"weiss", QColor(244, 204, 170), QColor(190, 140, 110), QColor(200, 110, 100), 31, 30, 30, 30, 11},
    {"schwarz", QColor(122, 80, 52), QColor(70, 42, 26), QColor(90, 50, 45), 9, 9, 9, 2, 1},
};

// Haarfarbe of e_gesichtsfarbe by skin colour and hair digit, so that the
// hair drawn matches the colour the save writes for it.
QHash<int, int> haircolours(const QString &path)
{
    QHash<int, int> colours;
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly | QIODevice::Text))
        return colours;
    QTextStream in(&f);
    in.readLine();
    while (!in.atEnd()) {
        const QStringList cols = in.readLine().split(QLatin1Char('\t'));
        if (cols.size() >= 4)
            colours.insert(cols[1].toInt() * 100 + cols[0].toInt(), cols[3].toInt());
    }
    return colours;
}

QColor haircolour(int code)
{
    switch (code) {
    case 0: return QColor(222, 186, 90);
    case 1: return QColor(112, 70, 36);
    case 2: return QColor(34, 28, 28);
    case 3: return QColor(186, 82, 32);
    case 4: return QColor(165, 165, 168);
    case 5: return QColor(0, 0, 0, 0);
    default: return QColor(250, 236, 160);
    }
}

QImage canvas()
{
    QImage img(W, H, QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    return img;
}

QPainterPath headpath()
{
    QPainterPath p;
    p.addEllipse(QPointF(CX, 46), 25, 31);
    return p;
}

QImage background(const Skin &s)
{
    QImage img = canvas();
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, H);
    sky.setColorAt(0, QColor(190, 214, 236));
    sky.setColorAt(1, QColor(120, 160, 200));
    p.fillRect(img.rect(), sky);
    p.setPen(QPen(s.shade, 1.5));
    p.setBrush(QColor(30, 70, 150));
    p.drawRoundedRect(QRectF(4, 86, 77, 30), 18, 18);
    p.setBrush(s.tone);
    p.drawRect(QRectF(CX - 11, 68, 22, 22));
    p.setBrush(QColor(240, 240, 240));
    p.drawPolygon(QPolygonF() << QPointF(CX - 13, 86) << QPointF(CX, 96) << QPointF(CX + 13, 86) << QPointF(CX + 6, 86)
                              << QPointF(CX, 91) << QPointF(CX - 6, 86));
    p.setBrush(s.tone);
    p.drawEllipse(QPointF(CX - 25, 48), 5, 8);
    p.drawEllipse(QPointF(CX + 25, 48), 5, 8);
    p.drawPath(headpath());
    return img;
}

QImage chin(const Skin &s, int n)
{
    QImage img = canvas();
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    const double width = 20 + (n % 4) * 2.0;      // half width at the cheeks
    const double drop = 76 + (n / 4 % 3) * 2.0;   // lowest point
    const bool square = n % 3 == 1;
    QPainterPath jaw;
    jaw.moveTo(CX - 24.5, 44);
    if (square) {
        jaw.cubicTo(CX - width - 2, 66, CX - width + 4, drop, CX, drop);
        jaw.cubicTo(CX + width - 4, drop, CX + width + 2, 66, CX + 24.5, 44);
    } else {
        jaw.cubicTo(CX - width, 64, CX - 12, drop, CX, drop);
        jaw.cubicTo(CX + 12, drop, CX + width, 64, CX + 24.5, 44);
    }
    jaw.closeSubpath();
    p.setPen(Qt::NoPen);
    p.setBrush(s.tone);
    p.drawPath(jaw);
    QPainterPath line;
    line.moveTo(CX - 24.5, 44);
    if (square) {
        line.cubicTo(CX - width - 2, 66, CX - width + 4, drop, CX, drop);
        line.cubicTo(CX + width - 4, drop, CX + width + 2, 66, CX + 24.5, 44);
    } else {
        line.cubicTo(CX - width, 64, CX - 12, drop, CX, drop);
        line.cubicTo(CX + 12, drop, CX + width, 64, CX + 24.5, 44);
    }
    p.setPen(QPen(s.shade, 1.5));
    p.setBrush(Qt::NoBrush);
    p.drawPath(line);
    if (n % 5 == 2) // cleft
        p.drawLine(QPointF(CX, drop - 5), QPointF(CX, drop - 2));
    if (n >= 6) { // beard or stubble
        QColor beard = n >= 9 ? QColor(70, 45, 25, 235) : QColor(60, 50, 45, 90);
        p.setPen(Qt::NoPen);
        p.setBrush(beard);
        QPainterPath b = jaw.intersected([&] {
            QPainterPath r;
            r.addRect(QRectF(0, n == 10 ? 66 : 62, W, H));
            return r;
        }());
        p.drawPath(b);
    }
    return img;
}

QImage eyes(const Skin &s, int n)
{
    QImage img = canvas();
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    const double gap = 10 + (n % 3);
    const double rx = 4.5 + (n / 3 % 2), ry = 2.6 + (n / 6 % 3) * 0.6;
    const QColor irises[] = {QColor(60, 110, 180), QColor(90, 60, 30), QColor(70, 120, 70), QColor(50, 40, 30)};
    const QColor iris = irises[(n + n / 5) % 4];
    const double tilt = ((n / 2) % 3 - 1) * 2.5;
    for (int side : {-1, 1}) {
        const QPointF c(CX + side * gap, 44);
        p.setPen(QPen(s.shade, 1));
        p.setBrush(Qt::white);
        p.drawEllipse(c, rx, ry);
        p.setPen(Qt::NoPen);
        p.setBrush(iris);
        p.drawEllipse(c, 2.2, 2.2);
        p.setBrush(Qt::black);
        p.drawEllipse(c, 1, 1);
        p.setPen(QPen(QColor(50, 35, 25), 1.8 + (n % 4 == 3), Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(c.x() - side * 5, 37 - tilt), QPointF(c.x() + side * 5, 37 + tilt * 0.3));
    }
    if (n % 10 == 7) { // glasses
        p.setPen(QPen(QColor(30, 30, 30), 1.4));
        p.setBrush(Qt::NoBrush);
        p.drawRoundedRect(QRectF(CX - gap - 7, 39, 14, 10), 3, 3);
        p.drawRoundedRect(QRectF(CX + gap - 7, 39, 14, 10), 3, 3);
        p.drawLine(QPointF(CX - gap + 7, 43), QPointF(CX + gap - 7, 43));
    }
    return img;
}

QImage nose(const Skin &s, int n)
{
    QImage img = canvas();
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    const double len = 9 + (n % 4) * 2, wide = 3 + (n / 4 % 4), bend = ((n / 2) % 3 - 1) * 2;
    QPainterPath path;
    path.moveTo(CX + bend * 0.5, 46);
    path.quadTo(CX + bend + wide * 0.6, 46 + len * 0.7, CX + wide, 47 + len);
    path.quadTo(CX, 49 + len, CX - wide, 47 + len);
    p.setPen(QPen(s.shade, 1.5, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawPath(path);
    p.setPen(Qt::NoPen);
    p.setBrush(s.shade);
    p.drawEllipse(QPointF(CX - wide * 0.55, 46.5 + len), 1.1, 0.8);
    p.drawEllipse(QPointF(CX + wide * 0.55, 46.5 + len), 1.1, 0.8);
    return img;
}

QImage mouth(const Skin &s, int n)
{
    QImage img = canvas();
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    const double half = 7 + (n % 4) * 1.5, y = 65 + (n / 4 % 2);
    const int mood = n % 5; // 0 smile, 1 straight, 2 grin, 3 small, 4 serious
    QPainterPath m;
    m.moveTo(CX - half, y);
    const double curveBy = mood == 0 ? 4 : mood == 2 ? 6 : mood == 4 ? -2 : 1;
    m.quadTo(CX, y + curveBy, CX + half, y);
    p.setPen(QPen(s.lip, 2, Qt::SolidLine, Qt::RoundCap));
    if (mood == 2) {
        p.setBrush(Qt::white);
        m.quadTo(CX, y + 1.5, CX - half, y);
    } else {
        p.setBrush(Qt::NoBrush);
    }
    p.drawPath(m);
    if (n % 7 == 5) { // moustache
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(60, 40, 25));
        p.drawRoundedRect(QRectF(CX - half - 1, y - 6, 2 * half + 2, 4), 2, 2);
    }
    return img;
}

QImage hair(int n, int colourCode)
{
    QImage img = canvas();
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    const QColor c = haircolour(colourCode);
    if (colourCode == 5) { // bald: only a fringe above the ears
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(90, 70, 55, 170));
        p.drawRoundedRect(QRectF(CX - 26, 36, 5, 12), 2, 2);
        p.drawRoundedRect(QRectF(CX + 21, 36, 5, 12), 2, 2);
        p.setPen(QPen(QColor(255, 255, 255, 120), 2));
        p.drawArc(QRectF(CX - 14, 18, 14, 10), 60 * 16, 80 * 16);
        return img;
    }
    p.setPen(QPen(c.darker(140), 1));
    p.setBrush(c);
    QPainterPath cap;
    const int style = n % 6;
    const double top = 11 - (style == 3 ? 6 : 0) + (n / 6 % 2) * 2;
    cap.moveTo(CX - 26, 44);
    cap.cubicTo(CX - 31, top - 10, CX + 31, top - 10, CX + 26, 44);
    switch (style) {
    case 0: // short, straight fringe
        cap.lineTo(CX + 24, 30);
        cap.lineTo(CX - 24, 30);
        break;
    case 1: // side parting
        cap.lineTo(CX + 23, 28);
        cap.quadTo(CX, 22, CX - 6, 32);
        cap.quadTo(CX - 16, 26, CX - 23, 34);
        break;
    case 2: // long, down to the shoulders
        cap.lineTo(CX + 28, 76);
        cap.lineTo(CX + 22, 76);
        cap.lineTo(CX + 22, 30);
        cap.lineTo(CX - 22, 30);
        cap.lineTo(CX - 22, 76);
        cap.lineTo(CX - 28, 76);
        break;
    case 3: // curls, high
        cap.lineTo(CX + 24, 30);
        cap.lineTo(CX - 24, 30);
        cap.closeSubpath();
        for (int i = 0; i <= 8; ++i)
            cap.addEllipse(QPointF(CX - 24 + i * 6, 25 + (i % 2) * 3), 5, 5);
        break;
    case 4: // receding
        cap.lineTo(CX + 22, 34);
        cap.quadTo(CX + 12, 18, CX, 24);
        cap.quadTo(CX - 12, 18, CX - 22, 34);
        break;
    default: // spikes
        cap.lineTo(CX + 24, 30);
        for (int i = 4; i >= -4; --i)
            cap.lineTo(CX + i * 5.5 + (i % 2 ? 0 : 2.5), i % 2 ? 27 : 33);
        break;
    }
    cap.closeSubpath();
    cap.setFillRule(Qt::WindingFill);
    p.drawPath(cap);
    if (style == 5 || n % 8 == 3) { // a few strands for texture
        p.setPen(QPen(c.lighter(130), 1));
        for (int i = -2; i <= 2; ++i)
            p.drawLine(QPointF(CX + i * 7, top + 8), QPointF(CX + i * 8, top + 14));
    }
    return img;
}

} // namespace

QList<Picture> facepictures(const QString &colourTable)
{
    const QHash<int, int> hairs = haircolours(colourTable);
    QList<Picture> out;
    for (const Skin &s : skins) {
        const QString prefix = QStringLiteral("sp_gesicht_%1_").arg(QLatin1String(s.word));
        auto add = [&](const QString &part, int count, auto draw) {
            for (int n = 0; n < count; ++n)
                out << Picture{prefix + part + QStringLiteral("_%1.gif").arg(n + 1), draw(n)};
        };
        out << Picture{prefix + QStringLiteral("grund.gif"), background(s)};
        add(QStringLiteral("nase"), s.noses, [&](int n) { return nose(s, n); });
        add(QStringLiteral("mund"), s.mouths, [&](int n) { return mouth(s, n); });
        const int farbe = &s == &skins[0] ? 0 : 1;
        add(QStringLiteral("haare"), s.hairs, [&](int n) { return hair(n, hairs.value(farbe * 100 + n, 1)); });
        add(QStringLiteral("augen"), s.eyes, [&](int n) { return eyes(s, n); });
        add(QStringLiteral("kinn"), s.chins, [&](int n) { return chin(s, n); });
    }
    return out;
}

} // namespace zorbo
