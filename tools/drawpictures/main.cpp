// Writes every delivered picture into the repository and a contact sheet of
// each set into docs/. Running it again gives the same files.
#include "gifwriter.h"
#include "pictures.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <cstdio>

using namespace zorbo;

namespace {

bool writeall(const QList<Picture> &pictures, const QString &folder)
{
    QDir().mkpath(folder);
    for (const Picture &p : pictures) {
        const QString path = folder + QLatin1Char('/') + p.name;
        const bool ok = p.name.endsWith(QLatin1String(".gif")) ? writegif(p.image, path) : p.image.save(path, "PNG");
        if (!ok) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
            return false;
        }
    }
    return true;
}

// The sheets show the files as written, so they also prove the GIF encoder.
QList<Picture> reread(const QList<Picture> &pictures, const QString &folder)
{
    QList<Picture> out;
    for (const Picture &p : pictures)
        out << Picture{p.name, QImage(folder + QLatin1Char('/') + p.name)};
    return out;
}

// Whole faces stacked as the program stacks them, to judge the parts together.
QList<Picture> samplefaces(const QString &folder)
{
    QList<Picture> out;
    const char *parts[] = {"kinn", "augen", "nase", "mund", "haare"};
    const int light[] = {11, 30, 31, 30, 30}, dark[] = {1, 2, 9, 9, 9};
    for (int i = 0; i < 24; ++i) {
        const bool isDark = i % 4 == 3;
        const QString colour = QLatin1String(isDark ? "schwarz" : "weiss");
        QImage face(folder + QStringLiteral("/sp_gesicht_%1_grund.gif").arg(colour));
        face = face.convertToFormat(QImage::Format_ARGB32);
        QPainter p(&face);
        QStringList digits;
        for (int k = 0; k < 5; ++k) {
            const int count = isDark ? dark[k] : light[k];
            const int number = (i * (k + 3) + k) % count + 1;
            digits << QString::number(number);
            p.drawImage(0, 0, QImage(folder + QStringLiteral("/sp_gesicht_%1_%2_%3.gif")
                                                  .arg(colour, QLatin1String(parts[k])).arg(number)));
        }
        out << Picture{colour.left(1) + QLatin1Char(' ') + digits.join(QLatin1Char('.')), face};
    }
    return out;
}

QList<Picture> only(const QList<Picture> &all, bool gifs)
{
    QList<Picture> out;
    for (const Picture &p : all)
        if (p.name.endsWith(QLatin1String(".gif")) == gifs)
            out << p;
    return out;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc == 4 && qstrcmp(argv[1], "--compare") == 0) {
        // drawpictures --compare <output folder> <repository folder>
        const QString drawn = QString::fromLocal8Bit(argv[2]), repository = QString::fromLocal8Bit(argv[3]);
        bool same = true;
        for (const char *folder : {"/data/defaults/attribute", "/data/defaults/gesicht", "/data/defaults/trikot/original",
                                   "/data/defaults/trikot/zorbode", "/src/core/ui/icons", "/packaging/icons"})
            same = comparefolders(drawn + QLatin1String(folder), repository + QLatin1String(folder)) && same;
        return same ? 0 : 1;
    }
    if (argc != 2 && argc != 3) {
        std::fprintf(stderr, "usage: drawpictures <repository folder> [<output folder>]\n"
                             "       drawpictures --compare <output folder> <repository folder>\n");
        return 2;
    }
    // The output folder defaults to the repository; another one lets a test
    // compare a fresh drawing with the committed files.
    const QString root = QString::fromLocal8Bit(argv[1]);
    const QString out = argc == 3 ? QString::fromLocal8Bit(argv[2]) : root;
    const QString defaults = out + QStringLiteral("/data/defaults");
    const QString icons = out + QStringLiteral("/src/core/ui/icons");
    const QString docs = out + QStringLiteral("/docs/pictures");
    const QString desktop = out + QStringLiteral("/packaging/icons");
    QDir().mkpath(docs);

    const QList<Picture> talents = talentpictures();
    const QList<Picture> faces = facepictures(root + QStringLiteral("/src/core/data/e_gesichtsfarbe.tsv"));
    const QList<Picture> kits0 = kitpictures(0, root + QStringLiteral("/src/core/data/e_trikotfarbeoriginal.tsv"));
    const QList<Picture> kits1 = kitpictures(1, root + QStringLiteral("/src/core/data/e_trikotfarbezorbode.tsv"));
    QList<Picture> programIcons = iconpictures() + only(talents, false);

    bool ok = writeall(only(talents, true), defaults + QStringLiteral("/attribute")) &&
              writeall(faces, defaults + QStringLiteral("/gesicht")) &&
              writeall(kits0, defaults + QStringLiteral("/trikot/original")) &&
              writeall(kits1, defaults + QStringLiteral("/trikot/zorbode")) && writeall(programIcons, icons) &&
              writeall(programicons(), desktop);
    QFile svg(desktop + QStringLiteral("/zorbo-editor.svg"));
    ok = ok && svg.open(QIODevice::WriteOnly) && svg.write(programiconsvg()) > 0;
    svg.close();

    ok = ok && contactsheet(reread(only(talents, true), defaults + QStringLiteral("/attribute")), 4, 9).save(docs + QStringLiteral("/talente.png")) &&
         contactsheet(reread(faces, defaults + QStringLiteral("/gesicht")), 1, 12).save(docs + QStringLiteral("/gesichtsteile.png")) &&
         contactsheet(samplefaces(defaults + QStringLiteral("/gesicht")), 2, 8).save(docs + QStringLiteral("/gesichter.png")) &&
         contactsheet(reread(kits0, defaults + QStringLiteral("/trikot/original")), 1, 10).save(docs + QStringLiteral("/trikots-original.png")) &&
         contactsheet(reread(kits1, defaults + QStringLiteral("/trikot/zorbode")), 1, 10).save(docs + QStringLiteral("/trikots-zorbode.png")) &&
         contactsheet(programIcons, 3, 6).save(docs + QStringLiteral("/symbole.png"));
    return ok ? 0 : 1;
}
