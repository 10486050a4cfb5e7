// Two worlds compared, their difference written as a change file and
// applied to a third world with its conflicts.
#include "exchange/changeapply.h"
#include "exchange/configruns.h"
#include "exchange/worlddiff.h"
#include "support/qstringprint.h"
#include "support/testsupport.h"

#include <QCryptographicHash>
#include <QFile>
#include <QSet>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::dumpworld;
using zorbo::test::NewWorld;
using zorbo::test::TempFolder;

namespace {

// Two countries, three clubs with three players each (player 100 + 10 * club + i).
void fillsmallworld(Database &db)
{
    db.exec("INSERT INTO vereine_national (NUMMER, NAME, NATION, KONTINENT) VALUES "
            "(1, 'Deutschland', 'Deutschland', 'West-Europa'), (2, 'Österreich', 'Österreich', 'West-Europa')");
    db.exec("INSERT INTO vereine (NUMMER, NAME, NATION, F_HOSE_SPIELER, TRIKOT_ART) VALUES "
            "(10, 'SV Beispiel', 'Deutschland', '255,255,255', 3), (11, 'FC Köln', 'Deutschland', '  0,  0,  0', 4), "
            "(12, 'Werder Nordstadt', 'Österreich', ' 48, 48, 48', 5)");
    for (int club = 10; club <= 12; ++club) {
        for (int i = 0; i < 3; ++i) {
            const int p = 100 + 10 * (club - 10) + i;
            db.run("INSERT INTO spieler (NUMMER, NAME, VORNAME, \"Stärke\", ART, ERLERNT, GESPERRT) VALUES (?1, ?2, 'A.', 4000, ?3, '1', '')",
                   p, QStringLiteral("Spieler%1").arg(p), i);
            db.run("INSERT INTO kaderzeilen (verein, spieler) VALUES (?1, ?2)", club, p);
        }
    }
}

QStringList world(Database &db)
{
    return dumpworld(db, worldtables(), true);
}

QStringList texts(const QList<EntityChange> &changes)
{
    QStringList lines;
    for (const EntityChange &c : changes)
        lines << c.text();
    return lines;
}

QString talent(Database &db, int id)
{
    return db.scalar("SELECT name FROM e_attribute WHERE id = ?1", id).toString();
}

// A base world in base.mdb and the other modder's copy of it in andere.mdb.
struct Worlds {
    NewWorld base;
    QString other = base.file("andere.mdb");
    Worlds()
    {
        fillsmallworld(*base);
        base->copyto(other);
    }
    // Changes the other world.
    void change(const QString &sql)
    {
        Database db(other);
        db.exec(sql);
    }
};

// What turns the base into the other world, from the other world's side.
ChangeFile exported(Worlds &w)
{
    Database db(w.other);
    ChangeFileRead made = changesagainst(db, w.base->path(), QStringLiteral("Test"));
    EXPECT_TRUE(made.result.ok) << made.result.message.toStdString();
    return made.file;
}

TEST(WorldDiff, EveryKindOfChangeTypedAndInGerman)
{
    Worlds w;
    w.change("UPDATE vereine SET NAME = 'SV Beispiel 09', F_HOSE_SPIELER = '  0,128,  0' WHERE NUMMER = 10;"
             "INSERT INTO spieler (NUMMER, NAME, VORNAME) VALUES (70231, 'Müller', 'T.');"
             "INSERT INTO kaderzeilen (verein, spieler) VALUES (12, 70231);"
             "DELETE FROM spieler WHERE NUMMER = 121; DELETE FROM kaderzeilen WHERE spieler = 121;"
             "UPDATE kaderzeilen SET verein = 12 WHERE spieler = 111;"
             "UPDATE spieler SET ERLERNT = '1,2' WHERE NUMMER = 100;"
             "INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (13, 'Neu FC', 'Österreich')");
    const WorldDiff diff = diffworlds(*w.base, w.other);
    ASSERT_TRUE(diff.result.ok) << diff.result.message.toStdString();
    const QStringList expected{
        "Verein 10 „SV Beispiel“: Name „SV Beispiel“ → „SV Beispiel 09“; Heimtrikot Farbe Streifen „255,255,255“ → „  0,128,  0“",
        QStringLiteral("Spieler 100 „Spieler100“: Talente erlernt „%1“ → „%1, %2“").arg(talent(*w.base, 1), talent(*w.base, 2)),
        "Verein 13 „Neu FC“ neu",
        "Spieler 111 wechselt von „FC Köln“ nach „Werder Nordstadt“",
        "Spieler 121 entfernt",
        "Spieler 70231 „Müller“ neu",
    };
    EXPECT_EQ(texts(diff.changes), expected);
    EXPECT_EQ(diff.counts.added, 2);
    EXPECT_EQ(diff.counts.changed, 2);
    EXPECT_EQ(diff.counts.removed, 1);
    EXPECT_EQ(diff.counts.moved, 1);
    // Grouped by the country and club they belong to.
    EXPECT_EQ(diff.changes.at(3).club, "Werder Nordstadt");
    EXPECT_EQ(diff.changes.at(3).country, "Österreich");
    EXPECT_EQ(diff.changes.at(5).club, "Werder Nordstadt");
    // Nothing of the present world changed.
    NewWorld fresh;
    fillsmallworld(*fresh);
    EXPECT_EQ(world(*w.base), world(*fresh));

    // Taking over two of the changes brings exactly their rows.
    {
        OtherWorld other(*w.base, w.other);
        Transaction tx(*w.base);
        ASSERT_TRUE(takeover(*w.base, {diff.changes.at(0), diff.changes.at(3)}).ok);
        tx.commit();
    }
    EXPECT_EQ(w.base->scalar("SELECT NAME FROM vereine WHERE NUMMER = 10").toString(), "SV Beispiel 09");
    EXPECT_EQ(w.base->scalar("SELECT group_concat(verein) FROM kaderzeilen WHERE spieler = 111").toString(), "12");
    EXPECT_EQ(w.base->scalar("SELECT count(*) FROM spieler WHERE NUMMER IN (121, 70231)").toInt(), 1);
    EXPECT_EQ(texts(diffworlds(*w.base, w.other).changes).size(), 4);
}

TEST(WorldDiff, EqualWorldsAndWorldsThatCannotBeCompared)
{
    Worlds w;
    const WorldDiff same = diffworlds(*w.base, w.other);
    ASSERT_TRUE(same.result.ok);
    EXPECT_TRUE(same.changes.isEmpty());
    EXPECT_TRUE(same.changeset.isEmpty());
    EXPECT_FALSE(diffworlds(*w.base, w.base->path()).result.ok);
    const QString text = w.base.file("text.mdb");
    zorbo::test::writeBytes(text, "kein SQLite");
    const WorldDiff foreign = diffworlds(*w.base, text);
    EXPECT_FALSE(foreign.result.ok);
    EXPECT_TRUE(foreign.result.message.contains("text.mdb"));
}

TEST(WorldDiff, GameFilesAreReadIntoAScratchWorldAndCompared)
{
    NewWorld w;
    ASSERT_TRUE(importteamsrun(*w, ZORBO_EXAMPLES "/beispielwelt/1_tm.cfg").ok());
    ASSERT_TRUE(importplayersrun(*w, ZORBO_EXAMPLES "/beispielwelt/1_sp.cfg").ok());
    const QStringList before = world(*w);
    // The team file with one club renamed and one player line gone.
    QByteArray teams = zorbo::test::readBytes(ZORBO_EXAMPLES "/beispielwelt/1_tm.cfg");
    const qint64 club = w->scalar("SELECT min(NUMMER) FROM vereine WHERE NUMMER > 0").toLongLong();
    const QByteArray name = w->scalar("SELECT NAME FROM vereine WHERE NUMMER = ?1", club).toString().toLatin1();
    ASSERT_TRUE(teams.contains("\"" + name + "\""));
    teams.replace("\"" + name + "\"", "\"Umbenannt\"");
    const QString tm = w.file("1_tm.cfg");
    zorbo::test::writeBytes(tm, teams);
    const WorldDiff diff = diffgamefiles(*w, tm, ZORBO_EXAMPLES "/beispielwelt/1_sp.cfg", w.file("kratz.mdb"));
    ASSERT_TRUE(diff.result.ok) << diff.result.message.toStdString();
    ASSERT_EQ(texts(diff.changes),
              QStringList{QStringLiteral("Verein %1 „%2“: Name „%2“ → „Umbenannt“").arg(club).arg(QString::fromLatin1(name))});
    EXPECT_EQ(world(*w), before);
    // A file that can't be read names itself and changes nothing.
    zorbo::test::writeBytes(tm, "NEUES_TEAM\n NUMMER 99999999999\n");
    const WorldDiff bad = diffgamefiles(*w, tm, {}, w.file("kratz.mdb"));
    EXPECT_FALSE(bad.result.ok);
    EXPECT_EQ(world(*w), before);
}

TEST(ChangeFile, ExportThenApplyOnTheBaseGivesTheOtherWorld)
{
    Worlds w;
    w.change("UPDATE vereine SET NAME = 'SV Beispiel 09' WHERE NUMMER = 10;"
             "INSERT INTO spieler (NUMMER, NAME) VALUES (500, 'Neu'); INSERT INTO kaderzeilen (verein, spieler) VALUES (11, 500);"
             "DELETE FROM kaderzeilen WHERE spieler = 102; DELETE FROM spieler WHERE NUMMER = 102;"
             "UPDATE kaderzeilen SET verein = 10 WHERE spieler = 120;"
             "DELETE FROM vereine_national WHERE NUMMER = 2; UPDATE vereine SET NATION = 'Deutschland' WHERE NUMMER = 12");
    const QString path = w.base.file("beispiel.zae");
    ASSERT_TRUE(writechangefile(path, exported(w)).ok);
    const ChangeFileRead read = readchangefile(path);
    ASSERT_TRUE(read.result.ok) << read.result.message.toStdString();
    EXPECT_EQ(read.file.description, "Test");
    EXPECT_EQ(read.file.version, changeFileVersion);
    EXPECT_TRUE(texts(read.file.summary).contains("Verein 10 „SV Beispiel“: Name „SV Beispiel“ → „SV Beispiel 09“"));
    // Clubs by their names in the world the file brings.
    EXPECT_TRUE(texts(read.file.summary).contains("Spieler 120 wechselt von „Werder Nordstadt“ nach „SV Beispiel 09“"));

    Transaction tx(*w.base);
    const ApplyOutcome applied = applychanges(*w.base, read.file.changeset, {});
    ASSERT_TRUE(applied.result.ok) << applied.result.message.toStdString();
    tx.commit();
    Database other(w.other);
    EXPECT_EQ(world(*w.base), world(other));
    EXPECT_EQ(worldfingerprint(*w.base), read.file.fingerprint);

    // The second time nothing changes, and the answer says so.
    const QStringList before = world(*w.base);
    const ApplyOutcome again = applychanges(*w.base, read.file.changeset, {});
    EXPECT_TRUE(again.result.ok);
    EXPECT_EQ(again.applied, 0);
    EXPECT_EQ(again.already, again.changes);
    EXPECT_TRUE(again.result.message.contains("schon enthalten"));
    EXPECT_EQ(world(*w.base), before);
}

// The print of a world changes with any value of its world tables, the
// place of a value among the columns, a missing value against an empty one;
// worlds with the same rows give the same print however they were written.
TEST(ChangeFile, FingerprintTellsWorldsApartAndEqualOnesAlike)
{
    Worlds w;
    const QByteArray base = worldfingerprint(*w.base);
    EXPECT_EQ(base.size(), 16);
    {
        Database other(w.other);
        EXPECT_EQ(worldfingerprint(other), base);
    }
    // The same rows written the other way round, with the history and the
    // tables outside the world changed too.
    NewWorld reversed;
    fillsmallworld(*reversed);
    reversed->exec("CREATE TEMP TABLE k AS SELECT * FROM kaderzeilen; DELETE FROM kaderzeilen;"
                   "INSERT INTO kaderzeilen SELECT * FROM k ORDER BY zeile DESC; DROP TABLE k;"
                   "CREATE TEMP TABLE s AS SELECT * FROM spieler; DELETE FROM spieler;"
                   "INSERT INTO spieler SELECT * FROM s ORDER BY NUMMER DESC; DROP TABLE s;"
                   "UPDATE e_attribute SET beschreibung = 'anders'");
    EXPECT_EQ(worldfingerprint(*reversed), base);
    {
        OtherWorld attached(*reversed, w.other);
        ASSERT_TRUE(attached.result().ok);
        EXPECT_EQ(worldfingerprint(*reversed, OtherWorld::schema), base);
    }

    const QStringList changes{
        "UPDATE spieler SET NAME = 'Spieler10X' WHERE NUMMER = 100",           // a text of the same length
        "UPDATE spieler SET \"Stärke\" = 4001 WHERE NUMMER = 121",            // a number
        "UPDATE spieler SET NAME = 'Spieler1', VORNAME = '00A.' WHERE NUMMER = 100", // a value's bytes across columns
        "UPDATE vereine SET KURZNAME = '' WHERE NUMMER = 10",                    // empty instead of missing
        "UPDATE vereine SET STAERKE = 0.5 WHERE NUMMER = 11",                    // a fraction
        "UPDATE kaderzeilen SET verein = 11 WHERE spieler = 100",                // a squad row
        "INSERT INTO a4spieler (name) VALUES (NULL)",                            // an empty row
        "DELETE FROM vereine_national WHERE NUMMER = 2"};
    QSet<QByteArray> prints{base};
    for (const QString &sql : changes) {
        Database other(w.other);
        Transaction tx(other);
        other.exec(sql);
        const QByteArray print = worldfingerprint(other);
        EXPECT_FALSE(prints.contains(print)) << sql.toStdString();
        prints << print;
    }

    // A file of an earlier build carries a print of another kind: it reads,
    // keeps its print and applies like any other.
    w.change("UPDATE vereine SET NAME = 'SV Beispiel 09' WHERE NUMMER = 10");
    ChangeFile file = exported(w);
    file.fingerprint = QCryptographicHash::hash("eine Welt", QCryptographicHash::Sha1);
    const QString path = w.base.file("alt.zae");
    ASSERT_TRUE(writechangefile(path, file).ok);
    const ChangeFileRead read = readchangefile(path);
    ASSERT_TRUE(read.result.ok) << read.result.message.toStdString();
    EXPECT_EQ(read.file.fingerprint, file.fingerprint);
    EXPECT_FALSE(prints.contains(read.file.fingerprint));
    const ApplyOutcome preview = previewchanges(*w.base, read.file.changeset);
    EXPECT_TRUE(preview.result.ok);
    EXPECT_EQ(preview.changes, 1);
}

// The base; the file's world and this world each changed on their own.
struct Merge : Worlds {
    QString mine = base.file("meine.mdb");
    ChangeFile file;
    Merge()
    {
        base->copyto(mine);
        change("UPDATE vereine SET NAME = 'Name der Datei' WHERE NUMMER = 10;"  // changed differently here
               "UPDATE spieler SET NAME = 'Datei' WHERE NUMMER = 101;"           // gone here
               "DELETE FROM spieler WHERE NUMMER = 102;"                          // changed here
               "INSERT INTO spieler (NUMMER, NAME) VALUES (600, 'Dateispieler');" // number taken here
               "INSERT INTO kaderzeilen (verein, spieler) VALUES (11, 600);"      // club gone here
               "UPDATE spieler SET GROESSE = 190 WHERE NUMMER = 110;");           // no conflict
        file = exported(*this);
        Database db(mine);
        db.exec("UPDATE vereine SET NAME = 'Mein Name' WHERE NUMMER = 10;"
                "DELETE FROM spieler WHERE NUMMER = 101;"
                "UPDATE spieler SET NAME = 'Meins' WHERE NUMMER = 102;"
                "INSERT INTO spieler (NUMMER, NAME) VALUES (600, 'Meiner');"
                "DELETE FROM kaderzeilen WHERE verein = 11; DELETE FROM vereine WHERE NUMMER = 11;");
    }
};

TEST(ChangeFile, EveryConflictIsFoundAndEachChoiceGivesItsRows)
{
    Merge m;
    Database db(m.mine);
    const QStringList untouched = world(db);
    const ApplyOutcome preview = previewchanges(db, m.file.changeset);
    ASSERT_TRUE(preview.result.ok) << preview.result.message.toStdString();
    EXPECT_EQ(world(db), untouched);
    QMap<QString, Conflict::Kind> kinds;
    for (const Conflict &c : preview.conflicts)
        kinds.insert(c.id(), c.kind);
    const QMap<QString, Conflict::Kind> expected{{"vereine/10", Conflict::Changed},
                                                 {"spieler/101", Conflict::Missing},
                                                 {"spieler/102", Conflict::Deleted},
                                                 {"spieler/600", Conflict::Taken},
                                                 {"kaderzeilen/10", Conflict::Reference}};
    EXPECT_EQ(kinds, expected);
    for (const Conflict &c : preview.conflicts) {
        if (c.kind == Conflict::Changed) {
            ASSERT_EQ(c.values.size(), 1);
            EXPECT_EQ(c.values.first().before, "„SV Beispiel“");
            EXPECT_EQ(c.values.first().here, "„Mein Name“");
            EXPECT_EQ(c.values.first().file, "„Name der Datei“");
        }
    }

    // Without choices the whole is refused.
    {
        Transaction tx(db);
        const ApplyOutcome refused = applychanges(db, m.file.changeset, {});
        EXPECT_FALSE(refused.result.ok);
        EXPECT_EQ(refused.conflicts.size(), 5);
    }
    EXPECT_EQ(world(db), untouched);

    const auto applied = [&](Choice all) {
        Transaction tx(db);
        ApplyChoices choices;
        choices.all = all;
        const ApplyOutcome done = applychanges(db, m.file.changeset, choices);
        EXPECT_TRUE(done.result.ok) << done.result.message.toStdString();
        QStringList rows{db.scalar("SELECT NAME FROM vereine WHERE NUMMER = 10").toString(),
                         db.scalar("SELECT count(*) FROM spieler WHERE NUMMER = 101").toString(),
                         db.scalar("SELECT coalesce(max(NAME), 'weg') FROM spieler WHERE NUMMER = 102").toString(),
                         db.scalar("SELECT NAME FROM spieler WHERE NUMMER = 600").toString(),
                         db.scalar("SELECT count(*) FROM kaderzeilen WHERE verein = 11").toString(),
                         db.scalar("SELECT GROESSE FROM spieler WHERE NUMMER = 110").toString()};
        return rows; // rolled back with tx
    };
    EXPECT_EQ(applied(Choice::Mine), QStringList({"Mein Name", "0", "Meins", "Meiner", "0", "190"}));
    EXPECT_EQ(applied(Choice::Theirs), QStringList({"Name der Datei", "0", "weg", "Dateispieler", "1", "190"}));
    // One choice per conflict beside the one for all.
    Transaction tx(db);
    ApplyChoices mixed;
    mixed.all = Choice::Mine;
    mixed.each.insert("vereine/10", Choice::Theirs);
    ASSERT_TRUE(applychanges(db, m.file.changeset, mixed).result.ok);
    EXPECT_EQ(db.scalar("SELECT NAME FROM vereine WHERE NUMMER = 10").toString(), "Name der Datei");
    EXPECT_EQ(db.scalar("SELECT NAME FROM spieler WHERE NUMMER = 600").toString(), "Meiner");
}

TEST(ChangeFile, SquadRowsAddedOnBothSidesAreMergedNotConflicts)
{
    Worlds w;
    w.change("INSERT INTO kaderzeilen (verein, spieler) VALUES (10, 110)");
    const ChangeFile file = exported(w);
    // Here another row took the same number first.
    w.base->exec("INSERT INTO kaderzeilen (verein, spieler) VALUES (12, 100)");
    const auto squad = [&] {
        return w.base->scalar("SELECT group_concat(verein || ':' || spieler, ' ') FROM "
                              "(SELECT * FROM kaderzeilen WHERE spieler IN (100, 110) ORDER BY verein, spieler)").toString();
    };
    const ApplyOutcome preview = previewchanges(*w.base, file.changeset);
    EXPECT_TRUE(preview.conflicts.isEmpty());
    for (int round = 0; round < 2; ++round) {
        Transaction tx(*w.base);
        const ApplyOutcome done = applychanges(*w.base, file.changeset, {});
        ASSERT_TRUE(done.result.ok) << done.result.message.toStdString();
        EXPECT_EQ(done.applied, round == 0 ? 1 : 0);
        tx.commit();
        EXPECT_EQ(squad(), "10:100 10:110 11:110 12:100");
    }
}

TEST(ChangeFile, DamagedOrForeignFilesAreRefusedAndChangeNothing)
{
    Worlds w;
    w.change("UPDATE vereine SET NAME = 'Anders' WHERE NUMMER = 10");
    const QString path = w.base.file("a.zae");
    ASSERT_TRUE(writechangefile(path, exported(w)).ok);
    const auto refused = [](const QString &file) {
        const ChangeFileRead read = readchangefile(file);
        EXPECT_FALSE(read.result.ok) << file.toStdString();
        EXPECT_TRUE(read.result.message.contains(file)) << read.result.message.toStdString();
        return read.result.message;
    };
    // The changes altered behind the checksum.
    const QString altered = w.base.file("b.zae");
    QFile::copy(path, altered);
    {
        Database db(altered);
        db.exec("UPDATE aenderungen SET changeset = zeroblob(length(changeset))");
    }
    EXPECT_TRUE(refused(altered).contains("beschädigt"));
    // Cut short, not SQLite, a world instead of a change file, missing.
    QByteArray bytes = zorbo::test::readBytes(path);
    const QString cut = w.base.file("c.zae");
    zorbo::test::writeBytes(cut, bytes.left(bytes.size() / 2));
    refused(cut);
    const QString text = w.base.file("d.zae");
    zorbo::test::writeBytes(text, "Hallo");
    EXPECT_TRUE(refused(text).contains("keine Änderungsdatei"));
    EXPECT_TRUE(refused(w.other).contains("keine Änderungsdatei"));
    refused(w.base.file("fehlt.zae"));
    EXPECT_TRUE(readchangefile(path).result.ok);
}

// Changes damaged behind a checksum made to fit them: each is refused, or
// previewed and applied without harm; a refused apply changes nothing.
TEST(ChangeFile, AlteredChangesWithAFittingChecksumNeverHarmTheWorld)
{
    Worlds w;
    w.change("UPDATE vereine SET NAME = 'Anders' WHERE NUMMER = 10; DELETE FROM kaderzeilen WHERE spieler = 101;"
             "INSERT INTO spieler (NUMMER, NAME) VALUES (900, 'Neu'); UPDATE spieler SET ERLERNT = '4' WHERE NUMMER = 120");
    const QByteArray changes = exported(w).changeset;
    const QString path = w.base.file("x.zae");
    const QStringList before = world(*w.base);
    int refused = 0;
    for (qsizetype i = 0; i < changes.size(); ++i) {
        QByteArray altered = changes;
        altered[i] = char(altered[i] ^ (i % 2 ? 0x01 : 0x80));
        ChangeFile file = exported(w);
        file.changeset = altered;
        ASSERT_TRUE(writechangefile(path, file).ok);
        const ChangeFileRead read = readchangefile(path);
        if (!read.result.ok) {
            ++refused;
            continue;
        }
        Transaction tx(*w.base);
        const ApplyOutcome preview = previewchanges(*w.base, read.file.changeset);
        if (preview.result.ok) {
            ApplyChoices all;
            all.all = Choice::Theirs;
            applychanges(*w.base, read.file.changeset, all);
        }
        // rolled back with tx
    }
    EXPECT_GT(refused, 0);
    EXPECT_EQ(world(*w.base), before);
}

} // namespace
