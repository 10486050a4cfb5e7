#include "anstoss/aetfile.h"
#include "anstoss/league.h"
#include "anstoss/preselect.h"
#include "core/strength.h"
#include "editor/facecode.h"
#include "platform/random.h"
#include "support/qstringprint.h"

#include "anstossfixture.h"

using namespace zorbo;
using namespace zorbo::test;

namespace {

// The message of the fault the call throws; empty when it throws none.
QString faultof(const std::function<void()> &f)
{
    try {
        f();
    } catch (const Fault &fault) {
        return fault.message();
    }
    return QString();
}

} // namespace

TEST(AetReading, SectionsAndKeysWithoutCaseTrimmedValuesDefaultsAndUmlauts)
{
    TempFolder dir;
    const QString path = writeaet(dir, "a.aet",
                                  "[team]\r\nNAME=  Borussia Weißensee  \r\nstadt=Süderbrück\r\n\r\n[SPIELER1]\r\n"
                                  "name=Jäger\r\nIgnoriert=1\r\n");
    AetFile file;
    ASSERT_TRUE(file.load(path));
    EXPECT_EQ(file.value("Team", "Name"), "Borussia Weißensee");
    EXPECT_EQ(file.value("TEAM", "Stadt", "x"), "Süderbrück");
    EXPECT_EQ(file.value("Team", "Land", "Vorgabe"), "Vorgabe");
    EXPECT_EQ(file.value("Spieler1", "Name"), "Jäger");
    EXPECT_EQ(file.value("Fehlt", "Name", " "), "");
    EXPECT_EQ(file.sections(), QStringList({"team", "SPIELER1"}));

    AetFile missing;
    const Result r = missing.load(dir.file("fehlt.aet"));
    EXPECT_FALSE(r.ok);
    EXPECT_TRUE(r.message.contains("fehlt.aet"));
}

TEST(AetReading, RefusalsNameFileSectionAndKey)
{
    TempFolder dir;
    NewWorld world;
    AetFile file;
    ASSERT_TRUE(file.load(writeaet(dir, "b.aet",
                                   "[Team]\r\nSpieler=3\r\ntrikoth0=1,2\r\n[Spieler1]\r\nPosition=4\r\nHautfarbe=2\r\n"
                                   "[Spieler2]\r\nHaarfarbe=99\r\n")));
    const QString count = faultof([&] { aetplayercount(file); });
    EXPECT_TRUE(count.contains("b.aet") && count.contains("Schlüssel spieler")
                && count.contains("[Spieler3]"))
        << count.toStdString();
    const QString position = faultof([&] { aetposition(file, 0, "3"); });
    EXPECT_TRUE(position.contains("[Spieler1]") && position.contains("Position") && position.contains("»4«"));
    EXPECT_TRUE(faultof([&] { aetface(world.db(), file, 0); }).contains("Hautfarbe"));
    EXPECT_TRUE(faultof([&] { aetface(world.db(), file, 1); }).contains("Haarfarbe"));
    EXPECT_TRUE(faultof([&] { aetcolourtext(file, "trikoth0", "0,0,0"); }).contains("trikoth0"));
    EXPECT_EQ(aetcolour(file, "trikoth1", "255,255,255"), (std::array<int, 3>{255, 255, 255}));
    EXPECT_EQ(aetposition(file, 1, "3"), 3);
}

