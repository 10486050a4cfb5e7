#include "core/problems.h"
#include "exchange/cfgfile.h"
#include "exchange/configruns.h"
#include "platform/codepage.h"
#include "support/qstringprint.h"
#include "worldfixture.h"

using namespace zorbo;
using namespace zorbo::test;

namespace {

QByteArray example(const char *name)
{
    return readBytes(QStringLiteral(ZORBO_EXAMPLES "/beispielwelt/") + QLatin1String(name));
}

// The byte offset of the n-th line (0-based) of a CR LF file.
qsizetype lineStart(const QByteArray &file, int n)
{
    qsizetype at = 0;
    for (int i = 0; i < n; ++i)
        at = file.indexOf('\n', at) + 1;
    return at;
}

QByteArray withoutLine(const QByteArray &file, int n)
{
    const qsizetype s = lineStart(file, n);
    return file.left(s) + file.mid(file.indexOf('\n', s) + 1);
}

struct Case {
    const char *name;
    QByteArray bytes;
    const char *expected; // part of the message; empty when the import must succeed
};

// A world that holds the sample; every bad file must leave it exactly so.
class BadInput : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(importteamsrun(*t, QStringLiteral(ZORBO_EXAMPLES "/beispielwelt/1_tm.cfg")).ok());
        ASSERT_TRUE(importplayersrun(*t, QStringLiteral(ZORBO_EXAMPLES "/beispielwelt/1_sp.cfg")).ok());
        before = dumpWorld(*t);
    }

    void check(const Case &c, bool teams)
    {
        const QString path = t.file(QString::fromLatin1(c.name) + ".cfg");
        writeBytes(path, c.bytes);
        const ExchangeResult r = teams ? importteamsrun(*t, path) : importplayersrun(*t, path);
        if (*c.expected == 0) {
            EXPECT_TRUE(r.ok()) << c.name << ": " << r.result.message.toStdString();
            EXPECT_EQ(dumpWorld(*t), before) << c.name;
            return;
        }
        EXPECT_FALSE(r.ok()) << c.name;
        EXPECT_TRUE(r.result.message.contains(QString::fromUtf8(c.expected))) << c.name << ": " << r.result.message.toStdString();
        EXPECT_TRUE(r.result.message.contains(path)) << c.name << ": the message names the file";
        EXPECT_EQ(dumpWorld(*t), before) << c.name << ": the world must stay as it was";
    }

    TestDb t;
    QString before;
};

} // namespace

TEST_F(BadInput, TeamFiles)
{
    const QByteArray tm = example("1_tm.cfg");
    // Line 14 holds the market's NEUES_TEAM, line 20 the first club's.
    const qsizetype club = lineStart(tm, 19);
    QByteArray longer = tm;
    longer.insert(lineStart(tm, 22), "        EXTRA                    1\r\n");
    const Case cases[] = {
        {"empty", "", "keinen Verein"},
        {"players-as-teams", example("1_sp.cfg"), "Spielerdatei"},
        {"binary", QByteArray("NEUES_TEAM\r\n\x00\x01\x02\xff", 16), "keine Textdatei"},
        {"truncated", tm.left(club + 200), "Zeile 20: der Datensatz hat 5 Zeilen"},
        {"club-27-lines", withoutLine(tm, 22), "Zeile 20: der Datensatz hat 27 Zeilen"},
        {"club-29-lines", longer, "Zeile 20: der Datensatz hat 29 Zeilen"},
        {"national-31-lines", withoutLine(tm, int(tm.count('\n')) - 3), "der Datensatz hat 31 Zeilen"},
        {"letters-in-number", QByteArray(tm).replace("GRAFIK_NR                110", "GRAFIK_NR                11O"),
         "Zeile 24: im Feld GRAFIK_NR steht »11O«"},
        {"decimal-letters", QByteArray(tm).replace("STAERKE                  2.5", "STAERKE                  2,5"), "STAERKE"},
        {"team-number-too-big", QByteArray(tm).replace("NUMMER                   10\r", "NUMMER                   4294967296\r"),
         "im Feld NUMMER steht »4294967296«; erlaubt sind 0 bis 2147483647"},
        {"squad-letters", QByteArray(tm).replace("\"105,106", "\"105,x06"), "»x06«"},
        {"unquoted-name", QByteArray(tm).replace("\"TRANSFERMARKT\"", "TRANSFERMARKT"), "Anführungszeichen"},
        // Numbers beyond what the game's columns hold, and overlong text.
        {"crest-beyond-64-bit", QByteArray(tm).replace("GRAFIK_NR                110", "GRAFIK_NR                9223372036854775807"),
         "Zeile 24: im Feld GRAFIK_NR steht »9223372036854775807«; erlaubt sind -2147483648 bis 2147483647"},
        {"kit-below-32-bit", QByteArray(tm).replace("TRIKOT_ART               3\r", "TRIKOT_ART               -2147483649\r"),
         "Zeile 33: im Feld TRIKOT_ART steht »-2147483649«; erlaubt sind -2147483648 bis 2147483647"},
        {"strength-beyond-32-bit", QByteArray(tm).replace("STAERKE                  2.5", "STAERKE                  2147483648"),
         "STAERKE"},
        {"negative-squad-player", QByteArray(tm).replace("\"105,106", "\"105,-106"), "»-106«"},
        {"name-too-long", QByteArray(tm).replace("\"TRANSFERMARKT\"", '"' + QByteArray(256, 'x') + '"'),
         "Zeile 16: im Feld NAME steht ein Text von 256 Zeichen; gespeichert werden höchstens 255"},
        {"lf-only", QByteArray(tm).replace("\r\n", "\n"), ""},
        {"cr-only", QByteArray(tm).replace("\r\n", "\r"), ""},
    };
    for (const Case &c : cases)
        check(c, true);
}

