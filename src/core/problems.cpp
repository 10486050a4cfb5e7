#include "core/problems.h"

#include "core/problemsink.h"

#include <algorithm>

namespace zorbo {

using detail::ProblemSink;

namespace {

// The club a player's line opens: his first squad.
void placeplayers(Database &db, ProblemSink &sink)
{
    const auto key = [&](qint64 team) {
        return (sink.countries.contains(team) ? QStringLiteral("L") : QStringLiteral("T")) + QString::number(team);
    };
    QHash<qint64, qint64> clubOf;
    const bool players = std::any_of(sink.problems.begin(), sink.problems.end(), [](const Problem &p) { return p.where.player >= 0; });
    if (players) {
        Statement squads = db.prepare(QStringLiteral("SELECT spieler, verein FROM kaderzeilen ORDER BY rowid DESC"));
        while (squads.step())
            clubOf.insert(squads.integer(0), squads.integer(1));
    }
    for (Problem &p : sink.problems) {
        if (p.where.player >= 0) {
            const auto club = clubOf.constFind(p.where.player);
            if (club != clubOf.constEnd())
                p.teamKey = key(*club);
        } else if (p.where.team >= 0) {
            p.teamKey = key(p.where.team);
        }
    }
}

QString counted(int n, const char *one, const char *many)
{
    return QString::number(n) + QLatin1Char(' ') + QString::fromUtf8(n == 1 ? one : many);
}

} // namespace

bool iswarning(ProblemKind kind)
{
    return kind == ProblemKind::SquadSize || kind == ProblemKind::NoGoalkeeper || kind == ProblemKind::CrestDefault
           || kind == ProblemKind::PlayerWithoutCountry
           || kind == ProblemKind::OutsideWindow;
}

QString problemheading(ProblemKind kind)
{
    switch (kind) {
    case ProblemKind::LongClubName: return QStringLiteral("Vereinsnamen über 15 Zeichen");
    case ProblemKind::RepeatedSquadNumber: return QStringLiteral("Doppelte Rückennummern");
    case ProblemKind::NotCp1252: return QStringLiteral("Zeichen außerhalb von Codepage 1252");
    case ProblemKind::BadColour: return QStringLiteral("Unlesbare Trikotfarben");
    case ProblemKind::KitOutsideSet: return QStringLiteral("Trikots außerhalb des Trikotsatzes");
    case ProblemKind::CrestMissing: return QStringLiteral("Wappen ohne Datei");
    case ProblemKind::FaceMissing: return QStringLiteral("Gesichter ohne Bilder");
    case ProblemKind::TalentOutside: return QStringLiteral("Talente außerhalb von 0 bis 52");
    case ProblemKind::NullColumn: return QStringLiteral("Leere Spalten in Teams");
    case ProblemKind::NumberTooLarge: return QStringLiteral("Nummern, die die Spieldateien nicht fassen");
    case ProblemKind::PlayerInNoClub: return QStringLiteral("Spieler ohne Verein");
    case ProblemKind::SquadRowWithoutPlayer: return QStringLiteral("Kaderzeilen ohne Spieler");
    case ProblemKind::PlayerInTwoClubs: return QStringLiteral("Spieler in mehreren Vereinen");
    case ProblemKind::TeamWithoutName: return QStringLiteral("Teams ohne Namen");
    case ProblemKind::ClubWithoutCountry: return QStringLiteral("Vereine ohne Land");
    case ProblemKind::CountryWithoutContinent: return QStringLiteral("Länder ohne Kontinent");
    case ProblemKind::SquadSize: return QStringLiteral("Warnung: Kader nicht mit 20 Spielern");
    case ProblemKind::NoGoalkeeper: return QStringLiteral("Warnung: Kader ohne Torwart");
    case ProblemKind::CrestDefault: return QStringLiteral("Warnung: Wappen ohne Datei, das Standardwappen wird gezeigt");
    case ProblemKind::PlayerWithoutCountry: return QStringLiteral("Warnung: Spieler ohne Land");
    case ProblemKind::OutsideWindow: return QStringLiteral("Warnung: Werte außerhalb der Fensterbereiche");
    }
    return {};
}

int ProblemReport::errors() const
{
    return int(std::count_if(problems.begin(), problems.end(), [](const Problem &p) { return !iswarning(p.kind); }));
}

int ProblemReport::warnings() const
{
    return int(problems.size()) - errors();
}

ProblemReport checkproblems(Database &db, const Settings &settings, const Progress &progress)
{
    ProblemReport report;
    ProblemSink sink;
    constexpr int steps = 4;
    zorbo::report(progress, 0, steps);
    detail::checkteamrows(db, settings, sink);
    zorbo::report(progress, 1, steps);
    detail::checkplayerrows(db, settings, sink);
    zorbo::report(progress, 2, steps);
    detail::checksquads(db, sink);
    detail::checkwindowranges(db, sink);
    zorbo::report(progress, 3, steps);
    placeplayers(db, sink);
    std::stable_sort(sink.problems.begin(), sink.problems.end(),
                     [](const Problem &a, const Problem &b) { return a.kind < b.kind; });
    report.problems = std::move(sink.problems);
    zorbo::report(progress, steps, steps);
    report.result = Result::success(report.problems.isEmpty()
                                        ? QStringLiteral("Keine Probleme gefunden.")
                                        : QStringLiteral("%1, %2.").arg(counted(report.errors(), "Problem", "Probleme"),
                                                                                   counted(report.warnings(), "Warnung", "Warnungen")));
    return report;
}

QStringList problemlines(const ProblemReport &report)
{
    QStringList lines;
    for (qsizetype i = 0; i < report.problems.size(); ++i) {
        const Problem &p = report.problems[i];
        if (i == 0 || report.problems[i - 1].kind != p.kind)
            lines << problemheading(p.kind) + QLatin1Char(':');
        lines << QStringLiteral("  ") + p.where.toString();
    }
    lines << report.result.message;
    return lines;
}

} // namespace zorbo
