#include "resources/crestpicture.h"

#include "platform/fileerror.h"
#include "platform/safefile.h"
#include "resources/crestfiles.h"
#include "resources/crestswitch.h"
#include "resources/pixels.h"
#include "resources/tga.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QImageReader>
#include <QPainter>
#include <QSet>
#include <cmath>

namespace zorbo {

QString picturepatterns()
{
    QStringList patterns;
    for (const QByteArray &f : QImageReader::supportedImageFormats()) {
        if (f == "png" || f == "jpg" || f == "jpeg" || f == "bmp" || f == "gif" || f == "webp")
            patterns << QStringLiteral("*.") + QString::fromLatin1(f);
    }
    return patterns.join(QLatin1Char(' '));
}

Result loadpicture(const QString &path, QImage &picture)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    // A picture of a crest needs no more; the bound keeps a huge file from
    // taking the machine's memory.
    reader.setAllocationLimit(256);
    picture = reader.read();
    if (picture.isNull())
        return Result::failure(QStringLiteral("Das Bild %1 lässt sich nicht lesen: %2")
                                   .arg(QDir::toNativeSeparators(path), reader.errorString()));
    return Result::success();
}

QImage crestpicture(const QImage &picture, const CrestPictureOptions &options)
{
    const QImage source = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const int w = source.width(), h = source.height();
    QSize size(CrestSide, CrestSide);
    QRect from(0, 0, w, h);
    if (options.fit == CrestFit::Fit) {
        const int longer = std::max(w, h);
        size = QSize(std::max(1, int(std::lround(double(w) * CrestSide / longer))),
                     std::max(1, int(std::lround(double(h) * CrestSide / longer))));
    } else if (w > h) {
        from = QRect((w - h) / 2, 0, h, h);
    } else {
        from = QRect(0, (h - w) / 2, w, w);
    }
    const QImage part = source.copy(from).scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QImage crest(size, QImage::Format_RGB32);
    crest.fill(options.background.rgb());
    {
        QPainter p(&crest);
        p.drawImage(0, 0, part);
    }
    // The colours as the game's 16 bits hold them, widened as the crest
    // files widen them, so that the preview shows what the file holds.
    for (int y = 0; y < crest.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(crest.scanLine(y));
        for (int x = 0; x < crest.width(); ++x) {
            const QRgb c = line[x];
            line[x] = qRgb(expand5(to5bit(qRed(c))), expand6(to6bit(qGreen(c))), expand5(to5bit(qBlue(c))));
        }
    }
    return crest;
}

QByteArray cresttga(const QImage &crest)
{
    const QImage rgb = crest.convertToFormat(QImage::Format_RGB32);
    QByteArray pixels;
    pixels.reserve(qsizetype(rgb.width()) * rgb.height() * 2);
    for (int y = 0; y < rgb.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(rgb.constScanLine(y));
        for (int x = 0; x < rgb.width(); ++x) {
            const int p = pack565(to5bit(qRed(line[x])), to6bit(qGreen(line[x])), to5bit(qBlue(line[x])));
            pixels.append(char(p & 0xFF));
            pixels.append(char(p >> 8));
        }
    }
    return writetga(rgb.width(), rgb.height(), pixels, 2);
}

namespace {

Result writecrestas(const QString &path, int number, const QImage &crest)
{
    if (Result r = replacefile(path, cresttga(crest)); !r)
        return Result::failure(QStringLiteral("Das Wappen %1 lässt sich nicht schreiben: %2").arg(number).arg(r.message));
    return Result::success();
}

} // namespace

Result keepreplacedcrest(const QString &wappenFolder, int number, const QByteArray &replacement, QString *kept)
{
    if (kept)
        kept->clear();
    QFile file(crestfile(wappenFolder, number));
    if (!file.exists())
        return Result::success();
    const auto refused = [&](const QString &why) {
        return Result::failure(QStringLiteral("Das bisherige Wappen %1 (%2) lässt sich nicht aufheben: %3. Es bleibt, "
                                              "wie es ist.")
                                   .arg(number)
                                   .arg(QDir::toNativeSeparators(file.fileName()), why));
    };
    if (!file.open(QIODevice::ReadOnly))
        return refused(fileerrortext(file));
    const QByteArray old = file.readAll();
    QFile fallback(wappenFolder + QStringLiteral("default.tga"));
    if (old == replacement || (fallback.open(QIODevice::ReadOnly) && fallback.readAll() == old))
        return Result::success();
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-hhmmss"));
    QString name = QStringLiteral("ersetzt/vereins_wappen_%1_%2.tga").arg(number).arg(stamp);
    for (int i = 2; QFileInfo::exists(wappenFolder + name); ++i)
        name = QStringLiteral("ersetzt/vereins_wappen_%1_%2-%3.tga").arg(number).arg(stamp).arg(i);
    if (!QDir().mkpath(wappenFolder + QStringLiteral("ersetzt")))
        return refused(QStringLiteral("der Ordner %1 lässt sich nicht anlegen")
                           .arg(QDir::toNativeSeparators(wappenFolder + QStringLiteral("ersetzt"))));
    if (Result r = replacefile(wappenFolder + name, old); !r)
        return refused(r.message);
    if (kept)
        *kept = name;
    return Result::success();
}

QString keptwords(const QString &kept)
{
    return kept.isEmpty() ? QString() : QStringLiteral("; das bisherige Wappen liegt in %1").arg(QDir::toNativeSeparators(kept));
}

