#include "tools/playerpictures.h"
#include "toolsworld.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace zorbo;
using namespace zorbo::test;

namespace {

struct PictureWorld : ToolsWorld {
    QString folder = dir.file("spielerbilder");
    PictureWorld()
    {
        QDir().mkpath(folder);
        club(10, "FC Bild");
        player(500, 10, "Müller", "T.", 1, 1, 7000);
        player(501, 10, "Müller", "G.", 2);
        player(502, 10, "Schmidt", "A.", 3);
        player(503, 10, "Özil", "M.", 4);
    }
    void picture(const QString &name, const QByteArray &bytes = "jpg") { writeBytes(folder + "/" + name, bytes); }
    static QStringList sorted(QStringList names)
    {
        names.sort();
        return names;
    }
    QStringList files(const QString &sub = {}) const { return sorted(QDir(folder + sub).entryList(QDir::Files)); }
};

} // namespace

TEST(PlayerPictures, NameFormsFindTheirPlayersAndDigitsAreLeftAlone)
{
    PictureWorld w;
    w.picture("müller_thomas_extra.jpg");
    w.picture("Schmidt.JPG");
    w.picture("ÖZIL_mesut.jpg");
    w.picture("123.jpg", "fertig");
    w.picture("Zorro.jpg");
    w.picture("notiz.txt");
    EXPECT_EQ(namedpictures(w.folder), (QStringList{"müller_thomas_extra.jpg", "Schmidt.JPG", "Zorro.jpg", "ÖZIL_mesut.jpg"}));

    const QList<PictureCandidate> thomas = picturecandidates(w.db(), "müller_thomas_extra.jpg", QLatin1Char(','));
    ASSERT_EQ(thomas.size(), 1);
    EXPECT_EQ(thomas[0].nummer, 500);
    EXPECT_EQ(thomas[0].line, "Müller T. (Deutschland; 3,5 Sterne), FC Bild, Nr. 1 [500]");
    EXPECT_EQ(picturecandidates(w.db(), "Müller.jpg", QLatin1Char('.')).size(), 2) << "the surname alone finds all";

    const PictureRun run = assignpictures(w.db(), w.folder, QLatin1Char(','));
    ASSERT_TRUE(run.result.ok) << run.result.message.toStdString();
    EXPECT_EQ(run.assigned, 3);
    EXPECT_EQ(run.unmatched, QStringList{"Zorro.jpg"});
    EXPECT_EQ(w.files(), (QStringList{"123.jpg", "500.jpg", "502.jpg", "503.jpg", "Zorro.jpg", "notiz.txt"}));
    EXPECT_EQ(readBytes(w.folder + "/123.jpg"), "fertig");
}

TEST(PlayerPictures, AStoredWholeFirstNameIsMatchedByItsFirstLetter)
{
    PictureWorld w;
    w.club(20, "SV Anders");
    w.player(510, 20, "Fuß", "Björn", 9);
    w.player(511, 10, "Fuß", "B.", 4);
    w.player(512, 10, "Fuß", "Karl", 5);
    w.db().run("INSERT INTO spieler (NUMMER, NAME, VORNAME, NATION, \"Stärke\", RUECKENNUMMER) "
               "VALUES (513, 'Fuß', 'bernd', 'Utopia', 2000, 3)");
    const QList<PictureCandidate> found = picturecandidates(w.db(), "Fuß_Björn.jpg", QLatin1Char(','));
    QStringList lines;
    for (const PictureCandidate &c : found)
        lines << c.line;
    EXPECT_EQ(lines, (QStringList{"Fuß Björn (Deutschland; 2 Sterne), SV Anders, Nr. 9 [510]",
                                  "Fuß B. (Deutschland; 2 Sterne), FC Bild, Nr. 4 [511]",
                                  "Fuß bernd (Utopia; 1 Sterne), ohne Verein, Nr. 3 [513]"}));
    EXPECT_EQ(picturecandidates(w.db(), "Fuß_Karl.jpg", QLatin1Char(',')).size(), 1);
}

TEST(PlayerPictures, SeveralCandidatesWaitForAChoiceAndAReplacedPictureIsKept)
{
    PictureWorld w;
    w.picture("Müller.jpg", "neu");
    w.picture("501.JPG", "alt");
    w.picture("Schmidt_a.jpg", "schmidt");

    // Without anyone to choose, the picture waits and is listed with its candidates.
    PictureRun run = assignpictures(w.db(), w.folder, QLatin1Char(','));
    EXPECT_EQ(run.assigned, 1);
    ASSERT_EQ(run.undecided.size(), 1);
    EXPECT_EQ(run.undecided[0].first, "Müller.jpg");
    EXPECT_EQ(run.undecided[0].second.size(), 2);
    EXPECT_TRUE(QFileInfo::exists(w.folder + "/Müller.jpg"));

    // Chosen: the picture that stood under the number goes into "ersetzt".
    QStringList asked;
    run = assignpictures(w.db(), w.folder, QLatin1Char(','),
                         [&](const QString &file, const QList<PictureCandidate> &candidates, bool *) {
                             asked << file;
                             return std::optional<qint64>(candidates[1].nummer);
                         });
    ASSERT_TRUE(run.result.ok);
    EXPECT_EQ(asked, QStringList{"Müller.jpg"});
    EXPECT_EQ(readBytes(w.folder + "/501.jpg"), "neu");
    EXPECT_EQ(readBytes(w.folder + "/ersetzt/501.JPG"), "alt");

    // A second replacement keeps both old ones.
    w.picture("Müller_Gerd.jpg", "neuer");
    ASSERT_TRUE(assignpictures(w.db(), w.folder, QLatin1Char(',')).result.ok);
    EXPECT_EQ(readBytes(w.folder + "/501.jpg"), "neuer");
    EXPECT_EQ(w.files("/ersetzt"), (QStringList{"501.JPG", "501.jpg"}));
    w.picture("Müller_Gerd.jpg", "noch einer");
    ASSERT_TRUE(assignpictures(w.db(), w.folder, QLatin1Char(',')).result.ok);
    EXPECT_EQ(QDir(w.folder + "/ersetzt").entryList(QDir::Files).size(), 3);

    // Closing the window while it waits ends the run; nothing half renamed.
    w.picture("Müller.jpg", "offen");
    run = assignpictures(w.db(), w.folder, QLatin1Char(','),
                         [](const QString &, const QList<PictureCandidate> &, bool *stop) {
                             *stop = true;
                             return std::optional<qint64>();
                         });
    EXPECT_TRUE(run.result.cancelled);
    EXPECT_EQ(readBytes(w.folder + "/Müller.jpg"), "offen");
    EXPECT_FALSE(assignpictures(w.db(), w.folder + "/fehlt", QLatin1Char(',')).result.ok);
}
