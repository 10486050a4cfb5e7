// The self-check of the game's files and crests made from pictures.
#include "cli/command.h"
#include "core/gamefiles.h"
#include "exchange/cfgcheck.h"
#include "core/fieldcheck.h"
#include "resources/crestcheck.h"
#include "resources/crestfiles.h"
#include "resources/crestpicture.h"

#include <QDir>
#include <QFileInfo>

namespace zorbo::cli {

namespace {

int selfcheckcommand(Context &ctx)
{
    if (ctx.args.size() > 1)
        return ctx.fail(QStringLiteral("Falsche Zahl von Argumenten; »zorbo-cli --help« zeigt den Aufruf."));
    const QString folder = ctx.args.isEmpty() ? QString() : QFileInfo(ctx.args.first()).absoluteFilePath();
    const SelfCheckReport report = selfcheck(ctx.settings(), folder, configchecks() << crestcheck(),
                                             ctx.progress(QStringLiteral("Prüfe Spieldateien")));
    if (!report.result.ok)
        return ctx.fail(QStringLiteral("Fehler: ") + report.result.message);
    for (const FileDifference &d : report.differences) {
        ctx.out << d.place() << ": Spiel »" << d.game << "«, Editor »" << d.ours << "«";
        if (!d.reason.isEmpty())
            ctx.out << " – " << d.reason;
        ctx.out << '\n';
    }
    if (report.more > 0)
        ctx.out << QStringLiteral("… und %1 weitere Unterschiede.").arg(report.more) << '\n';
    ctx.out << report.result.message << '\n';
    return report.differences.isEmpty() ? 0 : 1;
}

// "crest-from-picture PICTURE NUMBER [--crop] [--team NR]" or, for a folder
// of pictures named by club number or name, "crest-from-picture FOLDER [--crop]".
int crestfrompicturecommand(Context &ctx)
{
    CrestPictureOptions options;
    if (ctx.args.removeAll(QStringLiteral("--crop")) > 0)
        options.fit = CrestFit::Crop;
    const QString teamText = ctx.takeOption(QStringLiteral("--team"));
    if (ctx.args.isEmpty() || ctx.args.size() > 2)
        return ctx.fail(QStringLiteral("Falsche Zahl von Argumenten; »zorbo-cli --help« zeigt den Aufruf."));
    const QString source = QFileInfo(ctx.args.first()).absoluteFilePath();
    const QString wappen = ctx.settings().folder(WappenFolder);

    if (QFileInfo(source).isDir()) {
        if (ctx.args.size() != 1 || !teamText.isEmpty())
            return ctx.fail(QStringLiteral("Ein Ordner von Bildern braucht keine Wappennummer: die Bilder heißen nach "
                                           "Nummer oder Name ihres Vereins."));
        const std::unique_ptr<World> world = ctx.openexistingworld();
        if (!world)
            return 1;
        QList<PictureRunLine> lines;
        const Result r = world->run(
            [&](Database &db) {
                lines = crestsfrompictures(db, picturetargets(db, source, wappen), wappen, options,
                                           ctx.progress(QStringLiteral("Wandle Bilder um")));
                return Result::success();
            },
            {}, Step{QStringLiteral("Wappen aus den Bildern von %1").arg(QDir::toNativeSeparators(source))});
        if (!r.ok)
            return ctx.fail(QStringLiteral("Fehler: ") + r.message);
        int done = 0;
        for (const PictureRunLine &l : std::as_const(lines)) {
            ctx.out << l.picture << ": " << l.text << '\n';
            done += l.done;
        }
        ctx.out << QStringLiteral("%1 von %2 Bildern als Wappen geschrieben.").arg(done).arg(lines.size()) << '\n';
        return done == lines.size() ? 0 : 1;
    }

    if (ctx.args.size() != 2)
        return ctx.fail(QStringLiteral("crest-from-picture braucht ein Bild und eine Wappennummer."));
    const std::optional<qint64> number = parsewholenumber(ctx.args.at(1));
    if (!number || *number < 0 || *number >= CrestCount)
        return ctx.fail(QStringLiteral("Die Wappennummer muss eine ganze Zahl von 0 bis %1 sein, nicht »%2«.")
                            .arg(CrestCount - 1)
                            .arg(ctx.args.at(1)));
    QImage picture;
    if (Result r = loadpicture(source, picture); !r)
        return ctx.fail(QStringLiteral("Fehler: ") + r.message);
    const QImage crest = crestpicture(picture, options);
    const QString file = QFileInfo(crestfile(wappen, int(*number))).fileName();
    QString kept;
    if (teamText.isEmpty()) {
        if (Result r = writecrest(wappen, int(*number), crest, &kept); !r)
            return ctx.fail(QStringLiteral("Fehler: ") + r.message);
        ctx.out << QStringLiteral("%1 aus %2 geschrieben%3.").arg(file, QFileInfo(source).fileName(), keptwords(kept)) << '\n';
        return 0;
    }
    const std::optional<qint64> team = parsewholenumber(teamText);
    if (!team)
        return ctx.fail(QStringLiteral("--team braucht eine Vereinsnummer, nicht »%1«.").arg(teamText));
    const std::unique_ptr<World> world = ctx.openexistingworld();
    if (!world)
        return 1;
    // The club's crest number and the file in one step; the file is written
    // last, so a refused number leaves it as it was.
    const Result r = world->run(
        [&](Database &db) {
            if (!db.scalar(QStringLiteral("SELECT count(*) FROM (SELECT NUMMER FROM vereine WHERE NUMMER = ?1 UNION ALL "
                                          "SELECT NUMMER FROM vereine_national WHERE NUMMER = ?1)"),
                           *team)
                     .toInt())
                return Result::failure(QStringLiteral("Es gibt kein Team mit der Nummer %1.").arg(*team));
            setcrestnumber(db, *team, int(*number));
            if (Result w = writecrest(wappen, int(*number), crest, &kept); !w)
                return w;
            return Result::success(QStringLiteral("%1 aus %2 geschrieben%5; Team %3 trägt Wappen %4.")
                                       .arg(file, QFileInfo(source).fileName())
                                       .arg(*team)
                                       .arg(*number)
                                       .arg(keptwords(kept)));
        },
        {}, Step{QStringLiteral("Wappen %1 aus Bild %2 (%3 geschrieben)").arg(*number).arg(QFileInfo(source).fileName(), file)});
    return finish(ctx, r);
}

const bool registered =
    registerCommand({QStringLiteral("selfcheck"), QStringLiteral("[SPIELORDNER]"),
                     QStringLiteral("liest 1_tm.cfg, 1_sp.cfg und wa.res in eine Probewelt, schreibt sie zurück und "
                                    "vergleicht Byte für Byte (ohne Ordner: die Ordner der Einstellungen)"),
                     selfcheckcommand})
    && registerCommand({QStringLiteral("crest-from-picture"), QStringLiteral("BILD NUMMER [--crop] [--team NR] | ORDNER [--crop]"),
                        QStringLiteral("macht aus einem Bild (PNG, JPEG, BMP, GIF, WebP) das Wappen NUMMER; ein Ordner "
                                       "von Bildern, benannt nach Nummer oder Name ihres Vereins, wird in einem Lauf "
                                       "umgewandelt"),
                        crestfrompicturecommand});

} // namespace

} // namespace zorbo::cli