TEST(LeagueReading, BothPlacesLastEqualsSignEmptyLinesAndCase)
{
    TempFolder dir;
    writeaet(dir, "Land/Liga A/Eins.aet", "[Team]\r\n");
    writeaet(dir, "Liga A/Eins.aet", "[Team]\r\n");
    writeaet(dir, "Land/Liga A/ZWEI.aet", "[Team]\r\n");
    writeaet(dir, "liga b/DREI.AET", "[Team]\r\n");
    const QString lan = writeaet(dir, "x.lan",
                                 "[Kopf]\r\nLand=Land\r\n[Liga A]\r\nk=a=Eins\r\n\r\nk2=zwei\r\nk3=Fehlt\r\n"
                                 "[Liga B]\r\n=Drei\r\n");
    const LeagueList list = readleague(lan);
    QStringList found;
    for (const LeagueClub &c : list.clubs)
        found << c.league + "|" + c.name + "|" + QDir(dir.path()).relativeFilePath(c.path);
    EXPECT_EQ(found, QStringList({"Liga A|Eins|Liga A/Eins.aet", "Liga A|Eins|Land/Liga A/Eins.aet",
                                  "Liga A|zwei|Land/Liga A/ZWEI.aet", "Liga B|Drei|liga b/DREI.AET"}));
    EXPECT_EQ(list.missing, QStringList({"Liga A/Fehlt"}));

    // Without Land the second place is the file's own folder again.
    const LeagueList plain = readleague(writeaet(dir, "y.lig", "[Kopf]\r\n[Liga A]\r\n1=Eins\r\n"));
    ASSERT_EQ(plain.clubs.size(), 2);
    EXPECT_EQ(QFileInfo(plain.clubs[0].path).canonicalFilePath(), QFileInfo(plain.clubs[1].path).canonicalFilePath());
}

TEST(Rules, StaerkegewinnOnItsTableWithTheCarriedGain)
{
    auto expectGain = [](double s, int b, int limit, int before) {
        rnd().restart();
        Rnd probe;
        int g = before;
        if (limit >= 0)
            g = int(probe.next() * float(limit));
        g += g % 2;
        int gain = before;
        EXPECT_EQ(staerkegewinn(s, gain), (b + g) * 1000) << s;
        EXPECT_EQ(gain, g);
        EXPECT_EQ(rnd().state(), limit >= 0 ? probe.state() : Rnd::startState) << s;
    };
    expectGain(3000, 4, 2, 0);
    expectGain(5000, 6, 4, 0);
    expectGain(12000, 12, 0, 0);
    expectGain(8000, 8, 4, 0);
    expectGain(3500, 4, -1, 2);  // in no range: the gain before, no draw
    expectGain(3500, 4, -1, 0);
    expectGain(13000, 14, -1, 2);
}

TEST(Rules, GesichtbauenForBothSkins)
{
    for (int h : {0, 1}) {
        rnd().restart();
        Rnd probe;
        const qint64 nase = int(probe.next() * float(h ? 9 : 31));
        const qint64 mund = int(probe.next() * float(h ? 9 : 30));
        const qint64 augen = int(probe.next() * float(h ? 2 : 30));
        const qint64 kinn = h ? 0 : int(probe.next() * 11.0f);
        const qint64 code = gesichtbauen(h, 5);
        EXPECT_EQ(code, nase * 67108864 + mund * 1048576 + 5 * 8192 + augen * 128 + (h ? 1 : kinn * 4));
        EXPECT_EQ(rnd().state(), probe.state());
        const Face face = decodeface(code);
        EXPECT_EQ(face.farbe, h);
        EXPECT_EQ(face.digits[Haare], 5);
    }
}

TEST(Preselection, NameBeatsTownAndCountryAndTheLastTownMatchStands)
{
    const QStringList entries{"SC Nordstadt (Deutschland)", "Nordstadt Süd (Deutschland)", "FC Nordstadt (Deutschland)",
                              "Werder Nordstadt (Deutschland)", "Weiß (Österreich)"};
    EXPECT_EQ(a4preselect(entries, "Werder", "Nordstadt", "Deutschland"), 3);
    EXPECT_EQ(a4preselect(entries, "Borussia", "Nordstadt", "Deutschland"), 3); // the last " Nordstadt (Deutschland)"
    EXPECT_EQ(a4preselect(entries, "werder", "Süd", "Deutschland"), 1);         // name case counts; town match
    EXPECT_EQ(a4preselect(entries, "Borussia", "", ""), -1);  // no town and country: no club with a country fits
    EXPECT_EQ(a4preselect(entries, "", "Nordstadt", "Deutschland"), 0); // an empty name is in every entry
    EXPECT_EQ(a4preselect(entries, "Deutschland", "x", "y"), -1);      // the country part is not the name
}

