#include "resources/crestrun.h"

#include "platform/codepage.h"
#include "platform/runner.h"
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

CrestRunReport stopped(const Result &result, const QList<Finding> &findings = {})
{
    return {result, 0, findings, {}, 0};
}

// One finding per crest that keeps the default picture, or one for all of
// them when there are many, as on a fresh install whose list names a thousand.
void reportdefaults(CrestRunReport &run, const QString &wappenFolder, const QStringList &names)
{
    constexpr int shown = 5;
    if (names.size() <= shown) {
        for (const QString &name : names)
            run.findings << Finding{.text = QStringLiteral("die Datei fehlt; das Wappen %1 erhält das Standardwappen.").arg(name),
                                    .file = wappenFolder + name + QStringLiteral(".tga")};
        return;
    }
    run.findings << Finding{.text = QStringLiteral("%1 Wappen ohne eigene Datei erhalten das Standardwappen (%2 …).")
                                        .arg(names.size())
                                        .arg(names.first(shown).join(QStringLiteral(", ")))};
}

CrestRunReport importcrests(const QString &archivePath, const QString &wappenFolder, const Progress &progress,
                            const CrestImportOptions &options)
{
    CrestRunReport run;
    ResContents contents;
    if (Result r = openresarchive(archivePath, contents); !r)
        return stopped(r);
    const auto &[archive, header, entries] = contents;
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
                       run.findings);
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
        // Before the switch a stop drops staging, and the crests stay.
        report(progress, i, entries.size());
        QString why = badnamereason(entry.name);
        if (why.isEmpty())
            why = crestnamereason(fromCp1252(entry.name));
        if (!why.isEmpty()) {
            run.findings << Finding{.text = QStringLiteral("der Eintrag Nr. %1 („%2“) wird übersprungen: %3.")
                                                .arg(i)
                                                .arg(printablename(entry.name), why),
                                    .file = archive.file};
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
            run.findings << Finding{.text = r.message + QStringLiteral(" Das Wappen %1 bleibt unverändert.").arg(name)};
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
        run.findings << Finding{.text = QStringLiteral("%1 Einträge sind keine Bilder (Typ 14) und wurden übergangen.")
                                            .arg(otherTypes),
                                .file = archive.file};

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
        return stopped(r, run.findings);
    if (run.addedToList > 0)
        run.findings << Finding{.text = QStringLiteral("%1 Wappen sind angefügt; der nächste Export packt sie mit.")
                                            .arg(run.addedToList),
                                .file = listFile};
    else if (!run.missingFromList.isEmpty())
        run.findings << Finding{.text = QStringLiteral("%1 Wappen des Archivs stehen nicht in wa.lst; ein Export ließe "
                                                       "sie weg.")
                                            .arg(run.missingFromList.size()),
                                .file = archive.file};
    return run;
}

CrestRunReport exportcrests(const QString &archivePath, const QString &wappenFolder, const Progress &progress)
{
    CrestRunReport run;
    if (Result r = recovercrests(wappenFolder); !r)
        return stopped(r);
    const QString listFile = wappenFolder + QStringLiteral("wa.lst");
    CrestList list;
    if (Result r = readcrestlist(listFile, list); !r)
        return stopped(r);
    run.findings = list.findings;
    const QString defaultPath = wappenFolder + QStringLiteral("default.gfp");
    if (!QFileInfo(defaultPath).isFile())
        return stopped(Result::failure(QStringLiteral("Die Vorlage %1 fehlt; sie gibt jedem Wappen seinen Kopf.")
                                           .arg(defaultPath)),
                       run.findings);
    QByteArray defaultGfp;
    GfpHeader defaultHeader;
    QByteArray defaultPixels;
    if (Result r = readfilebytes(defaultPath, GfpMaxFileSize, defaultGfp); !r)
        return stopped(r, run.findings);
    if (Result r = readgfp(defaultGfp, QStringLiteral("Die Vorlage %1").arg(defaultPath), defaultHeader, defaultPixels); !r)
        return stopped(r, run.findings);
    QList<WappenItem> items;
    QStringList withoutPicture;
    qint64 total = 0;
    const qsizetype n = list.entries.size();
    for (qsizetype i = 0; i < n; ++i) {
        // Read first, packed after: two steps per crest.
        report(progress, i, 2 * n);
        const QString name = list.entries[i].name.trimmed();
        const std::optional<QByteArray> bytes = toCp1252(name);
        const QString why = bytes ? badnamereason(*bytes) : QStringLiteral("der Name enthält Zeichen außerhalb von Windows-1252");
        if (!why.isEmpty()) {
            run.findings << Finding{.text = QStringLiteral("das Wappen [%1] wird übersprungen: %2.").arg(name, why), .file = listFile};
            continue;
        }
        if (name.contains(QLatin1Char(' ')))
            run.findings << Finding{.text = QStringLiteral("der Name [%1] enthält ein Leerzeichen; im Archiv endet er davor.")
                                                .arg(name),
                                    .file = listFile};
        // The crest keeps the template's picture when its own cannot be read.
        QByteArray gfp = defaultGfp;
        const QString tga = wappenFolder + name + QStringLiteral(".tga");
        TgaImage image;
        if (!QFileInfo(tga).isFile()) {
            withoutPicture << name;
        } else if (Result r = readtga(tga, image); !r) {
            run.findings << Finding{.text = r.message + QStringLiteral(" Das Wappen %1 erhält das Standardwappen.").arg(name)};
        } else {
            gfp = makegfp(defaultHeader, image.width, image.height, image.pixels, true);
            if (gfp.isEmpty())
                return stopped(Result::failure(QStringLiteral("Das Wappen %1 lässt sich nicht packen.").arg(name)),
                               run.findings);
        }
        total += gfp.size();
        if (total > CrestImportMaxBytes)
            return stopped(Result::failure(QStringLiteral("Die Wappen aus wa.lst ergäben ein Archiv von mehr als %1 MB; "
                                                          "es wird nicht geschrieben.").arg(CrestImportMaxBytes / (1024 * 1024))),
                           run.findings);
        items.append({*bytes, gfp, 0});
    }
    reportdefaults(run, wappenFolder, withoutPicture);
    const Progress packing = [&progress, n](qint64 done, qint64) { return !progress || progress(n + done, 2 * n); };
    const Result packed = packresf(archivePath, list.type, items, packing);
    if (!packed)
        return stopped(packed, run.findings);
    run.written = int(items.size());
    return run;
}

} // namespace

CrestRunReport importwappen(const QString &archivePath, const QString &wappenFolder, const Progress &progress,
                           const CrestImportOptions &options)
{
    return runguarded(QString(), [&] { return importcrests(archivePath, wappenFolder, progress, options); });
}

CrestRunReport exportwappen(const QString &archivePath, const QString &wappenFolder, const Progress &progress)
{
    return runguarded(QString(), [&] { return exportcrests(archivePath, wappenFolder, progress); });
}

} // namespace zorbo
