#include "core/ui/aboutdialog.h"
#include "guisupport.h"

#include <QLabel>
#include <QPushButton>
#include <gtest/gtest.h>

using namespace zorbo;

TEST(About, ShowsVersionAndLegalNoticeAndAnswersSysteminfo)
{
    test::ScriptedDialogs dialogs;
    AboutDialog about(nullptr, &dialogs);
    EXPECT_EQ(about.objectName(), "frmAbout");
    EXPECT_EQ(about.windowTitle(), "Info zu Zorbo Editor");
    auto *version = about.findChild<QLabel *>("lblVersion");
    ASSERT_NE(version, nullptr);
    EXPECT_EQ(version->text(), "Version 2.0.0");
    auto *notice = about.findChild<QLabel *>("lblDisclaimer");
    ASSERT_NE(notice, nullptr);
    EXPECT_FALSE(notice->text().isEmpty());
    about.findChild<QPushButton *>("cmdSysInfo")->click();
    EXPECT_EQ(dialogs.asked, QStringList({"Info zu Zorbo Editor|Systeminformationen sind momentan nicht verfügbar"}));
}