TEST_F(BadInput, PlayerFiles)
{
    const QByteArray sp = example("1_sp.cfg");
    const Case cases[] = {
        {"empty", "", "keinen Spieler"},
        {"teams-as-players", example("1_tm.cfg"), "Vereinsdatei"},
        {"binary", QByteArray("\x89PNG\r\n\x1a\n\x00\x00", 10), "keine Textdatei"},
        {"truncated", sp.left(lineStart(sp, int(sp.count('\n')) - 3)), "die Datei endet mitten im Spieler: 14 von 17"},
        {"letters-in-number", QByteArray(sp).replace("GROESSE         1", "GROESSE         x"), "im Feld GROESSE steht"},
        {"empty-number", QByteArray(sp).replace("        ART             3\r\n", "        ART             \r\n"), "im Feld ART steht »«"},
        {"strength-beyond-32-bit", QByteArray(sp).replace("      5000\r", "      2147483648\r"),
         "erlaubt sind -2147483648 bis 2147483647"},
        {"face-beyond-32-bit", QByteArray(sp).replace("GESICHT         47931", "GESICHT         2147483648"), "GESICHT"},
        {"first-name-too-long", QByteArray(sp).replace("\"Lukas\"", '"' + QByteArray(200000, 'L') + '"'),
         "im Feld VORNAME steht ein Text von 200000 Zeichen"},
        {"talents-too-long", QByteArray(sp).replace("        ERLERNT         \r", "        ERLERNT         " + QByteArray(300, '1') + "\r"),
         "ERLERNT"},
        {"lf-only-no-final-end", QByteArray(sp).replace("\r\n", "\n").chopped(1), ""},
    };
    for (const Case &c : cases)
        check(c, false);
}

