#include "app/mainwindow.h"
#include "app/startoptions.h"
#include "core/ui/shell.h"
#include "guisupport.h"
#include "support/testsupport.h"

#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::whenModal;

namespace {

StartOptions parse(QStringList args)
{
    args.prepend(QStringLiteral("zorbo-editor"));
    return parsestart(args);
}

struct CommandLineFile : zorbo::test::WindowTest {
    void SetUp() override { openwindow(); }
    // The dialog the file opened in, or empty when none opened.
    QString openedin(const QString &file)
    {
        QString opened;
        whenModal([&opened](QDialog *d) { opened = d->objectName(); }, {}, 20);
        window->shell().openpath(file);
        return opened;
    }
};

} // namespace

TEST(StartOptions, TakesAFolderAndOneFileAndAnswersHelpAndVersionInGerman)
{
    const StartOptions run = parse({"--dir", "welt", "Fortuna Großgmain.tea"});
    EXPECT_EQ(run.action, StartOptions::Action::Run);
    EXPECT_EQ(run.folder, QDir::current().absoluteFilePath("welt"));
    EXPECT_EQ(run.file, QDir::current().absoluteFilePath("Fortuna Großgmain.tea"));
    EXPECT_TRUE(parse({}).file.isEmpty());
    EXPECT_TRUE(parse({}).folder.isEmpty());

    for (const char *option : {"--help", "-h"}) {
        const StartOptions help = parse({option});
        EXPECT_EQ(help.action, StartOptions::Action::Help);
        EXPECT_TRUE(help.text.startsWith("Aufruf: zorbo-editor [--dir ORDNER] [DATEI]")) << help.text.toStdString();
        EXPECT_EQ(help.exitcode(), 0);
    }
    const StartOptions version = parse({"--version"});
    EXPECT_EQ(version.action, StartOptions::Action::Version);
    EXPECT_TRUE(version.text.startsWith("zorbo-editor 2.")) << version.text.toStdString();

    const StartOptions unknown = parse({"--farbe", "rot"});
    EXPECT_EQ(unknown.action, StartOptions::Action::WrongUse);
    EXPECT_TRUE(unknown.text.startsWith("Unbekannte Option: farbe")) << unknown.text.toStdString();
    EXPECT_EQ(unknown.exitcode(), 2);
    EXPECT_EQ(parse({"--dir"}).action, StartOptions::Action::WrongUse);
    EXPECT_EQ(parse({"a.tea", "b.tea"}).action, StartOptions::Action::WrongUse);
}

TEST_F(CommandLineFile, TeamAndExporterFilesOpenTheirOpenWindows)
{
    EXPECT_EQ(openedin(ZORBO_EXAMPLES "/beispielwelt/Fortuna Großgmain.tea"), "frmopen");
    EXPECT_EQ(window->findChild<QLabel *>("lblverein") ? window->findChild<QLabel *>("lblverein")->text() : QString(),
              "Fortuna Großgmain");
    EXPECT_EQ(openedin(ZORBO_EXAMPLES "/anstoss/Bundesliga/Werder_Nordstadt.aet"), "frma4open");
    // The ending counts, not its case.
    QFile::copy(ZORBO_EXAMPLES "/beispielwelt/Fortuna Großgmain.tea", dir.file("GROSS.TEA"));
    EXPECT_EQ(openedin(dir.file("GROSS.TEA")), "frmopen");
    EXPECT_TRUE(dialogs.asked.filter("|").isEmpty()) << dialogs.asked.join('\n').toStdString();

    // A league file asks whether all its clubs go into the free players.
    dialogs.answer = true;
    window->shell().openpath(ZORBO_EXAMPLES "/anstoss/deutschland.lan");
    EXPECT_FALSE(dialogs.asked.filter("Import|Alle").isEmpty()) << dialogs.asked.join('\n').toStdString();
}

TEST_F(CommandLineFile, OtherFilesAreNamedInAMessage)
{
    const QString text = dir.file("notizen.txt");
    QFile(text).open(QIODevice::WriteOnly);
    const QString change = dir.file("änderungen.zae");
    QFile(change).open(QIODevice::WriteOnly);
    EXPECT_FALSE(window->shell().openpath(text));
    EXPECT_FALSE(window->shell().openpath(dir.file("fehlt.tea")));
    window->shell().openpath(change);
    ASSERT_EQ(dialogs.asked.size(), 3);
    EXPECT_TRUE(dialogs.asked[0].contains("notizen.txt kann der Zorbo Editor nicht öffnen")) << dialogs.asked[0].toStdString();
    EXPECT_TRUE(dialogs.asked[1].contains("fehlt.tea gibt es nicht")) << dialogs.asked[1].toStdString();
    // A change file that isn't one is named, and nothing opens.
    EXPECT_TRUE(dialogs.asked[2].contains(change + "“ lässt sich nicht anwenden")) << dialogs.asked[2].toStdString();
}

TEST_F(CommandLineFile, FilesOpenedOrImportedComeBackUnderZuletztGeoeffnet)
{
    auto *menu = window->findChild<QMenu *>("mnuzuletzt");
    ASSERT_TRUE(menu);
    const auto shown = [&menu] {
        emit menu->aboutToShow();
        QStringList texts;
        for (QAction *a : menu->actions())
            texts << a->text();
        return texts;
    };
    EXPECT_EQ(shown(), QStringList{"(keine)"});

    const QString team = ZORBO_EXAMPLES "/beispielwelt/Fortuna Großgmain.tea";
    const QString club = ZORBO_EXAMPLES "/anstoss/Bundesliga/Werder_Nordstadt.aet";
    openedin(team);                        // from the command line
    dialogs.file = club;                   // from the menu "Import"
    whenModal([](QDialog *) {}, "frma4open");
    window->action("mnuimportitem(2)")->trigger();
    openedin(team);                        // again: it moves to the top, once
    EXPECT_EQ(shown(), (QStringList{"&1 Fortuna Großgmain.tea", "&2 Werder_Nordstadt.aet"}));

    // The list lives in the settings file, and a click opens the file again.
    window.reset();
    openwindow();
    menu = window->findChild<QMenu *>("mnuzuletzt");
    EXPECT_EQ(shown(), (QStringList{"&1 Fortuna Großgmain.tea", "&2 Werder_Nordstadt.aet"}));
    QString opened;
    whenModal([&opened](QDialog *d) { opened = d->objectName(); });
    menu->actions().at(1)->trigger();
    EXPECT_EQ(opened, "frma4open");
    EXPECT_EQ(window->settings().recentfiles.first(), QFileInfo(club).absoluteFilePath());
}
