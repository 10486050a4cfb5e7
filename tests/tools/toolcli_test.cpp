#include "core/settings.h"
#include "support/cli.h"
#include "support/testsupport.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace zorbo;
using namespace zorbo::test;

namespace {

// A world made by the command line, with two clubs and free players put in
// through the database.
struct CliWorld {
    TempFolder dir;
    CliWorld()
    {
        EXPECT_EQ(runCli({"--dir", dir.path(), "init"}).exitCode, 0);
        OpenedDb opened = opendb(dir.file("zorbo.mdb"));
        Database &db = *opened.db;
        db.exec("INSERT INTO vereine (NUMMER, NAME) VALUES (10, 'FC Links mit langem Namen'), (20, 'SV Rechts'); "
                "INSERT INTO spieler (NUMMER, NAME, VORNAME, RUECKENNUMMER, \"Stärke\") VALUES "
                "(5000, 'Links', 'L.', 4, 8000), (5001, 'Doppel', 'D.', 4, 2000), (5002, 'Rechts', 'R.', 1, 6000); "
                "INSERT INTO vereinspieler VALUES (10, 5000), (10, 5001), (20, 5002); "
                "INSERT INTO a4spieler (name, vorname, land, verein, position, staerke) VALUES "
                "('Frei', 'Fritz', 'Utopia', 'FC Export', 2, 5000), ('Los', 'Lars', 'Utopia', 'FC Export', 3, 3000)");
    }
    CliRun cli(const QStringList &args) { return runCli(QStringList{"--dir", dir.path()} + args); }
    QVariant value(const QString &sql)
    {
        OpenedDb opened = opendb(dir.file("zorbo.mdb"));
        return opened.db->scalar(sql);
    }
};

} // namespace

TEST(ToolsCli, MarketSwapsNumbersAndNames)
{
    CliWorld w;
    CliRun r = w.cli({"market-fill"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains("2 freie Spieler")) << r.out.toStdString();

    r = w.cli({"swap-players", "5000", "5002"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(w.value("SELECT verein FROM vereinspieler WHERE spieler = 5000").toInt(), 20);
    r = w.cli({"swap-players", "5000", "99999"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains("99999")) << r.err.toStdString();

    const qint64 id = w.value("SELECT id FROM a4spieler WHERE name = 'Frei'").toLongLong();
    r = w.cli({"swap-free", QString::number(id), "5001"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(w.value("SELECT NAME FROM spieler WHERE NUMMER = 5001").toString(), "Frei");

    w.value("UPDATE spieler SET RUECKENNUMMER = 1 WHERE NUMMER = 5001");
    r = w.cli({"check-numbers"});
    ASSERT_EQ(r.exitCode, 0);
    EXPECT_TRUE(r.out.contains("*1 Rechts, R. [5002]")) << r.out.toStdString();
    EXPECT_EQ(w.cli({"set-number", "5001", "0"}).exitCode, 1);
    ASSERT_EQ(w.cli({"set-number", "5001", "12"}).exitCode, 0);
    EXPECT_TRUE(w.cli({"check-numbers"}).out.contains("Keine Fehler vorhanden"));

    EXPECT_TRUE(w.cli({"check-names"}).out.contains("FC Links mit langem Namen")) << r.out.toStdString();
    ASSERT_EQ(w.cli({"rename-club", "10", "FC Links"}).exitCode, 0);
    EXPECT_TRUE(w.cli({"check-names"}).out.contains("Keine Fehler vorhanden"));
    EXPECT_EQ(w.cli({"rename-club", "10", ""}).exitCode, 1);
}

TEST(ToolsCli, PicturesWipeAndCompaction)
{
    CliWorld w;
    const QString folder = loadsettings(w.dir.path()).folder(ZorbospielerFolder);
    ASSERT_TRUE(QDir().mkpath(folder));
    writeBytes(folder + "/Links_Lothar.jpg", "l");
    writeBytes(folder + "/Wer.jpg", "w");
    w.value("UPDATE spieler SET NAME = 'Wer' WHERE NUMMER IN (5001, 5002)");
    CliRun r = w.cli({"assign-pictures"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(readBytes(folder + "/5000.jpg"), "l");
    EXPECT_TRUE(r.out.contains("Wer.jpg")) << r.out.toStdString();

    r = w.cli({"wipe"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains("--yes"));
    EXPECT_EQ(w.value("SELECT count(*) FROM vereine").toInt(), 3);
    ASSERT_EQ(w.cli({"wipe", "--yes"}).exitCode, 0);
    EXPECT_EQ(w.value("SELECT count(*) FROM vereine").toInt(), 1);

    r = w.cli({"compact"});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains("komprimiert"));
}