// What the windows can't show but the world can store comes in as the file
// has it, is counted and listed, and goes out and back in unchanged.
TEST_F(BadInput, ValuesBeyondTheWindowsAreKeptListedAndReadBack)
{
    // A real club name with "e.V." runs to 47 characters.
    const QString longName = QStringLiteral("Turn- und Sportverein Bärenstadt 1899 e. V. Süd");
    ASSERT_EQ(longName.size(), 47);
    const QByteArray tm = QByteArray(example("1_tm.cfg"))
                              .replace("\"FC B\xE4renstadt 1899\"", '"' + *toCp1252(longName) + '"')
                              .replace("GRAFIK_NR                110", "GRAFIK_NR                1000")
                              .replace("STADION_SITZPL           26000", "STADION_SITZPL           1000000");
    // The first player only.
    QByteArray sp = example("1_sp.cfg");
    for (const auto &[from, to] : {std::pair<QByteArray, QByteArray>{"MAX_ST\xC4RKE      5000\r", "MAX_ST\xC4RKE      12001\r"},
                                   {"GROESSE         169\r", "GROESSE         1690\r"}})
        sp.replace(sp.indexOf(from), from.size(), to);
    writeBytes(t.file("kept_tm.cfg"), tm);
    writeBytes(t.file("kept_sp.cfg"), sp);
    const QString teams = importteamsrun(*t, t.file("kept_tm.cfg")).result.message;
    const QString players = importplayersrun(*t, t.file("kept_sp.cfg")).result.message;
    EXPECT_TRUE(teams.endsWith(" 3 Werte außerhalb der Fensterbereiche behalten, siehe Probleme")) << teams.toStdString();
    EXPECT_TRUE(players.endsWith(" 2 Werte außerhalb der Fensterbereiche behalten, siehe Probleme")) << players.toStdString();
    EXPECT_EQ(t->scalar("SELECT NAME FROM vereine WHERE NUMMER = 10").toString(), longName);
    EXPECT_EQ(t->scalar("SELECT \"Max_Stärke\" FROM spieler WHERE NUMMER = 100").toInt(), 12001);

    // The problem check lists each as a warning with its place and value.
    const ProblemReport report = checkproblems(*t, Settings());
    QStringList listed;
    for (const Problem &p : report.problems)
        if (p.kind == ProblemKind::OutsideWindow)
            listed << QStringLiteral("%1/%2/%3").arg(p.where.team).arg(p.where.player).arg(p.where.field);
    EXPECT_EQ(listed, (QStringList{"10/-1/NAME", "10/-1/GRAFIK_NR", "10/-1/STADION_SITZPL", "-1/100/MAX_STÄRKE",
                                   "-1/100/GROESSE"}));
    const QString all = problemlines(report).join('\n');
    EXPECT_TRUE(all.contains("Warnung: Werte außerhalb der Fensterbereiche:\n") &&
                all.contains("Spieler 100, Feld MAX_STÄRKE: Spieler „") && all.contains("12001; die Fenster zeigen 0 bis 12000"))
        << all.toStdString();

    const QString world = dumpWorld(*t);
    ASSERT_TRUE(exportconfig(*t, t.file("out_tm.cfg"), ConfigKind::Teams).ok());
    ASSERT_TRUE(exportconfig(*t, t.file("out_sp.cfg"), ConfigKind::Players).ok());
    TestDb back;
    ASSERT_TRUE(importteamsrun(*back, t.file("out_tm.cfg")).ok());
    ASSERT_TRUE(importplayersrun(*back, t.file("out_sp.cfg")).ok());
    EXPECT_EQ(dumpWorld(*back), world);
}

// The plain number forms the readers take, and lines ended by CR LF, LF or
// CR alone, mixed in one file.
TEST(CfgValues, PlainNumbersOnlyAndEveryLineEnd)
{
    EXPECT_EQ(parseDecimal("-.25"), -0.25);
    EXPECT_EQ(parseDecimal("+12."), 12.0);
    EXPECT_EQ(parseDecimal("3,5", true), 3.5);
    EXPECT_EQ(parseDecimal("-0,75", true), -0.75);
    for (const char *bad : {"", "-", ".", "3,5", "1.2.3", "1e5", "inf", "0x1", " 1", "1,2,3"})
        EXPECT_FALSE(parseDecimal(bad, QByteArrayView(bad) == "1,2,3")) << bad;
    EXPECT_EQ(parseRounded("2.5"), 2);
    EXPECT_EQ(parseRounded("3,5", true), 4);
    EXPECT_EQ(parseRounded("-7"), -7);
    EXPECT_FALSE(parseRounded("7x"));

    TestDb t;
    writeBytes(t.file("zeilen.cfg"), "eins\r\nzwei\nNEUES_TEAM\r\rvier\r\n\nsechs");
    CfgFile file;
    ASSERT_TRUE(file.load(t.file("zeilen.cfg")).ok);
    CfgFile::Lines lines(file);
    QStringList seen;
    while (lines.next())
        seen << QStringLiteral("%1:%2").arg(lines.number()).arg(QString::fromLatin1(lines.text()));
    EXPECT_EQ(seen, QStringList({"0:eins", "1:zwei", "2:NEUES_TEAM", "3:", "4:vier", "5:", "6:sechs"}));
}
