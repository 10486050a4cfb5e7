#pragma once

#include <QDir>
#include <QImage>
#include <QList>
#include <QString>

namespace zorbo {

// One drawn picture and the file name it is written under.
struct Picture {
    QString name;
    QImage image;
};

QList<Picture> talentpictures();
QList<Picture> facepictures(const QString &colourTable); // both colours; e_gesichtsfarbe for the hair
QList<Picture> kitpictures(int kitset, const QString &colourTable);
QList<Picture> iconpictures();
// The desktop's program icon: PNGs in the usual sizes, and the same as SVG.
QList<Picture> programicons();
QByteArray programiconsvg();

// A sheet of all pictures of one set with their names, for looking them over.
QImage contactsheet(const QList<Picture> &pictures, int scale, int columns);

// True when the pictures of the folder committed show what those of drawn
// show, up to rounding at the edges; names the ones that don't on stderr.
bool comparefolders(const QString &drawn, const QString &committed);

} // namespace zorbo
