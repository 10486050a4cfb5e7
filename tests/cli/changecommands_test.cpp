#include "core/generator.h"
#include "support/cli.h"
#include "support/testsupport.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

using namespace zorbo;
using namespace zorbo::test;

namespace {

// A world of one club of 20 in the folder, closed for the commands.
void makeworld(const QString &folder)
{
    OpenedDb db = opendb(QDir(folder).filePath("zorbo.mdb"));
    db.db->run("INSERT INTO vereine_national (NUMMER, NAME, NATION) VALUES (1, 'Deutschland', 'Deutschland')");
    db.db->run("INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (5, 'SV Probe', 'Deutschland')");
    spieler20new(*db.db, 5, "Deutschland", 3);
}

QString clubname(const QString &folder)
{
    return opendb(QDir(folder).filePath("zorbo.mdb")).db->scalar("SELECT NAME FROM vereine WHERE NUMMER = 5").toString();
}

} // namespace

TEST(CliChanges, DiffExportShowAndApplyWithConflicts)
{
    TempFolder mine, theirs;
    makeworld(mine.path());
    ASSERT_TRUE(QFile::copy(mine.file("zorbo.mdb"), theirs.file("zorbo.mdb")));
    const auto in = [](const TempFolder &f, const QStringList &args) { return runCli(QStringList{"--dir", f.path()} + args); };
    ASSERT_EQ(in(theirs, {"rename-club", "5", "SV Probe 09"}).exitCode, 0);

    const CliRun diff = in(mine, {"diff", "--json", theirs.path()});
    ASSERT_EQ(diff.exitCode, 0) << diff.err.toStdString();
    const QJsonObject o = QJsonDocument::fromJson(diff.out.toUtf8()).object();
    EXPECT_EQ(o["anzahl"].toObject()["geändert"].toInt(), 1);
    const QJsonArray list = o["aenderungen"].toArray();
    ASSERT_EQ(list.size(), 1) << diff.out.toStdString();
    EXPECT_EQ(list[0].toObject()["text"].toString(), "Verein 5 „SV Probe“: Name „SV Probe“ → „SV Probe 09“");
    EXPECT_EQ(clubname(mine.path()), "SV Probe");

    const QString file = theirs.file("umbenannt.zae");
    const CliRun exported = in(theirs, {"changes", "export", "--since", "1", "--description", "Ein Name", file});
    ASSERT_EQ(exported.exitCode, 0) << exported.err.toStdString();
    ASSERT_EQ(in(mine, {"rename-club", "5", "Mein Probe"}).exitCode, 0);

    const CliRun shown = in(mine, {"changes", "show", "--json", file});
    ASSERT_EQ(shown.exitCode, 0) << shown.err.toStdString();
    const QJsonObject s = QJsonDocument::fromJson(shown.out.toUtf8()).object();
    EXPECT_EQ(s["beschreibung"].toString(), "Ein Name");
    const QJsonArray conflicts = s["konflikte"].toArray();
    ASSERT_EQ(conflicts.size(), 1);
    const QJsonObject value = conflicts[0].toObject()["werte"].toArray()[0].toObject();
    EXPECT_EQ(value["vorher"].toString(), "„SV Probe“");
    EXPECT_EQ(value["hier"].toString(), "„Mein Probe“");
    EXPECT_EQ(value["datei"].toString(), "„SV Probe 09“");

    // Without a choice a conflict refuses the whole and is listed.
    const CliRun refused = in(mine, {"changes", "apply", file});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.err.contains("Verein 5 „Mein Probe“")) << refused.err.toStdString();
    EXPECT_EQ(clubname(mine.path()), "Mein Probe");
    ASSERT_EQ(in(mine, {"changes", "apply", file, "--mine"}).exitCode, 0);
    EXPECT_EQ(clubname(mine.path()), "Mein Probe");
    const CliRun taken = in(mine, {"changes", "apply", file, "--theirs"});
    ASSERT_EQ(taken.exitCode, 0) << taken.err.toStdString();
    EXPECT_EQ(clubname(mine.path()), "SV Probe 09");
    EXPECT_TRUE(in(mine, {"history"}).out.contains("Änderungsdatei „umbenannt.zae“ angewendet"));
    const CliRun again = in(mine, {"changes", "apply", file});
    EXPECT_EQ(again.exitCode, 0);
    EXPECT_TRUE(again.out.contains("schon enthalten")) << again.out.toStdString();
    EXPECT_TRUE(in(mine, {"diff", theirs.file("zorbo.mdb")}).out.contains("Die beiden Welten sind gleich."));

    // A file that is no change file changes nothing.
    const CliRun foreign = in(mine, {"changes", "apply", theirs.file("zorbo.mdb")});
    EXPECT_EQ(foreign.exitCode, 1);
    EXPECT_TRUE(foreign.err.contains("keine Änderungsdatei")) << foreign.err.toStdString();
}
