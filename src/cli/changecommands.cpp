// Commands that compare worlds and share changes: diff, changes export|show|apply.
#include "cli/command.h"
#include "exchange/changeapply.h"
#include "exchange/worlddiff.h"
#include "core/fieldcheck.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace zorbo::cli {

namespace {

QJsonObject tojson(const EntityChange &c)
{
    QJsonObject o{{"art", c.kindtext()},       {"objekt", entitytext(c.entity)}, {"nummer", c.number},
                  {"name", c.name},            {"land", c.country},              {"verein", c.club},
                  {"text", c.text()}};
    if (c.kind == EntityChange::Moved) {
        o.insert("von", c.fromClub);
        o.insert("nach", c.toClub);
    }
    if (!c.fields.isEmpty()) {
        QJsonArray fields;
        for (const FieldChange &f : c.fields)
            fields.append(QJsonObject{{"feld", f.field}, {"spalte", f.column}, {"vorher", f.before}, {"nachher", f.after}});
        o.insert("felder", fields);
    }
    return o;
}

QJsonObject tojson(const ChangeCounts &n)
{
    return {{"neu", n.added}, {"geändert", n.changed}, {"entfernt", n.removed}, {"wechsel", n.moved}};
}

QJsonObject tojson(const Conflict &c)
{
    QJsonArray values;
    for (const Conflict::Value &v : c.values)
        values.append(QJsonObject{{"feld", v.field}, {"vorher", v.before}, {"hier", v.here}, {"datei", v.file}});
    return {{"id", c.id()}, {"art", c.kindtext()}, {"was", c.what}, {"grund", c.why}, {"werte", values}, {"text", c.text()}};
}

// The list grouped under its countries and clubs.
void printchanges(Context &ctx, const QList<EntityChange> &changes)
{
    QString country, club;
    bool first = true;
    for (const EntityChange &c : changes) {
        if (first || c.country != country) {
            ctx.out << (c.country.isEmpty() ? QStringLiteral("(ohne Land)") : c.country) << '\n';
            club.clear();
        }
        if (!c.club.isEmpty() && (first || c.club != club || c.country != country))
            ctx.out << "  " << c.club << '\n';
        first = false;
        country = c.country;
        club = c.club;
        ctx.out << (c.club.isEmpty() ? "  " : "    ") << c.text() << '\n';
    }
}

void printjson(Context &ctx, const QJsonObject &o)
{
    ctx.out << QString::fromUtf8(QJsonDocument(o).toJson(QJsonDocument::Indented));
}

bool takeFlag(Context &ctx, const QString &name)
{
    return ctx.args.removeAll(name) > 0;
}

// diff OTHER | diff 1_tm.cfg 1_sp.cfg: OTHER is a world file, or a folder
// holding zorbo.mdb or the two game files.
int diff(Context &ctx)
{
    const bool json = takeFlag(ctx, QStringLiteral("--json"));
    if (ctx.args.isEmpty() || ctx.args.size() > 2)
        return ctx.fail(QStringLiteral("»diff« braucht eine andere Welt (zorbo.mdb oder ihren Ordner) oder die Spieldateien "
                                       "1_tm.cfg und 1_sp.cfg."));
    QString world, teams, players;
    if (ctx.args.size() == 2) {
        teams = ctx.args.at(0);
        players = ctx.args.at(1);
    } else if (const QFileInfo info(ctx.args.first()); info.isDir()) {
        const QDir dir(info.filePath());
        if (dir.exists(QStringLiteral("zorbo.mdb"))) {
            world = dir.filePath(QStringLiteral("zorbo.mdb"));
        } else {
            teams = dir.filePath(QStringLiteral("1_tm.cfg"));
            players = dir.filePath(QStringLiteral("1_sp.cfg"));
            if (!QFileInfo::exists(teams) && !QFileInfo::exists(players))
                return ctx.fail(QStringLiteral("Im Ordner „%1“ liegt weder zorbo.mdb noch 1_tm.cfg oder 1_sp.cfg.").arg(info.filePath()));
            if (!QFileInfo::exists(teams))
                teams.clear();
            if (!QFileInfo::exists(players))
                players.clear();
        }
    } else {
        world = ctx.args.first();
    }
    const std::unique_ptr<World> here = ctx.openexistingworld();
    if (!here)
        return 1;
    WorldDiff result;
    if (world.isEmpty()) {
        QTemporaryDir scratch;
        result = diffgamefiles(*here->db(), teams, players, scratch.filePath(QStringLiteral("spieldateien.mdb")),
                               ctx.progress(QStringLiteral("Lese die Spieldateien")));
    } else {
        result = diffworlds(*here->db(), world);
    }
    if (!result.result.ok)
        return finish(ctx, result);
    if (json) {
        QJsonArray list;
        for (const EntityChange &c : result.changes)
            list.append(tojson(c));
        printjson(ctx, {{"anzahl", tojson(result.counts)}, {"aenderungen", list}});
        return 0;
    }
    for (const QString &line : findinglines(result.findings))
        ctx.out << "Hinweis: " << line << '\n';
    ctx.out << result.result.message << "\n";
    printchanges(ctx, result.changes);
    return 0;
}

int exportchanges(Context &ctx)
{
    const QString since = ctx.takeOption(QStringLiteral("--since"));
    const QString against = ctx.takeOption(QStringLiteral("--against"));
    const QString description = ctx.takeOption(QStringLiteral("--description"));
    if (ctx.args.size() != 1 || (!since.isEmpty() && !against.isEmpty()))
        return ctx.fail(QStringLiteral("Aufruf: changes export [--since SCHRITT | --against ANDERE] [--description TEXT] DATEI"));
    std::optional<qint64> step = qint64(1);
    if (!since.isEmpty()) {
        step = parsewholenumber(since);
        if (!step || *step < 1)
            return ctx.fail(QStringLiteral("--since braucht die Nummer eines Schritts (siehe history), nicht »%1«.").arg(since));
    }
    const std::unique_ptr<World> world = ctx.openexistingworld();
    if (!world)
        return 1;
    const ChangeFileRead made = against.isEmpty() ? changessince(*world->db(), *step, description)
                                                  : changesagainst(*world->db(), against, description);
    if (!made.result.ok)
        return ctx.fail(made.result.message);
    if (made.file.changeset.isEmpty())
        return ctx.fail(QStringLiteral("Es gibt keine Änderungen; es wurde keine Datei geschrieben."));
    return finish(ctx, writechangefile(ctx.args.first(), made.file));
}

// Reads the file named by the one argument left, or says why not.
std::optional<ChangeFile> readfile(Context &ctx, const QString &usage)
{
    if (ctx.args.size() != 1) {
        ctx.fail(usage);
        return std::nullopt;
    }
    ChangeFileRead read = readchangefile(ctx.args.first());
    if (!read.result.ok) {
        ctx.fail(read.result.message);
        return std::nullopt;
    }
    return read.file;
}

int show(Context &ctx)
{
    const bool json = takeFlag(ctx, QStringLiteral("--json"));
    const std::optional<ChangeFile> file = readfile(ctx, QStringLiteral("Aufruf: changes show [--json] DATEI"));
    if (!file)
        return 1;
    const std::unique_ptr<World> world = ctx.openexistingworld();
    if (!world)
        return 1;
    const ApplyOutcome preview = previewchanges(*world->db(), file->changeset);
    if (!preview.result.ok)
        return ctx.fail(preview.result.message);
    const ChangeCounts counts = countchanges(file->summary);
    if (json) {
        QJsonArray list, conflicts;
        for (const EntityChange &c : file->summary)
            list.append(tojson(c));
        for (const Conflict &c : preview.conflicts)
            conflicts.append(tojson(c));
        printjson(ctx, {{"formatversion", file->version},
                        {"programmversion", file->program},
                        {"datum", file->date.toString(Qt::ISODate)},
                        {"beschreibung", file->description},
                        {"fingerabdruck", QString::fromLatin1(file->fingerprint.toHex())},
                        {"anzahl", tojson(counts)},
                        {"aenderungen", list},
                        {"zeilen", preview.changes},
                        {"schon_enthalten", preview.already},
                        {"konflikte", conflicts}});
        return 0;
    }
    ctx.out << "Änderungsdatei: " << ctx.args.first() << '\n'
            << "Erstellt: " << file->date.toString(QStringLiteral("dd.MM.yyyy hh:mm")) << " mit Zorbo Editor " << file->program << '\n';
    if (!file->description.isEmpty())
        ctx.out << "Beschreibung: " << file->description << '\n';
    ctx.out << counts.total() << " Änderungen: " << counts.text() << '\n';
    printchanges(ctx, file->summary);
    if (preview.already == preview.changes)
        ctx.out << "Die Änderungen sind in dieser Welt schon enthalten.\n";
    if (preview.conflicts.isEmpty())
        ctx.out << "Keine Konflikte mit dieser Welt.\n";
    else
        ctx.out << preview.conflicts.size() << (preview.conflicts.size() == 1 ? " Konflikt" : " Konflikte") << " mit dieser Welt:\n";
    for (const Conflict &c : preview.conflicts)
        ctx.out << "  " << c.id() << "  " << c.text() << '\n';
    return 0;
}

int apply(Context &ctx)
{
    const bool mine = takeFlag(ctx, QStringLiteral("--mine"));
    const bool theirs = takeFlag(ctx, QStringLiteral("--theirs"));
    const QString usage = QStringLiteral("Aufruf: changes apply DATEI [--mine | --theirs]");
    if (mine && theirs)
        return ctx.fail(usage);
    const std::optional<ChangeFile> file = readfile(ctx, usage);
    if (!file)
        return 1;
    const std::unique_ptr<World> world = ctx.openexistingworld();
    if (!world)
        return 1;
    ApplyChoices choices;
    if (mine || theirs)
        choices.all = mine ? Choice::Mine : Choice::Theirs;
    const ApplyOutcome outcome = applychangefile(*world, ctx.args.first(), *file, choices);
    if (!outcome.result.ok && !outcome.conflicts.isEmpty())
        ctx.err << "Mit --mine bleibt bei jedem Konflikt diese Welt, mit --theirs gilt die Datei.\n";
    return finish(ctx, outcome.result);
}

int changes(Context &ctx)
{
    const QString sub = ctx.args.isEmpty() ? QString() : ctx.args.takeFirst();
    if (sub == QLatin1String("export"))
        return exportchanges(ctx);
    if (sub == QLatin1String("show"))
        return show(ctx);
    if (sub == QLatin1String("apply"))
        return apply(ctx);
    return ctx.fail(QStringLiteral("»changes« braucht export, show oder apply; »zorbo-cli --help« zeigt den Aufruf."));
}

const bool registered =
    registerCommand({QStringLiteral("diff"), QStringLiteral("[--json] ANDERE | 1_tm.cfg 1_sp.cfg"),
                     QStringLiteral("vergleicht die Welt mit einer anderen Welt (zorbo.mdb oder ihr Ordner) oder mit den "
                                    "Spieldateien, ohne etwas zu ändern"),
                     diff})
    && registerCommand({QStringLiteral("changes"),
                        QStringLiteral("export [--since SCHRITT | --against ANDERE] [--description TEXT] DATEI | show [--json] "
                                       "DATEI | apply DATEI [--mine | --theirs]"),
                        QStringLiteral("schreibt Änderungen als Änderungsdatei (.zae), zeigt eine mit ihren Konflikten oder "
                                       "wendet sie an"),
                        changes});

} // namespace

} // namespace zorbo::cli
