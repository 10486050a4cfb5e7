// The problem check finds one problem of each kind where it lies, and
// nothing in a sound world.
#include "core/problems.h"
#include "support/problemworld.h"
#include "support/testsupport.h"

#include <gtest/gtest.h>

using namespace zorbo;
using namespace zorbo::test;

namespace {

struct Seen {
    ProblemKind kind;
    qint64 team;
    qint64 player;
    QString teamKey;
    bool operator==(const Seen &) const = default;
};

std::ostream &operator<<(std::ostream &os, const Seen &s)
{
    return os << "kind " << int(s.kind) << " team " << s.team << " player " << s.player << " key "
              << s.teamKey.toStdString();
}

} // namespace

TEST(Problems, SoundWorldHasNone)
{
    NewWorld w;
    const Settings settings = makecleanworld(w.db(), w.dir.path());
    const ProblemReport report = checkproblems(w.db(), settings);
    ASSERT_TRUE(report.result.ok);
    EXPECT_EQ(problemlines(report), QStringList{"Keine Probleme gefunden."});
}

TEST(Problems, EachKindIsFoundWhereItLies)
{
    NewWorld w;
    const Settings settings = makecleanworld(w.db(), w.dir.path());
    addeveryproblem(w.db());
    const ProblemReport report = checkproblems(w.db(), settings);
    ASSERT_TRUE(report.result.ok);

    QList<Seen> seen;
    for (const Problem &p : report.problems)
        seen.append({p.kind, p.where.team, p.where.player, p.teamKey});
    using K = ProblemKind;
    const QList<Seen> expected = {
        {K::LongClubName, 10, -1, "T10"},        {K::RepeatedSquadNumber, 10, -1, "T10"},
        {K::NotCp1252, -1, 102, "T10"},          {K::BadColour, 10, -1, "T10"},
        {K::KitOutsideSet, 10, -1, "T10"},       {K::CrestMissing, 1, -1, "L1"},
        {K::FaceMissing, -1, 103, "T10"},        {K::TalentOutside, -1, 104, "T10"},
        {K::NullColumn, 1, -1, "L1"},            {K::NumberTooLarge, -1, 3000000000, "T0"},
        {K::PlayerInNoClub, -1, 200, ""},        {K::SquadRowWithoutPlayer, 0, -1, "T0"},
        {K::PlayerInTwoClubs, -1, 105, "T10"},   {K::ClubWithoutCountry, 20, -1, "T20"},
        {K::CountryWithoutContinent, 2, -1, "L2"}, {K::SquadSize, 20, -1, "T20"},
        {K::NoGoalkeeper, 20, -1, "T20"},
    };
    EXPECT_EQ(seen, expected);
    EXPECT_EQ(report.errors(), 15);
    EXPECT_EQ(report.warnings(), 2);

    // The lines name the field and what is wrong, under the group's heading.
    const QStringList lines = problemlines(report);
    EXPECT_TRUE(lines.contains("Leere Spalten in Teams:"));
    const QString all = lines.join('\n');
    EXPECT_TRUE(all.contains("Spieler 102, Feld NAME:")) << all.toStdString();
    EXPECT_TRUE(all.contains("Team 1, Feld STADT:")) << all.toStdString();
    EXPECT_TRUE(all.contains("Feld F_HOSE_SPIELER: Verein „FC Test Langername“: die Farbe „255,0“"));
    EXPECT_TRUE(all.contains("die Rückennummer 1 tragen die Spieler 100, 101"));
    EXPECT_EQ(lines.last(), "15 Probleme, 2 Warnungen.");
}

TEST(Problems, TeamsWithoutNameAndPlayersWithoutCountryAreListed)
{
    NewWorld w;
    const Settings settings = makecleanworld(w.db(), w.dir.path());
    w.db().run("UPDATE vereine_national SET NAME = '' WHERE NUMMER = 1");
    w.db().run("UPDATE vereine SET NAME = ' ', NATION = '' WHERE NUMMER = 10");
    w.db().run("UPDATE spieler SET NATION = NULL WHERE NUMMER = 101");
    w.db().run("UPDATE spieler SET NATION = '' WHERE NUMMER = 102");
    const QStringList lines = problemlines(checkproblems(w.db(), settings));
    EXPECT_EQ(lines, (QStringList{"Teams ohne Namen:", "  Team 1, Feld NAME: Das Land hat keinen Namen",
                                  "  Team 10, Feld NAME: Der Verein hat keinen Namen",
                                  "Vereine ohne Land:", "  Team 10, Feld NATION: Verein „ “ hat kein Land",
                                  "Warnung: Spieler ohne Land:", "  Spieler 101, Feld NATION: Spieler „T. Müller“ hat kein Land",
                                  "  Spieler 102, Feld NATION: Spieler „T. Müller“ hat kein Land", "3 Probleme, 2 Warnungen."}));
}

TEST(Problems, OnlyTheMarketsThreeValuesMakeAShortRecord)
{
    NewWorld w;
    const Settings settings = makecleanworld(w.db(), w.dir.path());
    // Number, name and crest would go out as the short record; the country
    // beside them leaves out lines the reader needs.
    w.db().run("INSERT INTO vereine (NUMMER, NAME, GRAFIK_NR, NATION) VALUES (11, 'Kurz', 5, 'Deutschland')");
    const ProblemReport report = checkproblems(w.db(), settings);
    ASSERT_EQ(report.errors(), 1) << problemlines(report).join('\n').toStdString();
    EXPECT_EQ(report.problems[0].kind, ProblemKind::NullColumn);
    EXPECT_EQ(report.problems[0].where.team, 11);
    EXPECT_TRUE(report.problems[0].where.field.startsWith("KURZNAME, STAERKE")) << report.problems[0].where.field.toStdString();
}

TEST(Problems, ColourTextsAsTheKitReaderSplitsThem)
{
    NewWorld w;
    const Settings settings = makecleanworld(w.db(), w.dir.path());
    const QStringList readable = {"255,255,255", "  0,  0,  0", "\" 48, 48, 48\"", "1 ,2, 3"};
    const QStringList unreadable = {"1 2,3,4", "256,0,0", "1,2", "1,2,3,4", "a,b,c", "-1,0,0", "1,,3", ""};
    const QString columns[] = {"F_TRIKOT_SPIELER", "F_AUSW_TRIKOT_SPIELER", "F_ALTERN_TRIKOT_SPIELER", "F_HOSE_SPIELER",
                               "F_AUSW_HOSE_SPIELER", "F_ALTERN_HOSE_SPIELER", "F_TRIKOT_WERBUNG", "F_HOSE_STREIFEN",
                               "F_TRIKOT_TORWART", "F_HOSE_TORWART", "F_TRIKOT_TRAINER", "F_HOSE_TRAINER"};
    for (int i = 0; i < readable.size() + unreadable.size(); ++i)
        w.db().run(QString("UPDATE vereine SET %1 = ?1 WHERE NUMMER = 10").arg(columns[i % 12]),
                   i < readable.size() ? readable[i] : unreadable[i - readable.size()]);
    QStringList bad;
    for (const Problem &p : checkproblems(w.db(), settings).problems) {
        EXPECT_EQ(p.kind, ProblemKind::BadColour);
        bad << p.where.field;
    }
    EXPECT_EQ(bad, (QStringList{"F_AUSW_HOSE_SPIELER", "F_ALTERN_HOSE_SPIELER", "F_TRIKOT_WERBUNG", "F_HOSE_STREIFEN",
                                "F_TRIKOT_TORWART", "F_HOSE_TORWART", "F_TRIKOT_TRAINER", "F_HOSE_TRAINER"}));
}
