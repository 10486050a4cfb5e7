#include "exchange/configruns.h"
#include "exchange/teamfile.h"
#include "exchange/teamfileopen.h"
#include "platform/codepage.h"
#include "support/cli.h"
#include "support/qstringprint.h"
#include "worldfixture.h"

using namespace zorbo;
using namespace zorbo::test;

namespace {

QByteArray exampleAsUtf8(const char *name)
{
    return fromCp1252(readBytes(QStringLiteral(ZORBO_EXAMPLES "/beispielwelt/") + QString::fromUtf8(name))).toUtf8();
}

} // namespace

TEST(Encoding, Utf8GameFilesStopForAQuestionAndReadWhenToldSo)
{
    TestDb t;
    writeBytes(t.file("tm.cfg"), exampleAsUtf8("1_tm.cfg"));
    ExchangeResult r = importteamsrun(*t, t.file("tm.cfg"));
    EXPECT_FALSE(r.ok());
    EXPECT_TRUE(r.looksUtf8);
    EXPECT_TRUE(r.result.message.contains("UTF-8")) << r.result.message.toStdString();
    EXPECT_EQ(t->scalar("SELECT count(*) FROM vereine").toInt(), 0);

    r = importteamsrun(*t, t.file("tm.cfg"), {}, FileEncoding::Utf8);
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    EXPECT_EQ(t->scalar("SELECT NAME FROM vereine WHERE NUMMER = 11").toString(), "SV Weißenfels-Süd");

    // Told it is code page 1252 after all, the file is taken byte for byte.
    r = importteamsrun(*t, t.file("tm.cfg"), {}, FileEncoding::Cp1252);
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    EXPECT_EQ(t->scalar("SELECT NAME FROM vereine WHERE NUMMER = 11").toString(),
              fromCp1252(QStringLiteral("SV Weißenfels-Süd").toUtf8()));

    // A mark in front, and a character the game's files cannot hold.
    QByteArray players = "\xEF\xBB\xBF" + exampleAsUtf8("1_sp.cfg");
    writeBytes(t.file("sp.cfg"), players);
    r = importplayersrun(*t, t.file("sp.cfg"), {}, FileEncoding::Utf8);
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    EXPECT_EQ(t->scalar("SELECT NAME FROM spieler WHERE NUMMER = 100").toString(), "Groß");
    const QString before = dumpWorld(*t);
    writeBytes(t.file("sp.cfg"), players.replace("\"Lukas\"", "\"Ωmega\""));
    r = importplayersrun(*t, t.file("sp.cfg"), {}, FileEncoding::Utf8);
    EXPECT_FALSE(r.ok());
    EXPECT_TRUE(r.result.message.contains("Zeile 15")) << r.result.message.toStdString();
    EXPECT_TRUE(r.result.message.contains("»Ω«")) << r.result.message.toStdString();
    EXPECT_EQ(dumpWorld(*t), before);
}

TEST(Encoding, Utf8TeamFilesLikewise)
{
    TestDb t;
    t->exec("INSERT INTO vereine_national (NUMMER, NAME) VALUES (1, 'Österreich')");
    writeBytes(t.file("club.tea"), exampleAsUtf8("Fortuna Großgmain.tea"));
    ExchangeResult r = openteamnew(*t, t.file("club.tea"), "Österreich");
    EXPECT_FALSE(r.ok());
    EXPECT_TRUE(r.looksUtf8);
    EXPECT_EQ(t->scalar("SELECT count(*) FROM vereine").toInt(), 0);
    r = openteamnew(*t, t.file("club.tea"), "Österreich", {}, FileEncoding::Utf8);
    ASSERT_TRUE(r.ok()) << r.result.message.toStdString();
    EXPECT_EQ(t->scalar("SELECT NAME || '/' || STADION_NAME FROM vereine").toString(), "Fortuna Großgmain/Römerstraße-Arena");
    EXPECT_EQ(t->scalar("SELECT NAME || '/' || VORNAME FROM spieler ORDER BY NUMMER LIMIT 1").toString(), "Müller/Jürgen");
}

TEST(Encoding, CommandLineRefusesUtf8UnlessAsked)
{
    TempFolder dir;
    writeBytes(dir.file("tm.cfg"), exampleAsUtf8("1_tm.cfg"));
    const QStringList base{"--dir", dir.path()};
    CliRun r = runCli(base + QStringList{"import-teams", dir.file("tm.cfg")});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains("--utf8")) << r.err.toStdString();
    r = runCli(base + QStringList{"import-teams", "--utf8", dir.file("tm.cfg")});
    EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
}
