// Edits on many players at once: each edit changes exactly the rows it
// should, an edit against a rule changes nothing and names the field, and
// a run is one step of the history.
#include "core/history.h"
#include "editor/bulkedit.h"
#include "players/playersworld.h"

using namespace zorbo;

namespace {

// What the edits would make of the players' fields, as "1 Stärke 2,5→3".
QStringList changes(const BulkEditResult &r)
{
    QStringList out;
    for (const PlayerChange &c : r.preview)
        for (const PlayerFieldChange &f : c.fields)
            out << QStringLiteral("%1 %2 %3→%4").arg(c.nummer).arg(f.field, f.before, f.after);
    return out;
}

BulkEditResult edit(test::PlayersWorld &w, const QList<qint64> &players, const QList<PlayerEdit> &edits)
{
    const FacePictures faces;
    return runbulkedit(*w.world, players, edits, faces);
}

} // namespace

TEST(BulkEdit, EachEditChangesExactlyItsRows)
{
    test::PlayersWorld w;
    const FacePictures faces;
    const auto preview = [&](const QList<qint64> &players, const QList<PlayerEdit> &edits) {
        return changes(bulkedit(w.db(), players, edits, faces, false));
    };
    EXPECT_EQ(preview({1, 2}, {PlayerEdit::set("Land", "Brasilien")}),
              QStringList({"1 Land Deutschland→Brasilien", "2 Land Deutschland→Brasilien"}));
    EXPECT_EQ(preview({1, 4}, {PlayerEdit::set("Position", "Tor"), PlayerEdit::set("Resteinsätze", "0")}),
              QStringList({"1 Position Sturm→Tor", "1 Resteinsätze 10→0", "4 Position Abwehr→Tor"}))
        << "a value a player has already is no change";
    EXPECT_EQ(preview({5}, {PlayerEdit::set("Größe", "190"), PlayerEdit::set("Vorname", "Jo")}),
              QStringList({"5 Vorname João→Jo", "5 Größe 178→190"}));
    // Half stars, bounded to six stars; the maximum goes along with a strength passing it.
    EXPECT_EQ(preview({3, 8}, {PlayerEdit::strength(3)}),
              QStringList({"3 Stärke 5,5→6", "8 Stärke 3→4,5", "8 Maxstärke 3→4,5"}));
    EXPECT_EQ(preview({7}, {PlayerEdit::strength(-4), PlayerEdit::maximum(1)}),
              QStringList({"7 Stärke 0,5→0", "7 Maxstärke 1→1,5"}));
    // Squad numbers 1 to n within each club by position, then name: the whole
    // squad of Santos FC, though only one of its players was chosen.
    EXPECT_EQ(preview({5}, {PlayerEdit::of(PlayerEdit::Renumber)}),
              QStringList({"5 Rückennummer 9→3", "4 Rückennummer 3→1", "6 Rückennummer 9→2"}));
    EXPECT_EQ(preview({1}, {PlayerEdit::of(PlayerEdit::ClearTalents)}),
              QStringList({"1 Erlernt 3 4→", "1 Gesperrt 5→"}));
    // New faces only of pictures there are.
    const FacePictures pictures(w.world->settings().folder(GesichtFolder));
    ASSERT_TRUE(bulkedit(w.db(), {2, 3}, {PlayerEdit::of(PlayerEdit::NewFaces)}, pictures, true).result.ok);
    for (qint64 p : {2, 3}) {
        const qint64 face = w.db().scalar("SELECT GESICHT FROM spieler WHERE NUMMER = ?1", p).toLongLong();
        EXPECT_NE(face, 0);
        EXPECT_EQ(pictures.checkgesicht(face), face) << "every part of face " << face << " has its picture";
    }

    // The preview wrote nothing; the run writes what it showed, as one step.
    const QStringList before = w.players();
    const BulkEditResult run = edit(w, {1, 2}, {PlayerEdit::set("Land", "Brasilien"), PlayerEdit::strength(1)});
    ASSERT_TRUE(run.result.ok) << run.result.message.toStdString();
    EXPECT_EQ(run.changed, 2);
    EXPECT_EQ(w.value("SELECT group_concat(NATION || ':' || \"Stärke\", ' ') FROM spieler WHERE NUMMER IN (1, 2)").toString(),
              "Brasilien:6000 Brasilien:8000");
    EXPECT_EQ(w.value("SELECT count(*) FROM spieler WHERE NATION = 'Brasilien'").toInt(), 5) << "no other row changed";
    ASSERT_EQ(w.world->history().size(), 1);
    EXPECT_EQ(w.world->history()[0].text, "2 Spieler auf einmal bearbeitet");
    ASSERT_TRUE(w.world->undo().ok);
    EXPECT_EQ(w.players(), before);

    // An edit that changes nothing leaves no step.
    EXPECT_EQ(edit(w, {4}, {PlayerEdit::set("Land", "Brasilien")}).changed, 0);
    EXPECT_EQ(w.world->history().size(), 1);
}

