#include "resources/crestcheck.h"

#include "platform/codepage.h"
#include "resources/crestlist.h"
#include "resources/resfwriter.h"
#include "resources/tga.h"
#include "resources/gfp.h"
#include "resources/resf.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace zorbo {

namespace {


QString hexbytes(QByteArrayView bytes)
{
    return QString::fromLatin1(bytes.first(std::min<qsizetype>(bytes.size(), 16)).toByteArray().toHex(' '))
        + (bytes.size() > 16 ? QStringLiteral(" …") : QString());
}

// Why two resources of the same crest differ.
void comparecrest(const QString &file, const QString &name, const QByteArray &game, const QByteArray &ours,
                  QList<FileDifference> &out)
{
    FileDifference d{.file = file, .crest = name};
    GfpHeader gh, oh;
    QByteArray gp, op;
    const Result gr = readgfp(game, name, gh, gp);
    const Result orr = readgfp(ours, name, oh, op);
    if (!gr.ok) {
        d.game = gr.message;
        d.ours = QStringLiteral("das Standardbild aus default.gfp");
        d.reason = QStringLiteral("das Bild im Archiv lässt sich nicht lesen");
        out << d;
        return;
    }
    if (!orr.ok)
        return;
    if (gh.bits() != 16) {
        d.game = QStringLiteral("%1 Bit je Pixel").arg(gh.bits());
        d.ours = QStringLiteral("16 Bit je Pixel");
        d.reason = QStringLiteral("der Editor packt jedes Wappen mit 16 Bit je Pixel");
        out << d;
        return;
    }
    if (gp != op) {
        qsizetype changed = 0;
        for (qsizetype i = 0; i + 1 < std::min(gp.size(), op.size()); i += 2)
            changed += gp[i] != op[i] || gp[i + 1] != op[i + 1];
        d.game = QStringLiteral("%1 × %2 Pixel").arg(gh.width()).arg(gh.height());
        d.ours = QStringLiteral("%1 Pixel anders").arg(changed);
        d.reason = QStringLiteral("die Pixel kommen anders zurück");
        out << d;
        return;
    }
    // Same pixels: the header blocks, or the packing of the payload.
    qsizetype at = 0;
    while (at < GfpHeaderSize && gh.bytes[size_t(at)] == oh.bytes[size_t(at)])
        ++at;
    if (at < GfpHeaderSize) {
        d.game = QStringLiteral("Kopf ab Byte %1: %2").arg(at).arg(hexbytes(QByteArrayView(gh.bytes.data() + at, GfpHeaderSize - at)));
        d.ours = QStringLiteral("Kopf ab Byte %1: %2").arg(at).arg(hexbytes(QByteArrayView(oh.bytes.data() + at, GfpHeaderSize - at)));
        d.reason = gh.method() != oh.method()
            ? QStringLiteral("das Bild ist anders gepackt (Verfahren %1); der Editor packt mit zlib (Verfahren 11)")
                  .arg(gh.method())
            : QStringLiteral("der Editor nimmt den Kopf jedes Bildes aus default.gfp");
    } else {
        d.game = QStringLiteral("%1 Bytes gepackt").arg(game.size());
        d.ours = QStringLiteral("%1 Bytes gepackt").arg(ours.size());
        d.reason = QStringLiteral("dieselben Pixel, von einer anderen zlib-Stufe gepackt");
    }
    out << d;
}

// The way each crest of the archive goes through an import and an export,
// picture by picture in memory: the .gfp read, the .tga the import writes,
// that .tga read as the export reads it and packed with default.gfp's head.
// Entries the import leaves out (other types, unusable names, damaged
// pictures) are left out here too; the archive is packed as the export packs.
Result roundtripcrests(const QString &path, const QString &defaultGfp, const QString &out, const Progress &progress)
{
    ResContents contents;
    if (Result r = openresarchive(path, contents); !r)
        return r;
    const auto &[archive, header, entries] = contents;
    GfpHeader template_;
    QByteArray templatePixels;
    if (Result r = readgfp(defaultGfp, template_, templatePixels); !r)
        return r;
    QList<WappenItem> items;
    for (qsizetype i = 0; i < entries.size(); ++i) {
        report(progress, i, 2 * entries.size());
        const ResEntry &entry = entries[i];
        if (entry.type != ResTypeGfp || !badnamereason(entry.name).isEmpty()
            || !crestnamereason(fromCp1252(entry.name)).isEmpty())
            continue;
        QByteArray bytes, pixels;
        GfpHeader gfp;
        TgaImage image;
        if (!resourcebytes(archive, header, entry, bytes) || !readgfp(bytes, QString(), gfp, pixels))
            continue;
        const QByteArray tga = writetga(gfp.width(), gfp.height(), pixels, gfp.bytesPerPixel());
        if (!readtga(tga, QString(), image))
            continue;
        const QByteArray packed = makegfp(template_, image.width, image.height, image.pixels, true);
        if (packed.isEmpty())
            return Result::failure(QStringLiteral("Das Wappen %1 lässt sich nicht packen.").arg(printablename(entry.name)));
        items.append({entry.name, packed, 0});
    }
    const qsizetype n = entries.size();
    return packresf(out, ResTypeGfp, items, [&](qint64 done, qint64) { return !progress || progress(n + done, 2 * n); });
}

} // namespace

