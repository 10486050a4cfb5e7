#pragma once

#include "platform/database.h"
#include "platform/operation.h"

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QList>
#include <QString>
#include <functional>

namespace zorbo {

// The side of a crest as the game shows it.
inline constexpr int CrestSide = 64;

// How a picture that isn't square becomes a crest.
enum class CrestFit {
    Fit,  // the whole picture, sides in proportion, the longer one 64; the
          // crest is only as large as the picture, so nothing stands around it
    Crop, // 64 x 64, the picture's middle, sides in proportion
};

struct CrestPictureOptions {
    CrestFit fit = CrestFit::Fit;
    // What shows through the picture's transparent parts; the crest file has
    // no transparency of its own.
    QColor background = Qt::white;
};

// The file types Qt's picture plugins read here: "png", "jpg", … as filter
// patterns ("*.png *.jpg …").
QString picturepatterns();

// Reads a picture file (PNG, JPEG, BMP, GIF, WebP, as far as the plugins go);
// fails naming the file and why.
Result loadpicture(const QString &path, QImage &picture);

// The crest the picture becomes, pixel for pixel as its file will hold it:
// colours already cut to the game's 16 bits.
QImage crestpicture(const QImage &picture, const CrestPictureOptions &options);

// The crest as the file vereins_wappen_<n>.tga: the editor's own 24-bit TGA,
// the form the crest import writes and the crest export packs unchanged.
QByteArray cresttga(const QImage &crest);

// Before crest n's file is replaced by replacement: the history keeps crest
// numbers, not pictures, so a picture of the crest's own (not the default
// crest's copy, not the same bytes) is kept first as
// ersetzt/vereins_wappen_<n>_<time>.tga in the wappen folder. *kept (when
// given) receives that name, empty when nothing needed keeping. Fails, and
// the crest must not be replaced, when the picture can't be kept.
Result keepreplacedcrest(const QString &wappenFolder, int number, const QByteArray &replacement, QString *kept = nullptr);
// The words for a kept picture in a closing message: "; das bisherige Wappen
// liegt in ersetzt/…", empty for none.
QString keptwords(const QString &kept);

// Writes crest n of the wappen folder (ending in '/') from a picture,
// replacing the file at once when complete; the picture it replaces is kept
// first (keepreplacedcrest).
Result writecrest(const QString &wappenFolder, int number, const QImage &crest, QString *kept = nullptr);

// Of a folder of pictures named by club number ("17.png") or club name
// ("FC Köln.jpg"), which club each means.
struct PictureTarget {
    QString picture;    // full path
    qint64 team = -1;   // -1: no club has this number or name
    QString teamName;
    QString table;      // vereine or vereine_national
    int crest = -1;     // the crest the picture becomes
    bool newCrest = false; // the club's crest number changes to crest
};

// The clubs of the pictures in folder. A club whose crest number is its own
// (no other team shows it, and it is not the default crest 0) keeps it; any
// other club gets the lowest crest number that no team uses and no file in
// the wappen folder holds. Pictures of no club are listed with team -1.
QList<PictureTarget> picturetargets(Database &db, const QString &folder, const QString &wappenFolder);

// One line of the folder run's list: the picture and what became of it.
struct PictureRunLine {
    QString picture;
    QString text; // "Wappen 17 für „FC Köln“ geschrieben" or why not
    bool done = false;
};

// Converts the pictures of targets into their crests and sets the clubs'
// crest numbers where they change, inside the caller's transaction (one run
// of the world, so one history step): a picture that can't be read or a
// club that isn't found is listed and passed over. Reports a step per
// picture while converting; the files are written only after the last, so a
// stop changes nothing. The crests come in all together or not at all: a
// file that can't be written fails the run (Fault) and leaves every crest.
// Pictures of their own that crests held are kept (keepreplacedcrest).
QList<PictureRunLine> crestsfrompictures(Database &db, const QList<PictureTarget> &targets, const QString &wappenFolder,
                                         const CrestPictureOptions &options, const Progress &progress = {});

// Sets a team's GRAFIK_NR in vereine or vereine_national.
void setcrestnumber(Database &db, qint64 team, int crest);

} // namespace zorbo
