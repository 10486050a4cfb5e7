// The two runs over a folder of crests, and the command-line tool that drives them.
#include "platform/profile.h"
#include "resources/crestfixtures.h"
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
    EXPECT_TRUE(out.problems.isEmpty());
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
    const QString all = run.problems.join('\n');
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

TEST(CrestRun, DeliveredDefaultsExportOnAFreshInstall)
{
    TempFolder t;
    const QString wappen = t.path() + "/wappen/";
    copyFolder(defaults, wappen);
    const CrestRunReport run = exportwappen(t.file("wa.res"), wappen);
    ASSERT_TRUE(run.result.ok) << run.result.message.toStdString();
    EXPECT_EQ(run.written, 1);
    // The delivered picture and template agree pixel for pixel.
    const CrestRunReport back = importwappen(t.file("wa.res"), t.path() + "/zurueck/");
    ASSERT_EQ(back.written, 1);
    const QString name = QString::fromLatin1(namesIn(t.file("wa.res")).value(0));
    EXPECT_EQ(readBytes(t.path() + "/zurueck/" + name + ".tga"), readBytes(defaults + "/default.tga"));
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
    // A fresh program folder exports its delivered neutral crest.
    TempFolder fresh;
    const CliRun first = runCli({"--dir", fresh.path(), "export-crests", fresh.file("wa.res")});
    EXPECT_EQ(first.exitCode, 0) << first.err.toStdString();
    EXPECT_TRUE(QFile::exists(fresh.file("wa.res")));
    EXPECT_EQ(cli({"import-crests", t.file("fehlt.res")}, &out, &err), 1);
    EXPECT_TRUE(err.contains("fehlt.res")) << err.toStdString();
}
#endif

TEST(CrestRun, ImportTeachesTheListTheArchivesCrests)
{
    TempFolder t;
    const QStringList names = {"vereins_wappen_0", "vereins_wappen_7", "vereins_wappen_3"};
    QList<RawEntry> entries;
    for (const QString &n : names)
        entries.append({n.toLatin1(), gfpBytes(4, 4, pattern16(4, 4), true)});
    writeBytes(t.file("game.res"), archiveBytes(entries));

    // The delivered list knows only crest 0: after the import it knows all
    // three, so the export packs the whole archive again.
    const QString wappen = t.path() + "/wappen/";
    copyFolder(defaults, wappen);
    CrestRunReport in = importwappen(t.file("game.res"), wappen);
    ASSERT_TRUE(in.result.ok) << in.result.message.toStdString();
    EXPECT_TRUE(in.problems.join('\n').contains("2 Wappen")) << in.problems.join('\n').toStdString();
    EXPECT_EQ(readinistring("wa", "anzahl", wappen + "wa.lst"), "3");
    ASSERT_TRUE(exportwappen(t.file("neu.res"), wappen).result.ok);
    EXPECT_EQ(namesIn(t.file("neu.res")), QList<QByteArray>({"vereins_wappen_0", "vereins_wappen_7", "vereins_wappen_3"}));

    // A second import adds nothing; a folder without a list gets one.
    const QByteArray list = readBytes(wappen + "wa.lst");
    ASSERT_TRUE(importwappen(t.file("game.res"), wappen).result.ok);
    EXPECT_EQ(readBytes(wappen + "wa.lst"), list);
    const QString bare = t.path() + "/leer/";
    ASSERT_TRUE(importwappen(t.file("game.res"), bare).result.ok);
    EXPECT_EQ(readinisections(bare + "wa.lst"), QStringList({"wa", "vereins_wappen_0", "vereins_wappen_7", "vereins_wappen_3"}));
    EXPECT_EQ(readinistring("wa", "datei", bare + "wa.lst"), "game.res");
    EXPECT_EQ(readinistring("wa", "type", bare + "wa.lst"), "14");
}