// A file in which nothing of an exporter file is found, or whose values the
// world can't store, is refused by name before anything is read from it.
TEST(AetReading, FilesWithoutAnExporterFileOrWithValuesBeyondStorageAreRefusedByName)
{
    TempFolder dir;
    struct Case {
        const char *name;
        QByteArray bytes;
        AetKind kind;
        QStringList words;
    };
    const QByteArray player = "[Team]\r\nName=X\r\nSpieler=1\r\n[Spieler1]\r\nName=A\r\nPosition=1\r\n";
    const Case cases[] = {
        {"empty.aet", "", AetKind::Club, {"keine Vereinsdatei des Anstoss Exporters"}},
        {"passwd.aet", "root:x:0:0:root:/root:/bin/bash\nbin:x:1:1::/:/usr/sbin/nologin\n", AetKind::Club,
         {"keine Vereinsdatei"}},
        {"utf16.aet", QByteArray("\xFF\xFE[\0T\0e\0a\0m\0]\0", 14), AetKind::Club, {"keine Textdatei"}},
        {"binary.lan", QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16), AetKind::League, {"keine Textdatei"}},
        {"garbage.lan", "[a]\r\nLand=x\r\n", AetKind::League, {"keine Liga- oder Landesdatei"}},
        {"huge.aet", player + "Staerke=99999999999999999999\r\n", AetKind::Club,
         {"Zeile 7", "[Spieler1]", "Staerke", "»99999999999999999999«; erlaubt sind -2147483648 bis 2147483647"}},
        {"long.aet", "[Team]\r\nName=" + QByteArray(256, 'x') + "\r\n", AetKind::Club,
         {"Zeile 2", "[Team]", "Name", "ein Text von 256 Zeichen"}},
    };
    for (const Case &c : cases) {
        const QString path = dir.file(c.name);
        writeBytes(path, c.bytes);
        AetFile file;
        const Result r = file.load(path, c.kind);
        EXPECT_FALSE(r.ok) << c.name;
        for (const QString &w : c.words + QStringList{path})
            EXPECT_TRUE(r.message.contains(w)) << c.name << ": " << r.message.toStdString() << " / " << w.toStdString();
    }
    // A league file whose lines name no club file that exists.
    writeBytes(dir.file("none.lan"), "[K]\r\nLand=Nirgends\r\n[Liga]\r\n1=Fehlt\r\n2=Auch\r\n");
    const QString none = faultof([&] { readleague(dir.file("none.lan")); });
    EXPECT_TRUE(none.contains(dir.file("none.lan")) && none.contains("keine zu finden")) << none.toStdString();
}

// A UTF-8 file is read as UTF-8 only when the caller says so.
TEST(AetReading, Utf8FilesStopForAQuestionAndReadWhenToldSo)
{
    TempFolder dir;
    const QString path = dir.file("utf8.aet");
    writeBytes(path, QStringLiteral("[Team]\r\nName=Fortuna Düsseldorf\r\n").toUtf8());
    AetFile file;
    const Result asked = file.load(path);
    EXPECT_FALSE(asked.ok);
    EXPECT_TRUE(asked.message.contains("UTF-8") && asked.message.contains(path)) << asked.message.toStdString();
    ASSERT_TRUE(file.load(path, AetKind::Club, FileEncoding::Utf8).ok);
    EXPECT_EQ(file.value("team", "Name"), "Fortuna Düsseldorf");
    ASSERT_TRUE(file.load(path, AetKind::Club, FileEncoding::Cp1252).ok) << "read as the game's files when told so";
}
