// Commands that exchange the world with the game's files and team files.
#include "cli/command.h"
#include "core/fieldcheck.h"
#include "core/world.h"
#include "exchange/competitiontemplate.h"
#include "exchange/formats.h"

#include <QDir>
#include <QFileInfo>

namespace zorbo::cli {

namespace {

// Opens the program folder's world and runs one operation with it; prints the
// findings, one a line, and the counts, or the message on failure.
template <typename Operation>
int withWorld(Context &ctx, int fileArguments, const Operation &operation)
{
    if (ctx.args.size() != fileArguments)
        return ctx.fail(QStringLiteral("Falsche Zahl von Argumenten; »zorbo-cli --help« zeigt den Aufruf."));
    const std::unique_ptr<World> world = openworld(ctx.dir, ctx.progress(QStringLiteral("Erstelle Transfermarkt")));
    for (const QString &m : world->messages())
        ctx.err << m << '\n';
    if (!world->db())
        return ctx.fail(QStringLiteral("Die Welt in %1 ist nicht bereit.").arg(QDir::toNativeSeparators(ctx.dir)));
    const auto r = operation(*world);
    for (const QString &line : findinglines(r.findings))
        ctx.out << "Hinweis: " << line << '\n';
    if (!r.ok() && r.looksUtf8)
        return ctx.fail(r.result.message + QStringLiteral(" Mit der Angabe --utf8 wird sie als UTF-8 gelesen."));
    if (!r.ok())
        return ctx.fail(r.result.message);
    ctx.out << r.result.message << '\n';
    return 0;
}

QString fileArgument(const Context &ctx, int i)
{
    return QFileInfo(ctx.args.at(i)).absoluteFilePath();
}

// Runs a format's read or write with the world, printing as withWorld does.
int formatrun(Context &ctx, int fileArguments, const FileFormat &format, bool read, const FormatRequest &request)
{
    const auto &run = read ? format.read : format.write;
    const QString label = (read ? format.reading : format.writing).chopped(3);
    return withWorld(ctx, fileArguments, [&](World &world) {
        FormatRequest r = request;
        r.path = fileArgument(ctx, fileArguments - 1);
        return run(world, r, ctx.progress(label));
    });
}

// The command that reads a file of the format into the world.
int readformat(Context &ctx, const FileFormat &format)
{
    FormatRequest request;
    request.utf8 = ctx.args.removeAll(QStringLiteral("--utf8")) > 0;
    if (format.readusage.contains(QLatin1String("--new-in"))) {
        // A team file comes in as a new club of a country or over a club.
        request.country = ctx.takeOption(QStringLiteral("--new-in"));
        const QString replace = ctx.takeOption(QStringLiteral("--replace"));
        if (request.country.isEmpty() == replace.isEmpty())
            return ctx.fail(QStringLiteral("%1 braucht genau eine der Angaben --new-in LAND oder --replace NUMMER.")
                                .arg(format.readcommand));
        if (!replace.isEmpty()) {
            const std::optional<qint64> club = parsewholenumber(replace);
            if (!club)
                return ctx.fail(QStringLiteral("--replace braucht eine Vereinsnummer, nicht »%1«.").arg(replace));
            request.team = *club;
        }
    }
    return formatrun(ctx, 1, format, true, request);
}

// The command that writes a file of the format from the world.
int writeformat(Context &ctx, const FileFormat &format)
{
    FormatRequest request;
    if (format.writeusage.startsWith(QLatin1String("NUMMER"))) {
        const std::optional<qint64> team = ctx.args.isEmpty() ? std::nullopt : parsewholenumber(ctx.args.first());
        if (!team)
            return ctx.fail(QStringLiteral("%1 braucht eine Teamnummer und eine Datei.").arg(format.writecommand));
        request.team = *team;
        return formatrun(ctx, 2, format, false, request);
    }
    return formatrun(ctx, 1, format, false, request);
}

// Every format with a command gets it.
bool registerformats()
{
    for (const FileFormat &format : exchangeformats()) {
        if (!format.readcommand.isEmpty())
            registerCommand({format.readcommand, format.readusage, format.readhelp,
                             [&format](Context &ctx) { return readformat(ctx, format); }});
        if (!format.writecommand.isEmpty())
            registerCommand({format.writecommand, format.writeusage, format.writehelp,
                             [&format](Context &ctx) { return writeformat(ctx, format); }});
    }
    return true;
}

int makeTemplate(Context &ctx)
{
    return withWorld(ctx, 0, [&](World &world) {
        return world.run([&](Database &db) { return tempvereine(db, ctx.progress(QStringLiteral("Erstelle Vorlage"))); });
    });
}

int league(Context &ctx)
{
    return withWorld(ctx, 0, [&](World &world) {
        return world.run([&](Database &db) {
            const QString path = ctx.dir + QStringLiteral("/1_we.cfg");
            ExchangeResult r = templiga(db, path, ctx.progress(QStringLiteral("Schreibe 1_we.cfg")));
            if (r.ok())
                r.result.message = QStringLiteral("%1 Ligen mit %2 Vereinen nach %3 geschrieben.")
                                       .arg(r.nationalTeams)
                                       .arg(r.teams)
                                       .arg(QDir::toNativeSeparators(path));
            return r;
        });
    });
}

const bool registered =
    registerformats()
    && registerCommand({QStringLiteral("template"), {},
                        QStringLiteral("legt für jede Liga aus e_landkontinent Vereine mit je 20 Spielern an"), makeTemplate})
    && registerCommand({QStringLiteral("league"), {},
                        QStringLiteral("schreibt den Wettbewerb 1_we.cfg in den Programmordner"), league});

} // namespace

} // namespace zorbo::cli
