// "Export..." of the configuration asks first when the world has problems.
#include "app/mainwindow.h"
#include "core/ui/shell.h"
#include "guisupport.h"
#include "support/testsupport.h"

#include <QAction>
#include <QFile>
#include <gtest/gtest.h>

using namespace zorbo;

using ExportQuestion = zorbo::test::WindowTest;

TEST_F(ExportQuestion, ThreeAnswers)
{
    openwindow();
    MainWindow &w = *window;
    int panelShown = 0;
    w.shell().handle("mnutoolitem(8)", [&] { ++panelShown; });
    w.db()->exec("UPDATE spieler SET NAME = 'Łukasz' WHERE NUMMER = 3");
    dialogs.file = dir.file("1_sp.cfg");
    dialogs.filter = 1;

    dialogs.choice = 2; // Abbrechen
    w.action("mnuexportitem(0)")->trigger();
    EXPECT_FALSE(QFile::exists(dialogs.file));
    EXPECT_EQ(panelShown, 0);

    dialogs.choice = 1; // Probleme anzeigen
    w.action("mnuexportitem(0)")->trigger();
    EXPECT_FALSE(QFile::exists(dialogs.file));
    EXPECT_EQ(panelShown, 1);

    dialogs.choice = 0; // Exportieren
    w.action("mnuexportitem(0)")->trigger();
    EXPECT_TRUE(QFile::exists(dialogs.file));
    EXPECT_TRUE(dialogs.asked.last().contains("Łukasz")) << "the finding is reported: " << dialogs.asked.last().toStdString();
    EXPECT_EQ(w.db()->scalar("SELECT NAME FROM spieler WHERE NUMMER = 3").toString(), "Łukasz");

    // A world without problems is exported without the question.
    w.db()->exec("UPDATE spieler SET NAME = 'Lukas' WHERE NUMMER = 3");
    const qsizetype asked = dialogs.asked.size();
    w.action("mnuexportitem(0)")->trigger();
    EXPECT_EQ(dialogs.asked.size(), asked + 2) << "the file, then the outcome";
}
