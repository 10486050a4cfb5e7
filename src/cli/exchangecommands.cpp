// Commands that exchange the world with the game's files and team files.
#include "cli/command.h"
#include "core/fieldcheck.h"
#include "core/world.h"
#include "exchange/competitiontemplate.h"
#include "exchange/configruns.h"
#include "exchange/teamfile.h"
#include "exchange/teamfileopen.h"

#include <QDir>
#include <QFileInfo>

namespace zorbo::cli {

namespace {

// Opens the program folder's world and runs one operation on it; prints the
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
    const ExchangeResult r = world->run(operation);
    for (const QString &line : findinglines(r.findings))
        ctx.out << "Hinweis: " << line << '\n';
    if (!r.ok() && r.looksUtf8)
        return ctx.fail(r.result.message + QStringLiteral(" Mit der Angabe --utf8 wird sie als UTF-8 gelesen."));
    if (!r.ok())
        return ctx.fail(r.result.message);
    ctx.out << r.result.message << '\n';
    return 0;
}

// A file in UTF-8 is read only when the caller says so; without the flag
// it is refused rather than taken with every umlaut as two characters.
FileEncoding takeEncoding(Context &ctx)
{
    return ctx.args.removeAll(QStringLiteral("--utf8")) > 0 ? FileEncoding::Utf8 : FileEncoding::Detect;
}

QString fileArgument(const Context &ctx, int i)
{
    return QFileInfo(ctx.args.at(i)).absoluteFilePath();
}

int importTeams(Context &ctx)
{
    const FileEncoding encoding = takeEncoding(ctx);
    return withWorld(ctx, 1, [&](Database &db) {
        return importconfig(db, fileArgument(ctx, 0), ConfigKind::Teams, ctx.progress(QStringLiteral("Importiere Vereine")),
                            encoding);
    });
}

int importPlayers(Context &ctx)
{
    const FileEncoding encoding = takeEncoding(ctx);
    return withWorld(ctx, 1, [&](Database &db) {
        return importconfig(db, fileArgument(ctx, 0), ConfigKind::Players, ctx.progress(QStringLiteral("Importiere Spieler")),
                            encoding);
    });
}

int exportTeams(Context &ctx)
{
    return withWorld(ctx, 1, [&](Database &db) {
        return exportconfig(db, fileArgument(ctx, 0), ConfigKind::Teams, ctx.progress(QStringLiteral("Exportiere Vereine")));
    });
}

int exportPlayers(Context &ctx)
{
    return withWorld(ctx, 1, [&](Database &db) {
        return exportconfig(db, fileArgument(ctx, 0), ConfigKind::Players, ctx.progress(QStringLiteral("Exportiere Spieler")));
    });
}

int saveTeam(Context &ctx)
{
    const std::optional<qint64> team = ctx.args.isEmpty() ? std::nullopt : parsewholenumber(ctx.args.first());
    if (!team)
        return ctx.fail(QStringLiteral("save-team braucht eine Teamnummer und eine Datei."));
    return withWorld(ctx, 2, [&](Database &db) {
        return exportverein(db, fileArgument(ctx, 1), *team, ctx.progress(QStringLiteral("Speichere Verein")));
    });
}

int openTeam(Context &ctx)
{
    const FileEncoding encoding = takeEncoding(ctx);
    const QString country = ctx.takeOption(QStringLiteral("--new-in"));
    const QString replace = ctx.takeOption(QStringLiteral("--replace"));
    if (country.isEmpty() == replace.isEmpty())
        return ctx.fail(QStringLiteral("open-team braucht genau eine der Angaben --new-in LAND oder --replace NUMMER."));
    const std::optional<qint64> club = replace.isEmpty() ? std::nullopt : parsewholenumber(replace);
    if (!replace.isEmpty() && !club)
        return ctx.fail(QStringLiteral("--replace braucht eine Vereinsnummer, nicht »%1«.").arg(replace));
    return withWorld(ctx, 1, [&](Database &db) {
        const Progress progress = ctx.progress(QStringLiteral("Übernehme Teamdatei"));
        return club ? openteamreplace(db, fileArgument(ctx, 0), *club, progress, encoding)
                    : openteamnew(db, fileArgument(ctx, 0), country, progress, encoding);
    });
}

int makeTemplate(Context &ctx)
{
    return withWorld(ctx, 0, [&](Database &db) { return tempvereine(db, ctx.progress(QStringLiteral("Erstelle Vorlage"))); });
}

int league(Context &ctx)
{
    return withWorld(ctx, 0, [&](Database &db) {
        const QString path = ctx.dir + QStringLiteral("/1_we.cfg");
        ExchangeResult r = templiga(db, path, ctx.progress(QStringLiteral("Schreibe 1_we.cfg")));
        if (r.ok())
            r.result.message = QStringLiteral("%1 Ligen mit %2 Vereinen nach %3 geschrieben.")
                                   .arg(r.nationalTeams)
                                   .arg(r.teams)
                                   .arg(QDir::toNativeSeparators(path));
        return r;
    });
}

const bool registered =
    registerCommand({QStringLiteral("import-teams"), QStringLiteral("DATEI [--utf8]"),
                     QStringLiteral("ersetzt Vereine, Nationalteams und Kader durch die einer 1_tm.cfg"), importTeams})
    && registerCommand({QStringLiteral("import-players"), QStringLiteral("DATEI [--utf8]"),
                        QStringLiteral("ersetzt alle Spieler durch die einer 1_sp.cfg"), importPlayers})
    && registerCommand({QStringLiteral("export-teams"), QStringLiteral("DATEI"),
                        QStringLiteral("schreibt Vereine, Nationalteams und Kader als 1_tm.cfg"), exportTeams})
    && registerCommand({QStringLiteral("export-players"), QStringLiteral("DATEI"),
                        QStringLiteral("schreibt alle Spieler als 1_sp.cfg"), exportPlayers})
    && registerCommand({QStringLiteral("save-team"), QStringLiteral("NUMMER DATEI"),
                        QStringLiteral("speichert ein Team mit seinem Kader als Teamdatei (.tea)"), saveTeam})
    && registerCommand({QStringLiteral("open-team"), QStringLiteral("DATEI --new-in LAND|--replace NR [--utf8]"),
                        QStringLiteral("übernimmt eine Teamdatei als neuen Verein oder über einen Verein"), openTeam})
    && registerCommand({QStringLiteral("template"), {},
                        QStringLiteral("legt für jede Liga aus e_landkontinent Vereine mit je 20 Spielern an"), makeTemplate})
    && registerCommand({QStringLiteral("league"), {},
                        QStringLiteral("schreibt den Wettbewerb 1_we.cfg in den Programmordner"), league});

} // namespace

} // namespace zorbo::cli
