// The two runs over a folder of crests, and the command-line tool that drives them.
#include "platform/profile.h"
#include "resources/crestfiles.h"
#include "resources/crestfixtures.h"
#include "resources/crestlist.h"
#include "resources/crestrun.h"
#include "resources/gfp.h"
#include "resources/resf.h"
#include "support/cli.h"
#include "support/testsupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace zorbo;
using namespace zorbo::test;

namespace {

const QString defaults = QStringLiteral(ZORBO_TEST_DATA "/../../data/defaults/wappen");

// A folder with default.gfp and a wa.lst naming the given crests.
QString crestFolder(const TempFolder &t, const QStringList &names, const QString &type = "14")
{
    const QString wappen = t.path() + "/wappen/";
    QDir().mkpath(wappen);
    QFile::copy(defaults + "/default.gfp", wappen + "default.gfp");
    QByteArray lst = "[wa]\r\ndatei=wa.res\r\nanzahl=" + QByteArray::number(names.size()) + "\r\ntype=" + type.toLatin1() + "\r\n";
    for (const QString &n : names)
        lst += "[" + n.toLatin1() + "]\r\ndatei=" + n.toLatin1() + ".gfp\r\n";
    writeBytes(wappen + "wa.lst", lst);
    return wappen;
}

QList<QByteArray> namesIn(const QString &archive)
{
    ResArchive a;
    ResHeader h;
    QList<ResEntry> dir;
    QList<QByteArray> names;
    if (loadresarchive(archive, a) && readresheader(a, h) && readresdir(a, h, dir))
        for (const ResEntry &e : dir)
            names << e.name;
    return names;
}

} // namespace

