#include "support/cli.h"
#include "support/testsupport.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <gtest/gtest.h>

using namespace zorbo::test;

namespace {

QString example(const char *name)
{
    return QStringLiteral(ZORBO_EXAMPLES "/beispielwelt/") + QLatin1String(name);
}

} // namespace

TEST(CliTrust, SelfCheckAnswersZeroOrListsDifferences)
{
    TempFolder dir, game;
    ASSERT_EQ(runCli({"--dir", dir.path(), "init"}).exitCode, 0);
    QFile::copy(example("1_tm.cfg"), game.file("1_tm.cfg"));
    CliRun r = runCli({"--dir", dir.path(), "selfcheck", game.path()});
    EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, "Die Datei 1_tm.cfg kommt unverändert zurück.\n");

    QByteArray teams = readBytes(game.file("1_tm.cfg"));
    teams.replace("        STAERKE                  2.5\r\n", "        STAERKE                  2.50\r\n");
    writeBytes(game.file("1_tm.cfg"), teams);
    r = runCli({"--dir", dir.path(), "selfcheck", game.path()});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.out.startsWith("1_tm.cfg, Zeile 25: Spiel »        STAERKE                  2.50«, Editor »        "
                                 "STAERKE                  2.5« – dieselbe Zahl in anderer Schreibweise\n"))
        << r.out.toStdString();
}

TEST(CliTrust, ExportOverAChangedGameFileNeedsForce)
{
    TempFolder dir, game;
    ASSERT_EQ(runCli({"--dir", dir.path(), "init"}).exitCode, 0);
    const QString file = game.file("1_tm.cfg");
    QFile::copy(example("1_tm.cfg"), file);
    ASSERT_EQ(runCli({"--dir", dir.path(), "import-teams", file}).exitCode, 0);
    // Unchanged since the import: no question.
    ASSERT_EQ(runCli({"--dir", dir.path(), "export-teams", file}).exitCode, 0);
    // Another tool writes the file.
    writeBytes(file, readBytes(file) + "\r\n");
    const QByteArray theirs = readBytes(file);
    CliRun r = runCli({"--dir", dir.path(), "export-teams", file});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains("Die Datei " + QDir::toNativeSeparators(file) + " wurde am ")) << r.err.toStdString();
    EXPECT_TRUE(r.err.contains("Mit --force wird sie trotzdem überschrieben.")) << r.err.toStdString();
    EXPECT_EQ(readBytes(file), theirs);
    r = runCli({"--dir", dir.path(), "export-teams", file, "--force"});
    EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_NE(readBytes(file), theirs);
    // Written by the editor: the next export asks nothing.
    EXPECT_EQ(runCli({"--dir", dir.path(), "export-teams", file}).exitCode, 0);

    // The crest archive, which needs no world, is remembered by the one there.
    const QString archive = game.file("wa.res");
    ASSERT_EQ(runCli({"--dir", dir.path(), "export-crests", archive}).exitCode, 0);
    writeBytes(archive, readBytes(archive) + "x");
    r = runCli({"--dir", dir.path(), "export-crests", archive});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains("Mit --force wird sie trotzdem überschrieben.")) << r.err.toStdString();
    EXPECT_EQ(runCli({"--dir", dir.path(), "export-crests", archive, "--force"}).exitCode, 0);
}

TEST(CliTrust, CrestFromPictureAndAFolderOfPictures)
{
    TempFolder dir, pictures;
    ASSERT_EQ(runCli({"--dir", dir.path(), "init"}).exitCode, 0);
    ASSERT_EQ(runCli({"--dir", dir.path(), "import-teams", example("1_tm.cfg")}).exitCode, 0);
    QImage red(20, 10, QImage::Format_RGB32);
    red.fill(Qt::red);
    ASSERT_TRUE(red.save(pictures.file("10.png")));
    ASSERT_TRUE(red.save(pictures.file("unbekannt.png")));
    const QString wappen = dir.path() + "/wappen/";

    CliRun r = runCli({"--dir", dir.path(), "crest-from-picture", pictures.file("10.png"), "500", "--team", "11"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(QFile::exists(wappen + "vereins_wappen_500.tga"));
    r = runCli({"--dir", dir.path(), "history"});
    EXPECT_TRUE(r.out.contains("Wappen 500 aus Bild 10.png (vereins_wappen_500.tga geschrieben)")) << r.out.toStdString();
    r = runCli({"--dir", dir.path(), "crest-from-picture", pictures.file("10.png"), "1000"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains("von 0 bis 999")) << r.err.toStdString();

    r = runCli({"--dir", dir.path(), "crest-from-picture", pictures.path()});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.out.contains("10.png: Wappen ")) << r.out.toStdString();
    EXPECT_TRUE(r.out.contains("unbekannt.png: kein Verein mit dieser Nummer oder diesem Namen")) << r.out.toStdString();
    EXPECT_TRUE(r.out.endsWith("1 von 2 Bildern als Wappen geschrieben.\n")) << r.out.toStdString();
}