QList<FileDifference> compareres(const QString &file, const QByteArray &game, const QByteArray &ours)
{
    QList<FileDifference> out;
    if (game == ours)
        return out;
    ResContents g{ResArchive{file, game}, {}, {}}, o{ResArchive{file, ours}, {}, {}};
    if (!readresarchive(g) || !readresarchive(o)) {
        out << FileDifference{.file = file, .game = QStringLiteral("%1 Bytes").arg(game.size()),
                              .ours = QStringLiteral("%1 Bytes").arg(ours.size()),
                              .reason = QStringLiteral("das Archiv lässt sich nicht lesen")};
        return out;
    }
    QHash<QByteArray, qsizetype> ourIndex;
    for (qsizetype i = 0; i < o.entries.size(); ++i)
        ourIndex.insert(o.entries[i].name, i);
    qsizetype listed = 0;
    for (qsizetype i = 0; i < g.entries.size(); ++i) {
        const ResEntry &e = g.entries[i];
        const QString name = printablename(e.name);
        const auto it = ourIndex.constFind(e.name);
        if (it == ourIndex.cend()) {
            out << FileDifference{.file = file, .crest = name,
                                  .game = QStringLiteral("Eintrag Nr. %1, Typ %2").arg(i).arg(e.type),
                                  .ours = QStringLiteral("(kein Eintrag)"),
                                  .reason = e.type != ResTypeGfp
                                      ? QStringLiteral("kein Bild (Typ 14); der Import lässt ihn aus")
                                      : QStringLiteral("der Name taugt nicht als Dateiname; der Import lässt ihn aus")};
            continue;
        }
        if (*it != listed)
            out << FileDifference{.file = file, .crest = name, .game = QStringLiteral("Eintrag Nr. %1").arg(i),
                                  .ours = QStringLiteral("Eintrag Nr. %1").arg(*it),
                                  .reason = QStringLiteral("ein Eintrag davor fehlt beim Editor")};
        ++listed;
        QByteArray gb, ob;
        if (!resourcebytes(g.archive, g.header, e, gb).ok || !resourcebytes(o.archive, o.header, o.entries[*it], ob).ok)
            continue;
        if (gb != ob)
            comparecrest(file, name, gb, ob, out);
    }
    if (out.isEmpty()) {
        // Every crest alike: the archive's frame differs (its directory, or bytes between the resources).
        qsizetype at = 0;
        while (at < std::min(game.size(), ours.size()) && game[at] == ours[at])
            ++at;
        out << FileDifference{.file = file, .game = QStringLiteral("ab Byte %1: %2").arg(at).arg(hexbytes(QByteArrayView(game).sliced(std::min(at, game.size())))),
                              .ours = QStringLiteral("ab Byte %1: %2").arg(at).arg(hexbytes(QByteArrayView(ours).sliced(std::min(at, ours.size())))),
                              .reason = QStringLiteral("die Bilder gleichen sich; das Verzeichnis oder Bytes zwischen den Bildern "
                                                       "weichen ab")};
    }
    return out;
}

GameFileCheck crestcheck()
{
    GameFileCheck c;
    c.name = QStringLiteral("wa.res");
    c.folder = ZorboresFolder;
    c.run = [](const Settings &settings, const QString &path, const QString &scratch, const Progress &progress,
               QList<FileDifference> &differences) {
        // The head every crest gets from the export: the program's template,
        // else the delivered one.
        QString template_ = settings.folder(WappenFolder) + QStringLiteral("default.gfp");
        if (!QFileInfo(template_).isFile())
            template_ = QStringLiteral(":/defaults/wappen/default.gfp");
        const QString out = scratch + QStringLiteral("/wa.res");
        if (Result r = roundtripcrests(path, template_, out, progress); !r)
            return r;
        QFile g(path), o(out);
        if (!g.open(QIODevice::ReadOnly) || !o.open(QIODevice::ReadOnly))
            return Result::failure(QStringLiteral("Die Archive ließen sich nicht wieder lesen."));
        differences = compareres(QFileInfo(path).fileName(), g.readAll(), o.readAll());
        return Result::success();
    };
    return c;
}

} // namespace zorbo
