// Commands that read and write the game's files: one pair for each file
// format the subsystems register.
#include "cli/command.h"
#include "core/defaultfolders.h"
#include "core/fieldcheck.h"
#include "core/gamefiles.h"
#include "core/schema.h"
#include "exchange/formats.h"
#include "resources/formats.h"

#include <QFileInfo>

namespace zorbo::cli {

namespace {

// Runs a format's read or write; the file is the last argument. A format
// that needs no world runs on the program folder's settings alone, with its
// delivered folders in place.
// Before an export over a game file that changed since the world last
// read or wrote it: the refusal naming the file and when it changed; empty
// when the export may go on.
QString changedrefusal(World &world, const QString &path)
{
    QDateTime when;
    if (!world.db() || !changedsince(*world.db(), path, &when))
        return {};
    return changedwords(path, when) + QStringLiteral(" Mit --force wird sie trotzdem überschrieben.");
}

int formatrun(Context &ctx, int fileArguments, const FileFormat &format, bool read, FormatRequest request)
{
    const bool force = !read && format.gamefile && ctx.args.removeAll(QStringLiteral("--force")) > 0;
    const auto run = [&](const FormatPlace &place, const FormatRequest &r, const Progress &p) {
        return runformat(format, read, place, r, p);
    };
    const Progress progress = ctx.progress((read ? format.reading : format.writing).chopped(3));
    const auto told = [&](FormatRun outcome) {
        if (!outcome.ok() && outcome.looksUtf8)
            outcome.result.message += QStringLiteral(" Mit der Angabe --utf8 wird sie als UTF-8 gelesen.");
        if (outcome.ok() && !outcome.unlisted.isEmpty() && !request.addToList)
            outcome.findings << Finding{.text = QStringLiteral("Mit --add-to-list werden diese %1 Wappen in wa.lst angefügt.")
                                                    .arg(outcome.unlisted.size())};
        return outcome;
    };
    if (ctx.args.size() != fileArguments)
        return ctx.usage(QStringLiteral("Falsche Zahl von Argumenten; »zorbo-cli --help« zeigt den Aufruf."));
    request.path = QFileInfo(ctx.args.last()).absoluteFilePath();
    if (!format.needsworld) {
        for (const QString &line : unpackdefaults(ctx.settings()))
            ctx.err << line << '\n';
        // The crests need no world, but one that is there remembers the archive.
        QString why;
        std::unique_ptr<World> world;
        if (format.gamefile && isworldfile(ctx.settings().dbpfad(), &why))
            world = ctx.openexistingworld();
        if (world && !force) {
            if (const QString refusal = changedrefusal(*world, request.path); !refusal.isEmpty())
                return ctx.fail(QStringLiteral("Fehler: ") + refusal);
        }
        return finish(ctx, told(run(FormatPlace{ctx.settings(), world.get()}, request, progress)));
    }
    return withWorld(ctx, fileArguments, [&](World &world) {
        if (!force && !read && format.gamefile) {
            if (const QString refusal = changedrefusal(world, request.path); !refusal.isEmpty()) {
                FormatRun refused;
                refused.result = Result::failure(refusal);
                return refused;
            }
        }
        return told(run(FormatPlace{world.settings(), &world}, request, progress));
    });
}

int readformat(Context &ctx, const FileFormat &format)
{
    FormatRequest request;
    const auto flag = [&](const char *name) {
        return format.readusage.contains(QLatin1String(name)) && ctx.args.removeAll(QLatin1String(name)) > 0;
    };
    request.utf8 = flag("--utf8");
    request.addToList = flag("--add-to-list");
    if (format.readusage.contains(QLatin1String("--new-in"))) {
        // A team file comes in as a new club of a country or over a club.
        request.country = ctx.takeOption(QStringLiteral("--new-in"));
        const QString replace = ctx.takeOption(QStringLiteral("--replace"));
        if (request.country.isEmpty() == replace.isEmpty())
            return ctx.usage(QStringLiteral("%1 braucht genau eine der Angaben --new-in LAND oder --replace NUMMER.")
                                .arg(format.readcommand));
        if (!replace.isEmpty()) {
            const std::optional<qint64> club = parsewholenumber(replace);
            if (!club)
                return ctx.usage(QStringLiteral("--replace braucht eine Vereinsnummer, nicht »%1«.").arg(replace));
            request.team = *club;
        }
    }
    return formatrun(ctx, 1, format, true, request);
}

int writeformat(Context &ctx, const FileFormat &format)
{
    FormatRequest request;
    if (format.writeusage.startsWith(QLatin1String("NUMMER"))) {
        const std::optional<qint64> team = ctx.args.isEmpty() ? std::nullopt : parsewholenumber(ctx.args.first());
        if (!team)
            return ctx.usage(QStringLiteral("%1 braucht eine Teamnummer und eine Datei.").arg(format.writecommand));
        request.team = *team;
        return formatrun(ctx, 2, format, false, request);
    }
    return formatrun(ctx, 1, format, false, request);
}

bool registerformats(const QList<FileFormat> &formats)
{
    for (const FileFormat &format : formats) {
        if (!format.readcommand.isEmpty())
            registerCommand({format.readcommand, format.readusage, format.readhelp,
                             [&format](Context &ctx) { return readformat(ctx, format); }});
        if (!format.writecommand.isEmpty())
            registerCommand({format.writecommand, format.writeusage, format.writehelp,
                             [&format](Context &ctx) { return writeformat(ctx, format); }});
    }
    return true;
}

const bool registered = registerformats(exchangeformats()) && registerformats(resourceformats());

} // namespace

} // namespace zorbo::cli
