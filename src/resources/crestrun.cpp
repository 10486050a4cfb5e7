#include "resources/crestrun.h"

#include "platform/codepage.h"
#include "platform/safefile.h"
#include "resources/crestlist.h"
#include "resources/crestswitch.h"
#include "resources/filebytes.h"
#include "resources/gfp.h"
#include "resources/resf.h"
#include "resources/resfwriter.h"
#include "resources/tga.h"

#include <QDir>
#include <QFileInfo>

namespace zorbo {

namespace {

CrestRunReport stopped(const Result &result, const QStringList &problems = {})
{
    return {result, 0, problems, {}, 0};
}

// One line per crest that keeps the default picture, or one for all of them
// when there are many, as on a fresh install whose list names a thousand.
void reportdefaults(CrestRunReport &run, const QStringList &names)
{
    constexpr int shown = 5;
    if (names.size() <= shown) {
        for (const QString &name : names)
            run.problems << QStringLiteral("Zum Wappen %1 fehlt die Datei %1.tga; es erhält das Standardwappen.").arg(name);
        return;
    }
    run.problems << QStringLiteral("%1 Wappen ohne eigene Datei erhalten das Standardwappen (%2 …).")
                        .arg(names.size())
                        .arg(names.first(shown).join(QStringLiteral(", ")));
}

} // namespace

CrestRunReport importwappen(const QString &archivePath, const QString &wappenFolder, const Progress &progress,
                           const CrestImportOptions &options)
{
    CrestRunReport run;
    ResArchive archive;
    ResHeader header;
    QList<ResEntry> entries;
    if (Result r = loadresarchive(archivePath, archive); !r)
        return stopped(r);
    if (Result r = readresheader(archive, header); !r)
        return stopped(r);
    if (Result r = readresdir(archive, header, entries); !r)
        return stopped(r);
    if (!QDir().mkpath(wappenFolder))
        return stopped(Result::failure(QStringLiteral("Der Ordner %1 lässt sich nicht anlegen.").arg(wappenFolder)));
    // The crests go to staging first and replace the folder's all at once.
    CrestSwitch change(wappenFolder);
    if (Result r = change.begin(); !r)
        return stopped(r);
    const QString staging = change.staging();
    const auto abandon = [&](const QString &why) {
        change.drop();
        return stopped(Result::failure(why + QStringLiteral(" Der Import bricht ab; alle Wappen bleiben, wie sie waren.")),
                       run.problems);
    };

    // Each picture goes straight from the archive's bytes to its .tga; a
    // temporary .gfp would only be written to be read back at once.
    int otherTypes = 0;
    qint64 total = 0;
    QStringList imported;
    for (qsizetype i = 0; i < entries.size(); ++i) {
        const ResEntry &entry = entries[i];
        if (entry.type != ResTypeGfp) {
            ++otherTypes;
            continue;
        }
        report(progress, int(90 * i / entries.size()));
        QString why = badnamereason(entry.name);
        if (why.isEmpty())
            why = crestnamereason(fromCp1252(entry.name));
        if (!why.isEmpty()) {
            run.problems << QStringLiteral("Der Eintrag Nr. %1 („%2“) in %3 wird übersprungen: %4.")
                                .arg(i)
                                .arg(printablename(entry.name), archive.file, why);
            continue;
        }
        const QString name = fromCp1252(entry.name);
        QByteArray bytes;
        GfpHeader gfp;
        QByteArray pixels;
        Result r = resourcebytes(archive, header, entry, bytes);
        if (r)
            r = readgfp(bytes, QStringLiteral("Der Eintrag %1 in %2").arg(name, archive.file), gfp, pixels);
        if (!r) {
            run.problems << r.message + QStringLiteral(" Das Wappen %1 bleibt unverändert.").arg(name);
            continue;
        }
        const QByteArray tga = writetga(gfp.width(), gfp.height(), pixels, gfp.bytesPerPixel());
        total += tga.size();
        if (total > options.maxOutput)
            return abandon(QStringLiteral("Die Wappen aus %1 ergäben zusammen mehr als %2 MB.")
                               .arg(archive.file)
                               .arg(options.maxOutput / (1024 * 1024)));
        if (!replacefile(staging + name + QStringLiteral(".tga"), tga, Flush::None))
            return abandon(QStringLiteral("Das Wappen %1 lässt sich nicht schreiben (ist der Datenträger voll?).").arg(name));
        ++run.written;
        imported << name;
    }
    if (otherTypes > 0)
        run.problems << QStringLiteral("%1 Einträge in %2 sind keine Bilder (Typ 14) und wurden übergangen.")
                            .arg(otherTypes).arg(archive.file);

    const QString listFile = wappenFolder + QStringLiteral("wa.lst");
    run.missingFromList = missingfromcrestlist(listFile, imported);
    if (options.addToList && !run.missingFromList.isEmpty()) {
        if (Result r = completecrestlist(listFile, staging + QStringLiteral("wa.lst"), QFileInfo(archivePath).fileName(),
                                         run.missingFromList, &run.addedToList); !r)
            return abandon(r.message);
    }
    if (run.written == 0 && run.addedToList == 0)
        change.drop(); // nothing to switch
    else if (Result r = change.commit(); !r)
        return stopped(r, run.problems);
    if (run.addedToList > 0)
        run.problems << QStringLiteral("%1 Wappen sind in wa.lst angefügt; der nächste Export packt sie mit.")
                            .arg(run.addedToList);
    else if (!run.missingFromList.isEmpty())
        run.problems << QStringLiteral("%1 Wappen aus %2 stehen nicht in wa.lst; ein Export ließe sie weg.")
                            .arg(run.missingFromList.size())
                            .arg(archive.file);
    report(progress, 100);
    return run;
}

CrestRunReport exportwappen(const QString &archivePath, const QString &wappenFolder, const Progress &progress)
{
    CrestRunReport run;
    if (Result r = recovercrests(wappenFolder); !r)
        return stopped(r);
    CrestList list;
    if (Result r = readcrestlist(wappenFolder + QStringLiteral("wa.lst"), list); !r)
        return stopped(r);
    run.problems = list.problems;
    const QString defaultPath = wappenFolder + QStringLiteral("default.gfp");
    if (!QFileInfo(defaultPath).isFile())
        return stopped(Result::failure(QStringLiteral("Die Vorlage %1 fehlt; sie gibt jedem Wappen seinen Kopf.")
                                           .arg(defaultPath)),
                       run.problems);
    QByteArray defaultGfp;
    GfpHeader defaultHeader;
    QByteArray defaultPixels;
    if (Result r = readfilebytes(defaultPath, GfpMaxFileSize, defaultGfp); !r)
        return stopped(r, run.problems);
    if (Result r = readgfp(defaultGfp, QStringLiteral("Die Vorlage %1").arg(defaultPath), defaultHeader, defaultPixels); !r)
        return stopped(r, run.problems);
    QList<WappenItem> items;
    QStringList withoutPicture;
    qint64 total = 0;
    const qsizetype n = list.entries.size();
    for (qsizetype i = 0; i < n; ++i) {
        report(progress, int(90 * i / n));
        const QString name = list.entries[i].name.trimmed();
        const std::optional<QByteArray> bytes = toCp1252(name);
        const QString why = bytes ? badnamereason(*bytes) : QStringLiteral("der Name enthält Zeichen außerhalb von Windows-1252");
        if (!why.isEmpty()) {
            run.problems << QStringLiteral("Das Wappen [%1] aus wa.lst wird übersprungen: %2.").arg(name, why);
            continue;
        }
        if (name.contains(QLatin1Char(' ')))
            run.problems << QStringLiteral("Der Name [%1] enthält ein Leerzeichen; im Archiv endet er davor.").arg(name);
        // The crest keeps the template's picture when its own cannot be read.
        QByteArray gfp = defaultGfp;
        const QString tga = wappenFolder + name + QStringLiteral(".tga");
        TgaImage image;
        if (!QFileInfo(tga).isFile()) {
            withoutPicture << name;
        } else if (Result r = readtga(tga, image); !r) {
            run.problems << r.message + QStringLiteral(" Das Wappen %1 erhält das Standardwappen.").arg(name);
        } else {
            gfp = makegfp(defaultHeader, image.width, image.height, image.pixels, true);
            if (gfp.isEmpty())
                return stopped(Result::failure(QStringLiteral("Das Wappen %1 lässt sich nicht packen.").arg(name)),
                               run.problems);
        }
        total += gfp.size();
        if (total > CrestImportMaxBytes)
            return stopped(Result::failure(QStringLiteral("Die Wappen aus wa.lst ergäben ein Archiv von mehr als %1 MB; "
                                                          "es wird nicht geschrieben.").arg(CrestImportMaxBytes / (1024 * 1024))),
                           run.problems);
        items.append({*bytes, gfp, 0});
    }
    reportdefaults(run, withoutPicture);
    const Result packed = packresf(archivePath, list.type, items, [&progress](int p) { report(progress, 90 + p / 10); });
    if (!packed)
        return stopped(packed, run.problems);
    run.written = int(items.size());
    report(progress, 100);
    return run;
}

} // namespace zorbo
