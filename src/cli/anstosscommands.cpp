// Commands that bring clubs of the Anstoss Exporter into the world.
#include "anstoss/freeplayers.h"
#include "anstoss/importsave.h"
#include "anstoss/league.h"
#include "anstoss/squadbuilder.h"
#include "cli/command.h"
#include "core/fieldcheck.h"
#include "core/world.h"

#include <QFileInfo>

namespace zorbo::cli {

namespace {

// Takes "--name" from the arguments; true when it was there.
bool takeFlag(Context &ctx, const QString &name)
{
    return ctx.args.removeAll(name) > 0;
}

// The encoding of --utf8: without it a file that reads as UTF-8 is refused.
FileEncoding takeEncoding(Context &ctx)
{
    return takeFlag(ctx, QStringLiteral("--utf8")) ? FileEncoding::Utf8 : FileEncoding::Detect;
}

QString withutf8hint(const QString &message, bool looksUtf8)
{
    return looksUtf8 ? message + QStringLiteral(" Mit der Angabe --utf8 wird sie als UTF-8 gelesen.") : message;
}

int finish(Context &ctx, const AnstossResult &r)
{
    if (!r.ok())
        return ctx.fail(QStringLiteral("Fehler: ") + withutf8hint(r.result.message, r.looksUtf8));
    ctx.out << r.result.message << '\n';
    return 0;
}

// The squad of --squad: the automatic choice by a system, or a list of I<i>
// and E<n>, put in the workbench's order. Throws Fault with the reason.
QList<SquadEntry> squadof(Database &db, const AetFile &file, qint64 club, const QString &choice)
{
    SquadBuilder builder;
    builder.fill(db, file, club);
    if (choice == QLatin1String("auto") || choice.startsWith(QLatin1String("auto:"))) {
        int system = 0;
        if (choice == QLatin1String("auto")) {
            system = randomsystem();
        } else {
            const std::optional<qint64> k = parsewholenumber(choice.mid(5));
            if (!k || *k < 0 || *k > 9)
                throw Fault(QStringLiteral("--squad auto:K braucht ein System von 0 bis 9, nicht »%1«.").arg(choice.mid(5)));
            system = int(*k);
        }
        builder.autochoose(system);
        if (!builder.full())
            throw Fault(QStringLiteral("Das System %1 findet in der Datei nur %2 passende Spieler statt 20; "
                                       "es wurde nichts gespeichert.")
                            .arg(systemcaption(system))
                            .arg(builder.squad().size()));
        return builder.entries();
    }
    const QStringList items = choice.split(QLatin1Char(','), Qt::SkipEmptyParts);
    if (items.size() != squadSize)
        throw Fault(QStringLiteral("Die Liste bei --squad nennt %1 statt 20 Spieler.").arg(items.size()));
    for (const QString &raw : items) {
        const QString item = raw.trimmed();
        const bool fromFile = item.startsWith(QLatin1Char('I'), Qt::CaseInsensitive);
        const std::optional<qint64> id = parsewholenumber(item.mid(1));
        if (!id || (!fromFile && !item.startsWith(QLatin1Char('E'), Qt::CaseInsensitive)))
            throw Fault(QStringLiteral("»%1« in --squad ist weder I<Nummer> noch E<Nummer>.").arg(item));
        const SquadBuilder::Source source = fromFile ? SquadBuilder::Import : SquadBuilder::Editor;
        const int row = builder.rowof(source, *id);
        if (row < 0)
            throw Fault(fromFile ? QStringLiteral("Die Datei hat keinen Spieler %1 (gezählt ab 0).").arg(*id)
                                 : QStringLiteral("Der Spieler %1 gehört nicht zum Verein %2.").arg(*id).arg(club));
        if (builder.copy(source, {row}).isEmpty())
            throw Fault(QStringLiteral("»%1« steht zweimal in --squad.").arg(item));
    }
    return builder.entries();
}

int importaet(Context &ctx)
{
    const bool free = takeFlag(ctx, QStringLiteral("--free"));
    const FileEncoding encoding = takeEncoding(ctx);
    const QString clubtext = ctx.takeOption(QStringLiteral("--club"));
    const QString squad = ctx.takeOption(QStringLiteral("--squad"));
    TeamImport groups;
    groups.team = takeFlag(ctx, QStringLiteral("--team"));
    groups.stadium = takeFlag(ctx, QStringLiteral("--stadium"));
    groups.kits = takeFlag(ctx, QStringLiteral("--kits"));
    if (ctx.args.size() != 1)
        return ctx.usage(QStringLiteral("import-aet braucht genau eine Datei; »zorbo-cli --help« zeigt den Aufruf."));
    if (free == !clubtext.isEmpty())
        return ctx.usage(QStringLiteral("import-aet braucht genau eine der Angaben --free oder --club NUMMER."));
    const bool grouped = groups.team || groups.stadium || groups.kits;
    if (free && (grouped || !squad.isEmpty()))
        return ctx.usage(QStringLiteral("--team, --stadium, --kits und --squad gehören zu --club, nicht zu --free."));
    const std::optional<qint64> club = free ? std::optional<qint64>(-1) : parsewholenumber(clubtext);
    if (!club)
        return ctx.usage(QStringLiteral("--club braucht eine Vereinsnummer, nicht »%1«.").arg(clubtext));
    if (!free && !grouped && squad.isEmpty())
        return ctx.usage(QStringLiteral("Mit --club ist wenigstens eine der Angaben --team, --stadium, --kits oder --squad nötig."));
    const QString path = QFileInfo(ctx.args.first()).absoluteFilePath();
    const std::unique_ptr<World> world = ctx.openworld();
    if (!world)
        return 1;
    if (free)
        return finish(ctx, world->run(
                               [&](Database &db) {
                                   return runfreeplayers(db, path, {}, ctx.progress(QStringLiteral("Speichere Freie Spieler")),
                                                         encoding);
                               },
                               {}, freeplayersstep(path)));
    const int trikotsatz = world->settings().trikotsatz;
    QStringList told;
    const AnstossResult r = world->run(
        [&](Database &db) {
            AetFile file;
            AnstossResult done;
            done.result = file.load(path, AetKind::Club, encoding);
            done.looksUtf8 = file.looksUtf8();
            if (!done.ok())
                return done;
            if (grouped) {
                TeamImport team = teamfromfile(db, file, *club);
                team.team = groups.team;
                team.stadium = groups.stadium;
                team.kits = groups.kits;
                // The window's seat fields come from the file here: a missing or
                // wrong value is the file's.
                if (team.stadium) {
                    for (const auto &[key, text] : {std::pair{QStringLiteral("Stadionsitz"), team.sitz},
                                                    std::pair{QStringLiteral("Stadionsteh"), team.steh}}) {
                        if (!parsewholenumber(text))
                            file.fail(QStringLiteral("team"), key,
                                      text.isEmpty() ? QStringLiteral("Der Schlüssel fehlt oder ist leer; die Stadiondaten "
                                                                      "brauchen eine ganze Zahl.")
                                                     : QStringLiteral("»%1« ist keine ganze Zahl.").arg(text));
                    }
                }
                done = saveimportteam(db, file, *club, team, trikotsatz);
                if (!done.ok())
                    return done;
                told.append(done.result.message);
            }
            if (!squad.isEmpty()) {
                done = saveimportplayers(db, file, *club, squadof(db, file, *club, squad),
                                         ctx.progress(QStringLiteral("Speichere Spieler")));
                if (done.ok())
                    told.append(done.result.message);
            }
            return done;
        },
        QStringLiteral("Der Verein wurde nicht importiert"),
        squad.isEmpty() ? importteamstep(*club, path) : importplayersstep(*club, path));
    if (!r.ok())
        return ctx.fail(QStringLiteral("Fehler: ") + withutf8hint(r.result.message, r.looksUtf8));
    for (const QString &line : told)
        ctx.out << line << '\n';
    return 0;
}

int importleague(Context &ctx)
{
    const bool free = takeFlag(ctx, QStringLiteral("--free"));
    const FileEncoding encoding = takeEncoding(ctx);
    if (!free || ctx.args.size() != 1)
        return ctx.usage(QStringLiteral("import-league braucht eine .lig- oder .lan-Datei und --free."));
    const QString path = QFileInfo(ctx.args.first()).absoluteFilePath();
    const std::unique_ptr<World> world = ctx.openworld();
    if (!world)
        return 1;
    const AnstossResult r = world->run(
        [&](Database &db) {
            return zorbo::importleague(db, path, ctx.progress(QStringLiteral("Importiere Liga")), {}, encoding);
        },
        {},
        freeplayersstep(path));
    if (r.ok()) {
        for (const QString &m : r.missing)
            ctx.out << "Nicht gefunden: " << m << ".aet\n";
    }
    return finish(ctx, r);
}

const bool registered =
    registerCommand({QStringLiteral("import-aet"),
                     QStringLiteral("DATEI (--free | --club NUMMER [--team] [--stadium] [--kits] "
                                    "[--squad auto|auto:K|LISTE]) [--utf8]"),
                     QStringLiteral("bringt einen Verein des Anstoss Exporters in die freien Spieler oder über einen Verein"),
                     importaet})
    && registerCommand({QStringLiteral("import-league"), QStringLiteral("DATEI --free [--utf8]"),
                        QStringLiteral("bringt alle Vereine einer .lig- oder .lan-Datei in die freien Spieler"),
                        importleague});

} // namespace

} // namespace zorbo::cli
