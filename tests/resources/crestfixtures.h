#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace zorbo::test {

// The picture that pillowcheck.py draws too: R, G, B, A of a pixel.
struct Rgba {
    int r, g, b, a;
};
Rgba patternPixel(int x, int y);
// The pattern in the game's 16-bit form, rows from the top.
QByteArray pattern16(int width, int height);

// A .gfp built field by field, independent of the editor's writer.
QByteArray gfpBytes(int width, int height, const QByteArray &pixels16, bool compress, int bits = 16);

// An archive of type-14 resources laid out as the game's format says.
struct RawEntry {
    QByteArray name;
    QByteArray data;
    qint32 type = 14;
};
QByteArray archiveBytes(const QList<RawEntry> &entries);

// A 24-bit TGA of the editor's own form, from top-down B, G, R bytes.
QByteArray tga24(int width, int height, const QByteArray &bgrTopDown);

// Copies every file of a folder into another, replacing what is there.
void copyFolder(const QString &from, const QString &to);

// Files below a folder, relative, sorted.
QStringList filesBelow(const QString &folder);

// A Python 3 that has Pillow, or empty.
QString pythonWithPillow();
// Runs a script of tests/resources with arguments; returns its exit code and
// leaves its standard error in *errors.
int runPython(const QString &python, const QStringList &args, QString *errors);

} // namespace zorbo::test
