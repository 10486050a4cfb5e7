#include "resources/formats.h"

#include "core/defaultfolders.h"
#include "resources/crestrun.h"

#include <QDir>

namespace zorbo {

namespace {

FormatRun fromcrests(const CrestRunReport &r)
{
    FormatRun run;
    run.result = r.result;
    run.findings = r.findings;
    run.count = r.written;
    run.unlisted = r.missingFromList;
    return run;
}

FileFormat crestformat()
{
    FileFormat f;
    f.key = QStringLiteral("wappen");
    f.name = QStringLiteral("Zorbo Wappen (wa.res)");
    f.pattern = QStringLiteral("wa*.res");
    f.readcommand = QStringLiteral("import-crests");
    f.readusage = QStringLiteral("[--add-to-list] DATEI");
    f.readhelp = QStringLiteral("Wappen aus einem RESF-Archiv (wa.res) in den Wappen-Ordner entpacken; "
                                "--add-to-list nimmt Wappen, die wa.lst fehlen, dort auf");
    f.writecommand = QStringLiteral("export-crests");
    f.writeusage = QStringLiteral("DATEI [--force]");
    f.writehelp = QStringLiteral("Wappen aus dem Wappen-Ordner nach wa.lst in ein RESF-Archiv packen");
    f.gamefile = true;
    f.reading = QStringLiteral("Importiere Wappen...");
    f.writing = QStringLiteral("Exportiere Wappen...");
    f.needsworld = false;
    f.read = [](const FormatPlace &place, const FormatRequest &request, const Progress &progress) {
        CrestImportOptions options;
        options.addToList = request.addToList;
        FormatRun run = fromcrests(importwappen(request.path, place.settings.folder(WappenFolder), progress, options));
        if (run.ok())
            run.result.message = QStringLiteral("%1 Wappen aus %2 übernommen.")
                                     .arg(run.count)
                                     .arg(QDir::toNativeSeparators(request.path));
        return run;
    };
    f.write = [](const FormatPlace &place, const FormatRequest &request, const Progress &progress) {
        FormatRun run = fromcrests(exportwappen(request.path, place.settings.folder(WappenFolder), progress));
        if (run.ok())
            run.result.message = QStringLiteral("%1 Wappen nach %2 gepackt.")
                                     .arg(run.count)
                                     .arg(QDir::toNativeSeparators(request.path));
        return run;
    };
    return f;
}

} // namespace

const QList<FileFormat> &resourceformats()
{
    static const QList<FileFormat> formats = {crestformat()};
    return formats;
}

const FileFormat *resourceformat(const QString &key)
{
    return findformat(resourceformats(), key);
}

} // namespace zorbo
