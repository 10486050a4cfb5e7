#pragma once

#include <QString>
#include <QtGlobal>
#include <array>

namespace zorbo {

// A face code: five picture digits with fixed weights plus the skin colour in
// the two lowest bits. Digit d stands for picture d + 1.
enum FacePart { Nase = 0, Mund, Haare, Augen, Kinn };
constexpr int FacePartCount = 5;
constexpr std::array<qint64, 5> faceweights{67108864, 1048576, 8192, 128, 4};

struct Face {
    int farbe = 0; // 0 weiss, 1 schwarz
    std::array<int, 5> digits{};
};

// Low bits 2 or 3 count as the light colour.
Face decodeface(qint64 code);
// The dark colour has no chin digit: it adds 1 in the chin's place.
qint64 encodeface(const Face &face);

QString colourword(int farbe);
QString partword(int part);
// File names inside the gesicht folder.
QString facebackground(int farbe);
QString facepicture(int farbe, int part, int number);

} // namespace zorbo
