#include "exchange/teamfilehints.h"
#include "platform/codepage.h"
#include "support/testsupport.h"

#include <gtest/gtest.h>

using namespace zorbo;

TEST(TeamFileHints, TheFilesClubIsFoundInTheClubList)
{
    zorbo::test::TempFolder t;
    zorbo::test::writeBytes(t.file("a.tea"),
                            *toCp1252("[team]\r\nName = FC Bärenstadt 1899 \r\nStadt=Bärenstadt\r\nNation=Deutschland\r\n"));
    const TeamFileHints hints = readteamfilehints(t.file("a.tea"));
    EXPECT_EQ(hints.name, "FC Bärenstadt 1899");
    EXPECT_EQ(hints.stadt, "Bärenstadt");

    // The club's name inside the file's name wins and ends the search.
    EXPECT_EQ(teamfileclub({"Austria (Österreich)", "FC Bärenstadt (Deutschland)", "FC Bärenstadt 1899 (Deutschland)"}, hints), 1);
    // Town and country at the end make a candidate; a later one replaces it.
    const TeamFileHints town{"Deutschland", "Unbekannt", "Bärenstadt"};
    EXPECT_EQ(teamfileclub({"Sport Bärenstadt  (Deutschland)", "X (Y)", "Eintracht Bärenstadt  (Deutschland)"}, town), 2);
    EXPECT_EQ(teamfileclub({"Rapid (Österreich)"}, town), -1);
    EXPECT_EQ(teamfileclub({}, hints), -1);
    EXPECT_EQ(teamfileclub({" (Leer)"}, TeamFileHints{"", "", ""}), -1) << "an empty club name matches nothing";
}