TEST(CrestRun, ImportThenExportKeepsNamesOrderAndPixels)
{
    TempFolder t;
    // Out of numeric order on purpose: the list decides, not the numbers.
    const QStringList names = {"vereins_wappen_12", "vereins_wappen_3", "vereins_wappen_100"};
    QList<RawEntry> entries;
    for (int i = 0; i < names.size(); ++i)
        entries.append({names[i].toLatin1(), gfpBytes(5 + i, 3, pattern16(5 + i, 3), true)});
    writeBytes(t.file("game.res"), archiveBytes(entries));
    const QString wappen = crestFolder(t, names);
    const CrestRunReport in = importwappen(t.file("game.res"), wappen);
    ASSERT_TRUE(in.result.ok) << in.result.message.toStdString();
    EXPECT_EQ(in.written, 3);

    const CrestRunReport out = exportwappen(t.file("neu.res"), wappen);
    ASSERT_TRUE(out.result.ok) << out.result.message.toStdString();
    EXPECT_TRUE(out.findings.isEmpty());
    const QList<QByteArray> got = namesIn(t.file("neu.res"));
    ASSERT_EQ(got.size(), 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(got[i], names[i].toLatin1());
    // Same pixels after the way through 24 bits: the 16-bit values are a fixed point.
    const QByteArray a = readBytes(t.file("neu.res"));
    ResArchive arc{"neu.res", a};
    ResHeader h;
    QList<ResEntry> dir;
    ASSERT_TRUE(readresheader(arc, h) && readresdir(arc, h, dir));
    for (int i = 0; i < 3; ++i) {
        QByteArray bytes, px;
        GfpHeader g;
        ASSERT_TRUE(resourcebytes(arc, h, dir[i], bytes).ok);
        ASSERT_TRUE(readgfp(bytes, "x", g, px).ok);
        EXPECT_EQ(px, pattern16(5 + i, 3)) << i;
    }
    EXPECT_FALSE(QFileInfo::exists(wappen + "temp"));
}

TEST(CrestRun, ExportStopsOrFillsIn)
{
    TempFolder t;
    const QString wappen = crestFolder(t, {"da", "fehlt", "kaputt", "../weg", "da", "mit blank"});
    QFile::copy(defaults + "/default.tga", wappen + "da.tga");
    writeBytes(wappen + "kaputt.tga", "GIF89a not a tga at all");
    const CrestRunReport run = exportwappen(t.file("wa.res"), wappen);
    ASSERT_TRUE(run.result.ok) << run.result.message.toStdString();
    EXPECT_EQ(namesIn(t.file("wa.res")), QList<QByteArray>({"da", "fehlt", "kaputt", "da", "mit"}));
    const QString all = findinglines(run.findings).join('\n');
    EXPECT_TRUE(all.contains("fehlt.tga")) << all.toStdString();
    EXPECT_TRUE(all.contains("kaputt.tga ist kein lesbares TGA-Bild")) << all.toStdString();
    EXPECT_TRUE(all.contains("[../weg]")) << all.toStdString();
    EXPECT_TRUE(all.contains("[mit blank] enthält ein Leerzeichen")) << all.toStdString();
    // The crests without a picture carry default.gfp whole.
    const QByteArray a = readBytes(t.file("wa.res"));
    EXPECT_TRUE(a.contains(readBytes(wappen + "default.gfp")));

    QFile::remove(wappen + "default.gfp");
    CrestRunReport stop = exportwappen(t.file("b.res"), wappen);
    EXPECT_FALSE(stop.result.ok);
    EXPECT_TRUE(stop.result.message.contains("default.gfp"));
    QFile::remove(wappen + "wa.lst");
    stop = exportwappen(t.file("b.res"), wappen);
    EXPECT_TRUE(stop.result.message.contains("wa.lst"));
    EXPECT_FALSE(QFile::exists(t.file("b.res")));
    crestFolder(t, {"x"}, "vierzehn");
    EXPECT_TRUE(exportwappen(t.file("b.res"), wappen).result.message.contains("„type“"));
}

TEST(CrestRun, AStopLeavesTheCrestsAndTheArchiveAsTheyWere)
{
    TempFolder t;
    const QByteArray ok = gfpBytes(2, 2, pattern16(2, 2), true);
    writeBytes(t.file("game.res"), archiveBytes({{"a", ok}, {"b", ok}, {"c", ok}}));
    const QString wappen = crestFolder(t, {"a", "b", "c"});
    writeBytes(wappen + "a.tga", "alt");
    const CrestRunReport in = importwappen(t.file("game.res"), wappen, [](qint64 done, qint64) { return done < 2; });
    EXPECT_TRUE(in.result.cancelled) << in.result.message.toStdString();
    EXPECT_EQ(readBytes(wappen + "a.tga"), "alt");
    EXPECT_EQ(filesBelow(wappen), QStringList({"a.tga", "default.gfp", "wa.lst"})) << "no staging left";

    // Stopped at the last step of packing, just before the archive would be replaced.
    writeBytes(t.file("wa.res"), "alt");
    const CrestRunReport out = exportwappen(t.file("wa.res"), wappen, [](qint64 done, qint64 total) { return done < total; });
    EXPECT_TRUE(out.result.cancelled) << out.result.message.toStdString();
    EXPECT_EQ(readBytes(t.file("wa.res")), "alt");
    EXPECT_EQ(filesBelow(t.path()).filter("wa.res"), QStringList({"wa.res"})) << "no temporary file beside it";
}

TEST(CrestRun, DeliveredDefaultsExportOnAFreshInstall)
{
    TempFolder t;
    const QString wappen = t.path() + "/wappen/";
    copyFolder(defaults, wappen);
    const CrestRunReport run = exportwappen(t.file("wa.res"), wappen);
    ASSERT_TRUE(run.result.ok) << run.result.message.toStdString();
    EXPECT_EQ(run.written, CrestCount);
    // The crests without a picture are told in one line, not in a thousand; only the numbers
    // that made clubs (0) and countries (292) carry come with a file.
    EXPECT_EQ(run.findings.size(), 1) << findinglines(run.findings).join('\n').toStdString();
    EXPECT_TRUE(run.findings.value(0).text.startsWith(QString::number(CrestCount - 2) + " Wappen"))
        << run.findings.value(0).text.toStdString();
    // The delivered picture and template agree pixel for pixel.
    const CrestRunReport back = importwappen(t.file("wa.res"), t.path() + "/zurueck/");
    ASSERT_EQ(back.written, CrestCount);
    EXPECT_EQ(readBytes(t.path() + "/zurueck/vereins_wappen_999.tga"), readBytes(defaults + "/default.tga"));
}

#ifdef ZORBO_CLI
TEST(CrestRun, CommandLineTool)
{
    TempFolder t;
    writeBytes(t.file("game.res"), readBytes(dataPath("resf/worked-example/expected.res")));
    auto cli = [&](const QStringList &args, QString *out = nullptr, QString *err = nullptr) {
        const CliRun run = runCli(QStringList{"--dir", t.path()} + args);
        if (out)
            *out = run.out;
        if (err)
            *err = run.err;
        return run.exitCode;
    };
    QString out, err;
    ASSERT_EQ(cli({"resf-list", t.file("game.res")}, &out), 0);
    EXPECT_TRUE(out.contains("0\t14\t12\tvereins_wappen_7\t152\t2x1")) << out.toStdString();
    ASSERT_EQ(cli({"import-crests", t.file("game.res")}, &out, &err), 0) << err.toStdString();
    EXPECT_EQ(readBytes(t.file("wappen/vereins_wappen_7.tga")),
              readBytes(dataPath("resf/worked-example/vereins_wappen_7.tga")));
    copyFolder(dataPath("resf/worked-example"), t.file("wappen"));
    ASSERT_EQ(cli({"export-crests", t.file("neu.res")}, &out, &err), 0) << err.toStdString();
    EXPECT_EQ(readBytes(t.file("neu.res")), readBytes(t.file("game.res")));
    // Crests the list lacks are added when asked.
    QList<RawEntry> own = {{"eigenes", readBytes(dataPath("resf/worked-example/expected.gfp"))}};
    writeBytes(t.file("eigen.res"), archiveBytes(own));
    ASSERT_EQ(cli({"import-crests", "--add-to-list", t.file("eigen.res")}, &out, &err), 0) << err.toStdString();
    EXPECT_TRUE(readinisections(t.file("wappen/wa.lst")).contains("eigenes"));
    EXPECT_EQ(cli({"import-crests", t.file("fehlt.res")}, &out, &err), 1);
    EXPECT_TRUE(err.contains("fehlt.res")) << err.toStdString();
}
#endif

TEST(CrestRun, ImportLeavesTheListAloneUnlessAsked)
{
    TempFolder t;
    const QStringList names = {"vereins_wappen_0", "eigenes_b", "vereins_wappen_7", "eigenes_a"};
    QList<RawEntry> entries;
    for (const QString &n : names)
        entries.append({n.toLatin1(), gfpBytes(4, 4, pattern16(4, 4), true)});
    writeBytes(t.file("game.res"), archiveBytes(entries));

    // The delivered list knows every numbered crest but not the two others:
    // the run counts them and leaves the user's list as it is.
    const QString wappen = t.path() + "/wappen/";
    copyFolder(defaults, wappen);
    const QByteArray list = readBytes(wappen + "wa.lst");
    CrestRunReport in = importwappen(t.file("game.res"), wappen);
    ASSERT_TRUE(in.result.ok) << in.result.message.toStdString();
    EXPECT_EQ(in.missingFromList, QStringList({"eigenes_b", "eigenes_a"}));
    EXPECT_TRUE(findinglines(in.findings).join('\n').contains("2 Wappen")) << findinglines(in.findings).join('\n').toStdString();
    EXPECT_EQ(readBytes(wappen + "wa.lst"), list);

    // Asked to, the run adds them at the end, and the next export packs them.
    in = importwappen(t.file("game.res"), wappen, {}, CrestImportOptions{true});
    ASSERT_TRUE(in.result.ok) << in.result.message.toStdString();
    EXPECT_EQ(in.addedToList, 2);
    EXPECT_EQ(readinistring("wa", "anzahl", wappen + "wa.lst"), "1002");
    ASSERT_TRUE(exportwappen(t.file("neu.res"), wappen).result.ok);
    EXPECT_EQ(namesIn(t.file("neu.res")).mid(998), QList<QByteArray>({"vereins_wappen_998", "vereins_wappen_999",
                                                                      "eigenes_b", "eigenes_a"}));
    // The same for a window that asks after the run; a folder without a list gets one.
    const QString bare = t.path() + "/leer/";
    in = importwappen(t.file("game.res"), bare);
    ASSERT_EQ(in.missingFromList, names);
    int added = 0;
    ASSERT_TRUE(addtocrestlist(bare, in.missingFromList, &added).ok);
    EXPECT_EQ(added, 4);
    EXPECT_EQ(readinisections(bare + "wa.lst"), QStringList({"wa"}) + names);
    EXPECT_EQ(readinistring("wa", "type", bare + "wa.lst"), "14");
}

TEST(CrestRun, NamesTheListCannotHoldAreRefused)
{
    // Each of these would be cut or trimmed on its way through wa.lst and
    // come back as another name, so the export would pack the default crest.
    const QByteArray ok = gfpBytes(2, 2, pattern16(2, 2), true);
    TempFolder t;
    writeBytes(t.file("wa.res"), archiveBytes({{"klammer]", ok}, {"hinten ", ok}, {" vorn", ok}, {"mit blank", ok},
                                               {"gut", ok}}));
    const QString wappen = t.path() + "/wappen/";
    const CrestRunReport run = importwappen(t.file("wa.res"), wappen);
    ASSERT_TRUE(run.result.ok) << run.result.message.toStdString();
    EXPECT_EQ(run.written, 1);
    EXPECT_EQ(filesBelow(wappen), QStringList({"gut.tga"}));
    const QString all = findinglines(run.findings).join('\n');
    for (const char *name : {"„klammer]“", "„hinten “", "„ vorn“", "„mit blank“"})
        EXPECT_TRUE(all.contains(QString::fromUtf8(name))) << name << "\n" << all.toStdString();
}

TEST(CrestRun, ImportBoundsEachPictureAndTheWholeRun)
{
    // A small archive of flat pictures larger than the game's unpacks to nothing at all.
    TempFolder t;
    const QByteArray bomb = gfpBytes(512, 512, QByteArray(512 * 512 * 2, '\0'), true);
    QList<RawEntry> bombs;
    for (int i = 0; i < 30; ++i)
        bombs.append({"bombe_" + QByteArray::number(i), bomb});
    writeBytes(t.file("bomb.res"), archiveBytes(bombs));
    const QString wappen = t.path() + "/wappen/";
    CrestRunReport run = importwappen(t.file("bomb.res"), wappen);
    EXPECT_EQ(run.written, 0);
    EXPECT_EQ(filesBelow(wappen), QStringList());

    // Pictures of allowed size that add up to more than the run may write:
    // the run fails and leaves the folder as it was.
    QList<RawEntry> many;
    for (int i = 0; i < 5; ++i)
        many.append({"gross_" + QByteArray::number(i), gfpBytes(100, 100, QByteArray(100 * 100 * 2, '\x11'), true)});
    writeBytes(t.file("many.res"), archiveBytes(many));
    writeBytes(wappen + "gross_0.tga", "alt");
    CrestImportOptions options;
    options.maxOutput = 4 * (18 + 100 * 100 * 3);
    run = importwappen(t.file("many.res"), wappen, {}, options);
    EXPECT_FALSE(run.result.ok);
    EXPECT_TRUE(run.result.message.contains("many.res")) << run.result.message.toStdString();
    EXPECT_EQ(filesBelow(wappen), QStringList({"gross_0.tga"}));
    EXPECT_EQ(readBytes(wappen + "gross_0.tga"), "alt");
    options.maxOutput = 5 * (18 + 100 * 100 * 3);
    EXPECT_EQ(importwappen(t.file("many.res"), wappen, {}, options).written, 5);
}
