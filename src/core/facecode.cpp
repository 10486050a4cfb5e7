#include "core/facecode.h"

namespace zorbo {

Face decodeface(qint64 code)
{
    Face f;
    f.farbe = code % 4 == 1 ? 1 : 0;
    qint64 r = code;
    for (int part = 0; part < FacePartCount; ++part) {
        f.digits[size_t(part)] = int(r / faceweights[size_t(part)]);
        r %= faceweights[size_t(part)];
    }
    return f;
}

qint64 encodeface(const Face &face)
{
    qint64 code = 0;
    for (int part = 0; part < FacePartCount; ++part) {
        if (part == Kinn && face.farbe == 1)
            code += 1;
        else
            code += face.digits[size_t(part)] * faceweights[size_t(part)];
    }
    return code;
}

QString colourword(int farbe)
{
    return farbe == 1 ? QStringLiteral("schwarz") : QStringLiteral("weiss");
}

QString partword(int part)
{
    static const char *words[] = {"nase", "mund", "haare", "augen", "kinn"};
    return QLatin1String(words[qBound(0, part, 4)]);
}

QString facebackground(int farbe)
{
    return QStringLiteral("sp_gesicht_%1_grund.gif").arg(colourword(farbe));
}

QString facepicture(int farbe, int part, int number)
{
    return QStringLiteral("sp_gesicht_%1_%2_%3.gif").arg(colourword(farbe), partword(part)).arg(number);
}

} // namespace zorbo
