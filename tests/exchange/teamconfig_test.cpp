#include "exchange/configruns.h"
#include "exchange/teamconfigreader.h"
#include "exchange/teamconfigwriter.h"
#include "worldfixture.h"

#include <QDir>

using namespace zorbo;
using namespace zorbo::test;

namespace {

void insertRow(Database &db, const QString &table, const QVariantList &values)
{
    QStringList marks;
    for (int i = 0; i < values.size(); ++i)
        marks << QStringLiteral("?");
    Statement st = db.prepare(QStringLiteral("INSERT INTO %1 VALUES (%2)").arg(table, marks.join(',')));
    for (int i = 0; i < values.size(); ++i)
        st.bind(i + 1, values[i]);
    st.exec();
}

QVariantList colours(const QStringList &twelve)
{
    QVariantList l;
    for (const QString &c : twelve)
        l << c;
    return l;
}

// The world of tests/data/tm_cfg/worked-example: the market in its short
// form, a full club, a club with umlauts, quotes, decimals and no squad, and
// a national team.
void buildWorkedExample(Database &db)
{
    const QVariant null;
    insertRow(db, "vereine", QVariantList{0, "TRANSFERMARKT", null, 999} + QVariantList(24, null));
    QStringList c1 = QStringList(4, "255,255,255") + QStringList(4, " 48, 48, 48") + QStringList(4, " 24,181,220");
    insertRow(db, "vereine", QVariantList{1203, "SV Beispiel", "Beispiel", 412, 6.0, 3.0, "", "Waldstadion", "Musterstadt",
                                          "Deutschland", 12000, 8000, 3, 70, 10, 0} + colours(c1));
    insertRow(db, "vereine", QVariantList{1204, "FC \"Ölkännchen\" Straße", "Ölkännchen", 0, 0.5, 12.25, null, "",
                                          "Groß Ütze", "Deutschland", 0, -1, 0, 70, 10, 0} + colours(QStringList(12, "  0,  0,  0")));
    insertRow(db, "vereine_national", QVariantList{45, "Deutschland", "Deutschland", 292, 0.0, 0.0, "", "Deutschland", "Berlin",
                                                   "99,121,700", "Deutschland", "West-Europa", 8000, 3000, 16, 62, 58, 0}
                                          + colours(QStringList(12, "144, 32, 56")) + QVariantList{"", ""});
    for (auto [team, player] : {std::pair{0, 5000}, {0, 5001}, {1203, 7001}, {1203, 7002}, {1203, 7003}, {45, 7002}, {45, 7003}})
        insertRow(db, "vereinspieler", {team, player});
}

} // namespace

TEST(TeamConfig, WriterGivesTheWorkedExampleByteForByte)
{
    TestDb t;
    buildWorkedExample(*t);
    // A squad row of no team belongs to none, not to the market (team 0).
    t->exec("INSERT INTO kaderzeilen (verein, spieler) VALUES (NULL, 9999)");
    const ExchangeResult r = exportvereine(*t, t.file("1_tm.cfg"), {}, exportTime());
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    EXPECT_EQ(readBytes(t.file("1_tm.cfg")), readBytes(dataPath("tm_cfg/worked-example/1_tm.cfg")));
    EXPECT_EQ(r.teams, 3);
    EXPECT_EQ(r.nationalTeams, 1);
    EXPECT_TRUE(r.findings.isEmpty()) << findinglines(r.findings).join('\n').toStdString();
    EXPECT_EQ(tm_player(*t, 1204), "        SPIELER");
    EXPECT_EQ(tm_player(*t, 1203), "        SPIELER                  \"7001,7002,7003\"");
}

TEST(TeamConfig, ReaderStoresTheWorkedExampleAsItWasWritten)
{
    TestDb source;
    buildWorkedExample(*source);
    // The reader stores empty text in SPIELER, also for the short form; it
    // refuses negative standing places, which the writer puts out as stored.
    source->exec("UPDATE vereine SET SPIELER = '', STADION_STEHPL = 1 WHERE STADION_STEHPL = -1");
    source->exec("UPDATE vereine SET SPIELER = ''");
    TestDb t;
    // Whatever NATIONALTEAM holds in the file, the column gets empty text.
    QByteArray file = readBytes(dataPath("tm_cfg/worked-example/1_tm.cfg"));
    file.replace("NATIONALTEAM             \"\"", "NATIONALTEAM             \"Elf\"");
    ASSERT_TRUE(file.contains("\"Elf\""));
    file.replace("STADION_STEHPL           -1\r", "STADION_STEHPL           1\r");
    writeBytes(t.file("1_tm.cfg"), file);
    const ExchangeResult r = importteamsrun(*t, t.file("1_tm.cfg"));
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    EXPECT_FALSE(r.marketCreated);
    EXPECT_EQ(r.squadRows, 7);
    EXPECT_EQ(dumpWorld(*t), dumpWorld(*source));
}

