#include "exchange/formats.h"

#include "exchange/configruns.h"
#include "exchange/teamfile.h"
#include "exchange/teamfileopen.h"

#include <QFileInfo>

namespace zorbo {

namespace {

FormatRun fromexchange(const ExchangeResult &r)
{
    FormatRun run;
    run.result = r.result;
    run.findings = r.findings;
    run.looksUtf8 = r.looksUtf8;
    run.team = r.team;
    return run;
}

FileEncoding encoding(const FormatRequest &request)
{
    // A file in UTF-8 is read only when the user says so; otherwise it is
    // refused rather than taken with every umlaut as two characters.
    return request.utf8 ? FileEncoding::Utf8 : FileEncoding::Detect;
}

FileFormat configformat(ConfigKind kind)
{
    const bool teams = kind == ConfigKind::Teams;
    FileFormat f;
    f.key = teams ? QStringLiteral("vereine") : QStringLiteral("spieler");
    f.name = teams ? QStringLiteral("Zorbo Vereine (1_tm.cfg)") : QStringLiteral("Zorbo Spieler (1_sp.cfg)");
    f.pattern = QStringLiteral("*.cfg");
    f.readcommand = teams ? QStringLiteral("import-teams") : QStringLiteral("import-players");
    f.readusage = QStringLiteral("DATEI [--utf8]");
    f.readhelp = teams ? QStringLiteral("ersetzt Vereine, Nationalteams und Kader durch die einer 1_tm.cfg")
                       : QStringLiteral("ersetzt alle Spieler durch die einer 1_sp.cfg");
    f.writecommand = teams ? QStringLiteral("export-teams") : QStringLiteral("export-players");
    f.writeusage = QStringLiteral("DATEI [--force]");
    f.writehelp = teams ? QStringLiteral("schreibt Vereine, Nationalteams und Kader als 1_tm.cfg")
                        : QStringLiteral("schreibt alle Spieler als 1_sp.cfg");
    f.gamefile = true;
    f.reading = teams ? QStringLiteral("Importiere Vereine...") : QStringLiteral("Importiere Spieler...");
    f.writing = teams ? QStringLiteral("Exportiere Vereine...") : QStringLiteral("Exportiere Spieler...");
    f.read = [kind](const FormatPlace &place, const FormatRequest &request, const Progress &progress) {
        const QString file = QFileInfo(request.path).fileName();
        return fromexchange(place.world->run(
            [&](Database &db) { return importconfig(db, request.path, kind, progress, encoding(request)); }, {},
            Step{QStringLiteral("Config-Import %1").arg(file), QStringLiteral("Config-Import %1").arg(file), true}));
    };
    f.write = [kind](const FormatPlace &place, const FormatRequest &request, const Progress &progress) {
        return fromexchange(
            place.world->run([&](Database &db) { return exportconfig(db, request.path, kind, progress, request.nearest); }));
    };
    return f;
}

FileFormat teamfileformat()
{
    FileFormat f;
    f.key = QStringLiteral("teamdatei");
    f.name = QStringLiteral("Zorbo Editor Team");
    f.pattern = QStringLiteral("*.tea");
    f.readcommand = QStringLiteral("open-team");
    f.readusage = QStringLiteral("DATEI --new-in LAND|--replace NR [--utf8]");
    f.readhelp = QStringLiteral("übernimmt eine Teamdatei als neuen Verein oder über einen Verein");
    f.writecommand = QStringLiteral("save-team");
    f.writeusage = QStringLiteral("NUMMER DATEI");
    f.writehelp = QStringLiteral("speichert ein Team mit seinem Kader als Teamdatei (.tea)");
    f.reading = QStringLiteral("Übernehme Teamdatei...");
    f.writing = QStringLiteral("Speichere Verein...");
    // A club read from a team file is new in request.country, or replaces request.team.
    f.read = [](const FormatPlace &place, const FormatRequest &request, const Progress &progress) {
        const QString file = QFileInfo(request.path).fileName();
        const Step step = request.team >= 0
            ? Step{QStringLiteral("Teamdatei %1 über Team %2").arg(file).arg(request.team),
                   QStringLiteral("Teamdatei über Team %1").arg(request.team)}
            : Step{QStringLiteral("Teamdatei %1 als neuer Verein in %2").arg(file, request.country)};
        return fromexchange(place.world->run(
            [&](Database &db) {
                return request.team >= 0 ? openteamreplace(db, request.path, request.team, progress, encoding(request))
                                         : openteamnew(db, request.path, request.country, progress, encoding(request));
            },
            {}, step));
    };
    f.write = [](const FormatPlace &place, const FormatRequest &request, const Progress &progress) {
        return fromexchange(
            place.world->run([&](Database &db) { return exportverein(db, request.path, request.team, progress); }));
    };
    return f;
}

} // namespace

const QList<FileFormat> &exchangeformats()
{
    static const QList<FileFormat> formats = {configformat(ConfigKind::Teams), configformat(ConfigKind::Players),
                                              teamfileformat()};
    return formats;
}

const FileFormat *exchangeformat(const QString &key)
{
    return findformat(exchangeformats(), key);
}

} // namespace zorbo