TEST(BulkEdit, AnEditAgainstARuleChangesNothingAndNamesTheField)
{
    test::PlayersWorld w;
    const QStringList before = w.players();
    const auto refused = [&](const QList<qint64> &players, const QList<PlayerEdit> &edits, const QString &field) {
        const BulkEditResult r = edit(w, players, edits);
        EXPECT_FALSE(r.result.ok);
        EXPECT_TRUE(r.result.message.startsWith(field + ":")) << r.result.message.toStdString();
        EXPECT_EQ(r.changed, 0);
        EXPECT_EQ(w.players(), before);
        EXPECT_TRUE(w.world->history().isEmpty());
        return r;
    };
    // Player 1's maximum would come down to his strength; player 8's would fall below his.
    const BulkEditResult below = refused({1, 8}, {PlayerEdit::maximum(-3)}, "Maxstärke");
    EXPECT_EQ(below.findings.value(0).player, 8);
    refused({1}, {PlayerEdit::set("Maxstärke", "2")}, "Maxstärke");
    refused({1, 2}, {PlayerEdit::set("Vorname", QString(33, 'x'))}, "Vorname");
    refused({1}, {PlayerEdit::set("Stärke", "6,5")}, "Stärke");
    refused({1}, {PlayerEdit::set("Größe", "groß")}, "Größe");
    refused({1}, {PlayerEdit::set("Position", "Libero")}, "Position");
    refused({1}, {PlayerEdit::set("Schuhgröße", "44")}, "Schuhgröße");

    QString error;
    EXPECT_EQ(parseedit("stärke+2", &error)->steps, 2);
    EXPECT_EQ(parseedit("Maxstärke-1", &error)->kind, PlayerEdit::StepMaximum);
    EXPECT_EQ(parseedit("land=Chile", &error)->value, "Chile");
    EXPECT_EQ(parseedit("Talente löschen", &error)->kind, PlayerEdit::ClearTalents);
    EXPECT_FALSE(parseedit("Nummer=5", &error)) << "numbers are never edited in bulk";
    EXPECT_FALSE(parseedit("Land", &error));
}

TEST(BulkEdit, ManyPlayersKeepARestorePointFirstUnlessNothingChanges)
{
    test::PlayersWorld w;
    w.db().exec("WITH RECURSIVE n(i) AS (SELECT 100 UNION ALL SELECT i + 1 FROM n WHERE i < 499) "
                "INSERT INTO spieler (NUMMER, NAME, VORNAME, \"Stärke\", \"Max_Stärke\", NATION) "
                "SELECT i, 'Viele', 'V.', 2000, 6000, 'Chile' FROM n");
    QList<qint64> many;
    for (qint64 p = 100; p < 500; ++p)
        many << p;
    const QString folder = w.dir.path();
    EXPECT_EQ(edit(w, many, {PlayerEdit::set("Land", "Chile")}).changed, 0);
    EXPECT_TRUE(restorepoints(folder, false).isEmpty()) << "no point for an edit that changes nothing";
    EXPECT_EQ(edit(w, many.mid(0, 10), {PlayerEdit::set("Land", "Peru")}).changed, 10);
    EXPECT_TRUE(restorepoints(folder, false).isEmpty()) << "no point for a few players";
    EXPECT_EQ(edit(w, many, {PlayerEdit::strength(1)}).changed, 400);
    const QList<RestorePoint> points = restorepoints(folder);
    ASSERT_EQ(points.size(), 1);
    EXPECT_EQ(points[0].reason, "Bearbeiten auf vielen");
    EXPECT_EQ(points[0].players, 408) << "the world as it was before";
}
