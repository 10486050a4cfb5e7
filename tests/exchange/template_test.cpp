#include "exchange/competitiontemplate.h"
#include "exchange/configruns.h"
#include "exchange/teamconfigwriter.h"
#include "support/qstringprint.h"
#include "worldfixture.h"

using namespace zorbo;
using namespace zorbo::test;

namespace {

void leaguesOnly(Database &db, const QString &rows)
{
    db.exec("DELETE FROM e_landkontinent");
    db.exec("INSERT INTO e_landkontinent VALUES " + rows);
}

} // namespace

TEST(Template, WorkedExampleByteForByte)
{
    TestDb t;
    leaguesOnly(*t, "(1, 'Musterland', 'West-Europa', 12, 4, 'CL,UEFA'), (2, 'Ohneliga', 'Asien', 7, 0, 'CL')");
    t->exec("INSERT INTO vereine_national (NUMMER, NAME) VALUES (45, 'Musterland')");
    // A fifth club beyond the league's four, and one of another country.
    for (int n : {505, 503, 501, 504, 502})
        t->run("INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (?1, 'x', 'Musterland')", n);
    t->exec("INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (500, 'x', 'Anderland')");
    const ExchangeResult r = templiga(*t, t.file("1_we.cfg"));
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    EXPECT_EQ(readBytes(t.file("1_we.cfg")), readBytes(dataPath("we_cfg/worked-example/1_we.cfg")));

    t->exec("DELETE FROM vereine WHERE NUMMER IN (504, 505)");
    const ExchangeResult few = templiga(*t, t.file("neu.cfg"));
    EXPECT_FALSE(few.ok());
    EXPECT_TRUE(few.result.message.contains("Musterland hat nur 3 Vereine")) << few.result.message.toStdString();
    EXPECT_FALSE(QFile::exists(t.file("neu.cfg")));
}

TEST(Template, GeneratedLeaguesFillTheFileAndExportReadsBack)
{
    TestDb t;
    leaguesOnly(*t, "(1, 'Groß Ländle', 'West-Europa', 3, 2, 'CL,CLQ,UI'), (2, 'Nirgendwo', 'Asien', 9, 3, ''), "
                    "(3, 'Leer', 'Asien', 5, 0, '')");
    t->exec("INSERT INTO vereine_national (NUMMER, NAME) VALUES (1, 'groß ländle')");
    const ExchangeResult made = tempvereine(*t);
    ASSERT_TRUE(made.ok()) << made.result.message.toStdString();
    EXPECT_EQ(made.teams, 5);
    EXPECT_EQ(made.players, 100);
    EXPECT_EQ(made.nationalTeams, 2) << "the small-letter spelling is another country";
    EXPECT_EQ(t->scalar("SELECT group_concat(NUMMER || ':' || NAME || ':' || NATION, ' ') FROM vereine").toString(),
              "3:3001:Groß Ländle 4:3002:Groß Ländle 6:9001:Nirgendwo 7:9002:Nirgendwo 8:9003:Nirgendwo");
    EXPECT_EQ(t->scalar("SELECT group_concat(KONTINENT, ' ') FROM vereine_national ORDER BY NUMMER").toString(),
              "West-Europa Asien");
    EXPECT_EQ(t->scalar("SELECT count(*) FROM vereinspieler WHERE verein = 8").toInt(), 20);

    ASSERT_TRUE(templiga(*t, t.file("1_we.cfg")).ok());
    const QByteArray we = readBytes(t.file("1_we.cfg"));
    EXPECT_TRUE(we.contains("\tQUALI_FUER                         CL,CLQ,UI\r\n"));
    EXPECT_TRUE(we.contains("\tSTARTTEILNEHMER                    6,7,8\r\n"));
    EXPECT_TRUE(we.contains("\tNAME                               \"Liga Gro\xdf L\xe4ndle\"\r\n"));
    EXPECT_TRUE(we.endsWith("\r\n\r\nUI-1 \r\nUQ-1 \r\nU-1 \r\nCQ1 4,\r\nC1 3,\r\n")) << we.right(60).toStdString();

    // Countries made here hold empty text where the old program left Null,
    // so the export of the whole world reads back.
    t->exec("DELETE FROM vereine_national WHERE NUMMER = 1"); // made by hand above, mostly Null
    const ExchangeResult out = exportvereine(*t, t.file("1_tm.cfg"));
    ASSERT_TRUE(out.ok());
    EXPECT_TRUE(out.findings.isEmpty()) << findinglines(out.findings).join('\n').toStdString();
    TestDb back;
    const ExchangeResult in = importteamsrun(*back, t.file("1_tm.cfg"));
    ASSERT_TRUE(in.ok()) << in.result.message.toStdString();
    EXPECT_EQ(in.nationalTeams, 2);
    EXPECT_EQ(in.teams, 5);
}