Result writecrest(const QString &wappenFolder, int number, const QImage &crest, QString *kept)
{
    if (Result r = keepreplacedcrest(wappenFolder, number, cresttga(crest), kept); !r)
        return r;
    return writecrestas(crestfile(wappenFolder, number), number, crest);
}

namespace {

struct Team {
    qint64 number = -1;
    QString name;
    QString table;
    int crest = 0;
};

} // namespace

QList<PictureTarget> picturetargets(Database &db, const QString &folder, const QString &wappenFolder)
{
    QHash<qint64, Team> byNumber;
    QHash<QString, Team> byName;
    QHash<int, int> shown; // crest number -> teams showing it
    for (const QString table : {QStringLiteral("vereine_national"), QStringLiteral("vereine")}) {
        Statement st = db.prepare(QStringLiteral("SELECT NUMMER, NAME, GRAFIK_NR FROM %1").arg(table));
        while (st.step()) {
            Team t{st.integer(0), st.text(1), table, int(st.integer(2))};
            byNumber.insert(t.number, t);
            byName.insert(t.name.toCaseFolded(), t);
            ++shown[t.crest];
        }
    }
    QList<PictureTarget> targets;
    QSet<int> taken;
    for (auto it = shown.cbegin(); it != shown.cend(); ++it)
        taken.insert(it.key());
    int next = 1;
    const auto freecrest = [&] {
        while (next < CrestCount && (taken.contains(next) || QFileInfo::exists(crestfile(wappenFolder, next))))
            ++next;
        if (next >= CrestCount)
            return -1;
        taken.insert(next);
        return next;
    };
    const QStringList patterns = picturepatterns().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const QFileInfoList files = QDir(folder).entryInfoList(patterns, QDir::Files, QDir::Name | QDir::IgnoreCase);
    for (const QFileInfo &file : files) {
        PictureTarget t;
        t.picture = file.absoluteFilePath();
        const QString base = file.completeBaseName();
        bool isNumber = false;
        const qint64 number = base.toLongLong(&isNumber);
        const Team team = isNumber ? byNumber.value(number) : byName.value(base.toCaseFolded());
        if (team.number >= 0) {
            t.team = team.number;
            t.teamName = team.name;
            t.table = team.table;
            if (team.crest > 0 && team.crest < CrestCount && shown.value(team.crest) == 1) {
                t.crest = team.crest;
            } else {
                t.crest = freecrest();
                t.newCrest = t.crest >= 0;
            }
        }
        targets << t;
    }
    return targets;
}

void setcrestnumber(Database &db, qint64 team, int crest)
{
    for (const QString table : {QStringLiteral("vereine"), QStringLiteral("vereine_national")})
        db.run(QStringLiteral("UPDATE %1 SET GRAFIK_NR = ?1 WHERE NUMMER = ?2").arg(table), crest, team);
}

QList<PictureRunLine> crestsfrompictures(Database &db, const QList<PictureTarget> &targets, const QString &wappenFolder,
                                         const CrestPictureOptions &options, const Progress &progress)
{
    QList<PictureRunLine> lines;
    struct Ready {
        const PictureTarget *target;
        QImage crest;
        qsizetype line;
    };
    QList<Ready> ready;
    for (qsizetype i = 0; i < targets.size(); ++i) {
        report(progress, i, targets.size());
        const PictureTarget &t = targets[i];
        PictureRunLine line{QFileInfo(t.picture).fileName()};
        QImage picture;
        if (t.team < 0) {
            line.text = QStringLiteral("kein Verein mit dieser Nummer oder diesem Namen");
        } else if (t.crest < 0) {
            line.text = QStringLiteral("kein Wappen mehr frei für „%1“").arg(t.teamName);
        } else if (Result r = loadpicture(t.picture, picture); !r) {
            line.text = r.message;
        } else {
            ready.append({&t, crestpicture(picture, options), lines.size()});
            line.done = true;
            line.text = t.newCrest ? QStringLiteral("Wappen %1 für „%2“ geschrieben, der Verein trägt jetzt Wappen %1")
                                         .arg(t.crest)
                                         .arg(t.teamName)
                                   : QStringLiteral("Wappen %1 für „%2“ geschrieben").arg(t.crest).arg(t.teamName);
        }
        lines << line;
    }
    report(progress, targets.size(), targets.size());
    for (const auto &[t, crest, line] : ready) {
        if (t->newCrest)
            setcrestnumber(db, t->team, t->crest);
    }
    // All crests or none: they are written beside the folder first and moved
    // in together, so a failure on the tenth leaves the first nine as they were.
    if (!ready.isEmpty()) {
        CrestSwitch change(wappenFolder);
        if (Result r = change.begin(); !r)
            throw Fault(r.message);
        for (const auto &[t, crest, line] : ready) {
            const QString name = QFileInfo(crestfile(wappenFolder, t->crest)).fileName();
            if (Result r = writecrestas(change.staging() + name, t->crest, crest); !r)
                throw Fault(r.message);
        }
        // Only once every new crest is staged, so that a failed run keeps nothing.
        for (const auto &[t, crest, line] : ready) {
            QString kept;
            if (Result r = keepreplacedcrest(wappenFolder, t->crest, cresttga(crest), &kept); !r)
                throw Fault(r.message);
            lines[line].text += keptwords(kept);
        }
        if (Result r = change.commit(); !r)
            throw Fault(r.message);
    }
    return lines;
}

} // namespace zorbo
