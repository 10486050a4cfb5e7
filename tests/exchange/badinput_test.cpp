#include "exchange/configruns.h"
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
    QByteArray shortRecord = tm;
    shortRecord.insert(lineStart(tm, 18), "NEUES_TEAM\r\n        NUMMER 5\r\n        NAME \"x\"\r\n\r\n");
    const Case cases[] = {
        {"empty", "", "keinen Verein"},
        {"players-as-teams", example("1_sp.cfg"), "Spielerdatei"},
        {"binary", QByteArray("NEUES_TEAM\r\n\x00\x01\x02\xff", 16), "keine Textdatei"},
        {"truncated", tm.left(club + 200), "Zeile 20: der Datensatz hat 5 Zeilen"},
        {"club-27-lines", withoutLine(tm, 22), "Zeile 20: der Datensatz hat 27 Zeilen"},
        {"club-29-lines", longer, "Zeile 20: der Datensatz hat 29 Zeilen"},
        {"three-lines", shortRecord, "Zeile 19: der Datensatz hat 2 Zeilen"},
        {"national-31-lines", withoutLine(tm, int(tm.count('\n')) - 3), "der Datensatz hat 31 Zeilen"},
        {"letters-in-number", QByteArray(tm).replace("GRAFIK_NR                110", "GRAFIK_NR                11O"),
         "Zeile 24: im Feld GRAFIK_NR steht »11O«"},
        {"decimal-letters", QByteArray(tm).replace("STAERKE                  2.5", "STAERKE                  2,5"), "STAERKE"},
        {"team-number-too-big", QByteArray(tm).replace("NUMMER                   10\r", "NUMMER                   4294967296\r"), "32 Bit"},
        {"squad-letters", QByteArray(tm).replace("\"105,106", "\"105,x06"), "»x06«"},
        {"unquoted-name", QByteArray(tm).replace("\"TRANSFERMARKT\"", "TRANSFERMARKT"), "Anführungszeichen"},
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
        {"lf-only-no-final-end", QByteArray(sp).replace("\r\n", "\n").chopped(1), ""},
    };
    for (const Case &c : cases)
        check(c, false);
}
