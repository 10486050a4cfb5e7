// The player file for spreadsheets: written as a German spreadsheet reads
// it, read back exactly, and a file that can't be used changes nothing.
#include "editor/playercsv.h"
#include "editor/playerlist.h"
#include "platform/codepage.h"
#include "players/playersworld.h"

using namespace zorbo;

namespace {

QList<qint64> everyone(Database &db)
{
    QList<qint64> n;
    Statement st = db.prepare("SELECT NUMMER FROM spieler ORDER BY NUMMER");
    while (st.step())
        n << st.integer(0);
    return n;
}

CsvImport import(test::PlayersWorld &w, const QString &path, CsvOptions options = {})
{
    return runplayercsvimport(*w.world, path, options);
}

} // namespace

TEST(PlayerCsv, WritesWhatAGermanSpreadsheetReads)
{
    test::PlayersWorld w;
    const QByteArray bytes = playercsv(w.db(), {1, 6, 7, 8});
    ASSERT_TRUE(bytes.startsWith("\xEF\xBB\xBF"));
    const QStringList lines = QString::fromUtf8(bytes.mid(3)).split("\r\n");
    EXPECT_EQ(lines[0], "Nummer;Name;Vorname;Verein;Land;Position;Stärke;Maxstärke;Größe;Rückennummer;Resteinsätze;"
                        "Gesicht;Hautfarbe;Haarfarbe;Erlernt;Gesperrt");
    EXPECT_EQ(lines[1], "1;Müller;Thomas;FC Köln;Deutschland;Sturm;2,5;4;186;9;10;12345;1;2;3 4;5")
        << "talents apart by blanks: a spreadsheet would take \"3,4\" for a number";
    EXPECT_EQ(lines[2], "6;Pereira;\"Zé; \"\"Bola\"\"\nJr.\";Santos FC;Brasilien;Sturm;1,25;2;170;9;0;0;0;0;;");
    EXPECT_EQ(lines[3], "7;Ärger;Ändi;vereinslos;Deutschland;Mittelfeld;0,5;1;175;7;0;0;0;0;;");
    EXPECT_TRUE(lines[4].startsWith("8;Markt;Max;Transfermarkt;"));
    EXPECT_EQ(lines[5], "") << "each row ends in CR LF";
}

TEST(PlayerCsv, RoundTripIsExactAndAnUneditedFileChangesNothing)
{
    test::PlayersWorld w;
    const QString file = w.dir.file("spieler.csv");
    ASSERT_TRUE(exportplayercsv(w.db(), everyone(w.db()), file).ok);
    const QStringList before = w.players();
    const CsvImport same = import(w, file);
    ASSERT_TRUE(same.result.ok) << same.result.message.toStdString();
    EXPECT_EQ(same.changed, 0);
    EXPECT_TRUE(w.world->history().isEmpty()) << "no step";
    EXPECT_EQ(w.players(), before);

    // Into an empty world as new players: the same rows, and each joins the team the file names.
    test::PlayersWorld other;
    other.db().exec("DELETE FROM kaderzeilen; DELETE FROM spieler");
    EXPECT_FALSE(import(other, file).result.ok) << "unknown numbers only when asked";
    CsvOptions create;
    create.createPlayers = true;
    const CsvImport made = import(other, file, create);
    ASSERT_TRUE(made.result.ok) << made.result.message.toStdString();
    EXPECT_EQ(made.created, 8);
    EXPECT_EQ(test::dumpworld(other.db(), {"spieler"}, true), test::dumpworld(w.db(), {"spieler"}, true));
    EXPECT_EQ(other.value("SELECT group_concat(verein || ':' || spieler, ' ') FROM kaderzeilen").toString(),
              "10:1 10:2 10:3 11:4 11:5 11:6 0:8");

    // An edit in the spreadsheet, LF line ends, a star text with its word: only that field changes.
    QString text = QString::fromUtf8(test::readBytes(file).mid(3));
    text.replace("\r\n", "\n");
    text.replace("1;Müller;Thomas;FC Köln;Deutschland;Sturm;2,5;4;", "1;Müller;Thomas;FC Köln;Deutschland;Sturm;3,25 Sterne;4,0;");
    text.replace(";3 4;5\n", ";3,4;5\n"); // talents apart by commas read the same
    ASSERT_TRUE(test::writeBytes(file, text.toUtf8()));
    const CsvImport edited = import(w, file);
    ASSERT_TRUE(edited.result.ok) << edited.result.message.toStdString();
    ASSERT_EQ(edited.changed, 1);
    ASSERT_EQ(edited.preview[0].fields.size(), 1);
    EXPECT_EQ(edited.preview[0].fields[0].before, "2,5");
    EXPECT_EQ(edited.preview[0].fields[0].after, "3,25");
    EXPECT_EQ(w.value("SELECT \"Stärke\" FROM spieler WHERE NUMMER = 1").toLongLong(), 6500);
    EXPECT_EQ(w.world->history().size(), 1);
}

TEST(PlayerCsv, AFileThatCantBeUsedChangesNothingAndSaysWhere)
{
    test::PlayersWorld w;
    const QString file = w.dir.file("spieler.csv");
    const QString header = "Nummer;Name;Stärke;Maxstärke\r\n";
    const QStringList before = w.players();
    const auto refused = [&](const QByteArray &bytes, const QString &where, CsvOptions options = {}) {
        ASSERT_TRUE(test::writeBytes(file, bytes));
        const CsvImport r = import(w, file, options);
        EXPECT_FALSE(r.result.ok);
        EXPECT_TRUE(r.result.message.contains(where)) << r.result.message.toStdString();
        EXPECT_TRUE(r.result.message.contains("spieler.csv")) << r.result.message.toStdString();
        EXPECT_EQ(w.players(), before);
    };
    // The first row would pass; the damage further down stops the whole file.
    refused((header + "1;Müller;3;4\r\n2;Özil;drei;4,5\r\n").toUtf8(), "Zeile 3, Spalte „Stärke“");
    refused((header + "1;Müller;3;4\r\n2;\"Özil;3;4\r\n").toUtf8(), "Zeile 3: Anführungszeichen");
    refused((header + "1;Müller;3\r\n").toUtf8(), "Zeile 2: 3 Felder statt 4");
    refused((header + "1;Müller;3;2\r\n").toUtf8(), "Maxstärke") ;
    refused((header + "1;Müller;7;7\r\n").toUtf8(), "Zeile 2, Spalte „Stärke“");
    refused((header + "99;Neu;1;1\r\n").toUtf8(), "Zeile 2, Spalte „Nummer“: Spieler 99 gibt es nicht");
    refused((header + "1;Müller;3;4\r\n1;Müller;3;4\r\n").toUtf8(), "zweimal");
    refused("Nummer;Schuhgröße\r\n1;44\r\n", "Spalte „Schuhgröße“");
    refused(("Nummer;Name\r\n1;" + QString(33, 'x') + "\r\n").toUtf8(), "Spalte „Name“");

    // Code page 1252 only when asked.
    const QByteArray cp1252 = *toCp1252("Nummer;Name;Vorname\r\n7;Ärger;Jörg\r\n");
    refused(cp1252, "Windows-1252");
    CsvOptions asked;
    asked.encoding = FileEncoding::Cp1252;
    const CsvImport read = import(w, file, asked);
    ASSERT_TRUE(read.result.ok) << read.result.message.toStdString();
    EXPECT_EQ(w.value("SELECT VORNAME FROM spieler WHERE NUMMER = 7").toString(), "Jörg");
}