TEST(TeamConfig, ReaderKeepsTheFileRules)
{
    // LF line ends, comments and stray lines outside records, tabs between
    // keyword and value, a national team's NATIONALTEAM thrown away, a team
    // number beyond 16 bits, the last record at the very end of the file
    // without a line end, a record dropped for a missing empty line, and
    // decimals in whole-number columns rounded half to even as the old
    // database engine converted them.
    QByteArray file = ";Kommentar\nINFOTEXT \"x\"\nirgendwas\n\nNEUES_TEAM\n  NUMMER 1\n NAME \"Erster\"\n"
                      "GRAFIK_NR 4.5\nSPIELER\n\n\n\nNEUES_TEAM\nNUMMER 2\nNAME \"weg\"\nGRAFIK_NR 1\nSPIELER\n"
                      "NEUES_TEAM\nNUMMER\t70000\nNAME\t\t\"Dritter\"\t\nGRAFIK_NR\t\t7.5\nSPIELER \"100000, 100001\"";
    TestDb t;
    writeBytes(t.file("a.cfg"), file);
    const ExchangeResult r = importvereine(*t, t.file("a.cfg"));
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    EXPECT_EQ(r.teams, 2);
    ASSERT_EQ(r.findings.size(), 1);
    EXPECT_TRUE(r.findings[0].toString().startsWith(QDir::toNativeSeparators(t.file("a.cfg")) + ", Zeile 13: der Datensatz"))
        << r.findings[0].toString().toStdString();
    EXPECT_EQ(t->scalar("SELECT group_concat(NUMMER || '=' || NAME || '/' || GRAFIK_NR, ' ') FROM vereine").toString(),
              "1=Erster/4 70000=Dritter/8");
    EXPECT_EQ(t->scalar("SELECT group_concat(verein || ':' || spieler, ' ') FROM vereinspieler").toString(),
              "70000:100000 70000:100001");
}

TEST(TeamConfig, BareSquadLineLeavesTheSquadAloneAndLaterRecordReplaces)
{
    // The world's rows before the file count for nothing: the file's
    // records replace them all.
    TestDb t;
    insertRow(*t, "vereinspieler", {2, 22});
    writeBytes(t.file("a.cfg"), "NEUES_TEAM\r\nNUMMER 1\r\nNAME \"A\"\r\nGRAFIK_NR 1\r\nSPIELER \"11,12\"\r\n\r\n"
                                "NEUES_TEAM\r\nNUMMER 1\r\nNAME \"B\"\r\nGRAFIK_NR 2\r\nSPIELER\r\n");
    const ExchangeResult r = importvereine(*t, t.file("a.cfg"));
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    EXPECT_EQ(t->scalar("SELECT NAME FROM vereine").toString(), "B");
    EXPECT_EQ(t->scalar("SELECT group_concat(verein || ':' || spieler, ' ') FROM vereinspieler").toString(), "1:11 1:12");
    ASSERT_EQ(r.findings.size(), 1);
    EXPECT_EQ(r.findings[0].line, 7);
    EXPECT_EQ(r.findings[0].team, 1);
}

TEST(TeamConfig, WriterWarnsOfRecordsThatCannotBeReadBack)
{
    TestDb t;
    insertRow(*t, "vereine", QVariantList{7, "Halb", QVariant(), 1} + QVariantList(24, 0));
    const ExchangeResult r = exportvereine(*t, t.file("1_tm.cfg"), {}, exportTime());
    ASSERT_TRUE(r.ok());
    ASSERT_EQ(r.findings.size(), 1);
    EXPECT_EQ(r.findings[0].team, 7);
    EXPECT_TRUE(r.findings[0].text.contains("KURZNAME")) << r.findings[0].text.toStdString();

    t->exec("UPDATE vereine SET KURZNAME = 'Ω'");
    const ExchangeResult bad = exportvereine(*t, t.file("1_tm.cfg"), {}, exportTime());
    EXPECT_FALSE(bad.ok());
    EXPECT_TRUE(bad.result.message.contains("Verein 7, Feld KURZNAME")) << bad.result.message.toStdString();
}

TEST(TeamConfig, RecordsOfOneToThreeLinesTakeTheShortList)
{
    // The lines a short record reaches are stored, the columns behind stay
    // empty; a record without a single line is no record.
    TestDb t;
    writeBytes(t.file("a.cfg"), "NEUES_TEAM\r\nNUMMER 5\r\n\r\n"
                                "NEUES_TEAM\r\nNUMMER 6\r\nNAME \"Zwei\"\r\n\r\n"
                                "NEUES_TEAM\r\nNUMMER 7\r\nNAME \"Drei\"\r\nGRAFIK_NR 12\r\n");
    const ExchangeResult r = importvereine(*t, t.file("a.cfg"));
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    EXPECT_EQ(r.teams, 3);
    EXPECT_EQ(t->scalar("SELECT group_concat(NUMMER || '=' || coalesce(NAME, '-') || '/' || coalesce(GRAFIK_NR, '-') || '/'"
                        " || coalesce(SPIELER, '-') || '/' || coalesce(KURZNAME, '-'), ' ') FROM vereine")
                  .toString(),
              "5=-/-/-/- 6=Zwei/-/-/- 7=Drei/12/-/-");

    writeBytes(t.file("b.cfg"), "NEUES_TEAM\r\nNUMMER 5\r\n\r\nNEUES_TEAM\r\n\r\n");
    const ExchangeResult none = importvereine(*t, t.file("b.cfg"));
    EXPECT_FALSE(none.ok());
    EXPECT_TRUE(none.result.message.contains("Zeile 4: der Datensatz hat 0 Zeilen")) << none.result.message.toStdString();
}
