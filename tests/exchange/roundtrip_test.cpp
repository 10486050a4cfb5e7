#include "core/market.h"
#include "exchange/competitiontemplate.h"
#include "exchange/configruns.h"
#include "exchange/playerconfig.h"
#include "exchange/teamconfigwriter.h"
#include "platform/codepage.h"
#include "support/qstringprint.h"
#include "worldfixture.h"

using namespace zorbo;
using namespace zorbo::test;

namespace {

QString example(const char *name)
{
    return QStringLiteral(ZORBO_EXAMPLES "/beispielwelt/") + QLatin1String(name);
}

struct Exported {
    QByteArray teams, players;
};

Exported exportBoth(Database &db, const TestDb &where, const QString &tag)
{
    const ExchangeResult t = exportvereine(db, where.file(tag + "_tm.cfg"));
    const ExchangeResult p = exportspieler(db, where.file(tag + "_sp.cfg"));
    EXPECT_TRUE(t.ok()) << t.result.message.toStdString();
    EXPECT_TRUE(p.ok()) << p.result.message.toStdString();
    EXPECT_TRUE(t.findings.isEmpty()) << findinglines(t.findings).join('\n').toStdString();
    return {readBytes(where.file(tag + "_tm.cfg")), readBytes(where.file(tag + "_sp.cfg"))};
}

void importBoth(Database &db, const QString &teams, const QString &players)
{
    const ExchangeResult t = importteamsrun(db, teams);
    ASSERT_TRUE(t.ok()) << t.result.message.toStdString();
    EXPECT_FALSE(t.marketCreated);
    const ExchangeResult p = importplayersrun(db, players);
    ASSERT_TRUE(p.ok()) << p.result.message.toStdString();
    EXPECT_TRUE(p.findings.isEmpty()) << findinglines(p.findings).join('\n').toStdString();
}

} // namespace

TEST(RoundTrip, SampleWorldReadsAndWritesBackByteForByte)
{
    TestDb t;
    importBoth(*t, example("1_tm.cfg"), example("1_sp.cfg"));
    EXPECT_EQ(t->scalar("SELECT NAME FROM vereine WHERE NUMMER = 11").toString(), "SV Weißenfels-Süd");
    const QString world = dumpWorld(*t);
    const Exported out = exportBoth(*t, t, "out");
    EXPECT_EQ(withoutDate(out.teams), withoutDate(readBytes(example("1_tm.cfg"))));
    EXPECT_EQ(withoutDate(out.players), withoutDate(readBytes(example("1_sp.cfg"))));

    TestDb again;
    importBoth(*again, t.file("out_tm.cfg"), t.file("out_sp.cfg"));
    EXPECT_EQ(dumpWorld(*again), world);
}

TEST(RoundTrip, GeneratedWorldSurvivesExportImportExport)
{
    TestDb t;
    ASSERT_TRUE(tempvereine(*t).ok());
    ensuretransfermarket(*t);
    // Texts and numbers the generator alone would not give.
    t->exec("UPDATE spieler SET NAME = 'Spieler \"' || NUMMER || '\" Müßig', LIEBLINGSPOS_X = NUMMER % 7 * 0.25 - .5, "
            "ERLERNT = '1,' || (NUMMER % 53) WHERE NUMMER % 3 = 0");
    t->exec("UPDATE vereine SET STAERKE = NUMMER % 11 / 2.0, STADT = 'Groß \"Ü\" ' || NUMMER WHERE NUMMER % 4 = 1");
    // Every printable character of the code page, in a player's and a club's text.
    QByteArray page;
    for (int b = 0x20; b < 0x100; ++b)
        page += char(b);
    t->run("UPDATE spieler SET VORNAME = ?1 WHERE NUMMER = (SELECT min(NUMMER) FROM spieler)", fromCp1252(page));
    t->run("UPDATE vereine SET STADT = ?1 WHERE NUMMER = (SELECT max(NUMMER) FROM vereine)", fromCp1252(page));
    // The reader stores empty text in every SPIELER column, the market's too.
    t->exec("UPDATE vereine SET SPIELER = '' WHERE NUMMER = 0");
    const QString world = dumpWorld(*t);
    const Exported first = exportBoth(*t, t, "first");
    EXPECT_TRUE(first.players.contains(page));
    EXPECT_TRUE(first.teams.contains(page));

    TestDb back;
    importBoth(*back, t.file("first_tm.cfg"), t.file("first_sp.cfg"));
    EXPECT_EQ(dumpWorld(*back), world);
    const Exported second = exportBoth(*back, back, "second");
    EXPECT_EQ(withoutDate(second.teams), withoutDate(first.teams));
    EXPECT_EQ(withoutDate(second.players), withoutDate(first.players));
}
