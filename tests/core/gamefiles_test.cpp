#include "core/gamefiles.h"
#include "support/qstringprint.h"
#include "support/testsupport.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace zorbo;
using namespace zorbo::test;

namespace {

void setTime(const QString &path, const QDateTime &time)
{
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadWrite));
    ASSERT_TRUE(f.setFileTime(time, QFileDevice::FileModificationTime));
}

} // namespace

TEST(GameFiles, AChangedSizeTimeOrContentAsksAnUnchangedFileDoesNot)
{
    NewWorld w;
    const QString file = w.file("1_tm.cfg");
    const QDateTime then(QDate(2026, 11, 1), QTime(12, 0, 0));
    ASSERT_TRUE(writeBytes(file, "NEUES_TEAM\r\n"));
    setTime(file, then);
    // Nothing remembered yet: no question.
    EXPECT_FALSE(changedsince(w.db(), file));
    rememberfile(w.db(), file);
    EXPECT_FALSE(changedsince(w.db(), file));

    // Same size and time, other content.
    ASSERT_TRUE(writeBytes(file, "NEUES_TEAX\r\n"));
    setTime(file, then);
    QDateTime when;
    EXPECT_TRUE(changedsince(w.db(), file, &when));
    EXPECT_EQ(when, then);
    EXPECT_EQ(changedwords(file, when),
              "Die Datei " + file + " wurde am 01.11.2026 um 12:00:00 geändert, nach dem letzten Import oder Export des Editors.");

    // Same content, another time.
    ASSERT_TRUE(writeBytes(file, "NEUES_TEAM\r\n"));
    setTime(file, then.addSecs(1));
    EXPECT_TRUE(changedsince(w.db(), file));
    setTime(file, then);
    EXPECT_FALSE(changedsince(w.db(), file));

    // Another size; then remembered again after an export.
    ASSERT_TRUE(writeBytes(file, "NEUES_TEAM\r\n\r\n"));
    setTime(file, then);
    EXPECT_TRUE(changedsince(w.db(), file));
    rememberfile(w.db(), file);
    EXPECT_FALSE(changedsince(w.db(), file));
    // A file that is gone is no question.
    QFile::remove(file);
    EXPECT_FALSE(changedsince(w.db(), file));
}

TEST(GameFiles, AWorldOfTheLastVersionGetsTheTableAndKeepsItsRows)
{
    TempFolder dir;
    const QString path = dir.file("zorbo.mdb");
    {
        OpenedDb o = opendb(path);
        ASSERT_TRUE(o.db);
        o.db->exec("INSERT INTO vereine (NUMMER, NAME) VALUES (5, 'Alt'); DROP TABLE spieldateien; PRAGMA user_version = 3");
    }
    OpenedDb again = opendb(path);
    ASSERT_EQ(again.state, DbOpenState::Opened) << again.message.toStdString();
    EXPECT_EQ(again.db->scalar("PRAGMA user_version").toInt(), zorboSchemaVersion);
    EXPECT_EQ(again.db->scalar("SELECT NAME FROM vereine WHERE NUMMER = 5").toString(), "Alt");
    ASSERT_TRUE(writeBytes(dir.file("wa.res"), "RESF"));
    rememberfile(*again.db, dir.file("wa.res"));
    EXPECT_TRUE(rememberedfile(*again.db, dir.file("wa.res")).has_value());
}

// A world of the version before remembers its files by SHA-256; those rows
// still tell an unchanged file from a changed one after the upgrade.
TEST(GameFiles, FilesRememberedByAnEarlierVersionStillTellChanges)
{
    TempFolder dir;
    const QString path = dir.file("zorbo.mdb");
    const QString file = dir.file("1_sp.cfg");
    const QDateTime then(QDate(2026, 11, 2), QTime(8, 30, 0));
    ASSERT_TRUE(writeBytes(file, "NEUER_SPIELER\r\n"));
    setTime(file, then);
    {
        OpenedDb o = opendb(path);
        ASSERT_TRUE(o.db);
        o.db->exec("ALTER TABLE spieldateien RENAME COLUMN abdruck TO sha256; PRAGMA user_version = 5");
        o.db->run("INSERT INTO spieldateien VALUES (?1, ?2, ?3, ?4)", QFileInfo(file).canonicalFilePath(),
                  QFileInfo(file).size(), then.toMSecsSinceEpoch(),
                  QCryptographicHash::hash("NEUER_SPIELER\r\n", QCryptographicHash::Sha256));
    }
    OpenedDb again = opendb(path);
    ASSERT_EQ(again.state, DbOpenState::Opened) << again.message.toStdString();
    EXPECT_FALSE(changedsince(*again.db, file));
    ASSERT_TRUE(writeBytes(file, "NEUER_SPIELEX\r\n"));
    setTime(file, then);
    EXPECT_TRUE(changedsince(*again.db, file));
    // Remembered anew, by the print of this version.
    rememberfile(*again.db, file);
    EXPECT_FALSE(changedsince(*again.db, file));
    EXPECT_EQ(rememberedfile(*again.db, file)->print.size(), 16);
}
