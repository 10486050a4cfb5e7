#include "core/ui/findingsdialog.h"

#include <QApplication>
#include <QClipboard>
#include <QTreeWidget>
#include <gtest/gtest.h>

using namespace zorbo;

TEST(FindingsDialog, ListsEveryFindingAndCopiesTheChosenOnesOrAll)
{
    QList<Finding> findings;
    for (int i = 1; i <= 250; ++i)
        findings << Finding{QStringLiteral("Wert %1 ersetzt").arg(i), QStringLiteral("/welt/1_tm.cfg"), i, QStringLiteral("NAME")};
    findings << Finding{QStringLiteral("Spieler ohne Verein"), {}, 0, {}, -1, 77};
    FindingsDialog dialog(QStringLiteral("Import"), QStringLiteral("Fertig."), findings, false);
    auto *list = dialog.findChild<QTreeWidget *>(QStringLiteral("lstbefunde"));
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->topLevelItemCount(), 251) << "no finding is cut off";

    const QStringList all = dialog.copytext().split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(all.size(), 251);
    EXPECT_EQ(all.first(), findings.first().toString());
    EXPECT_EQ(all.last(), findings.last().toString());

    list->topLevelItem(2)->setSelected(true);
    list->topLevelItem(250)->setSelected(true);
    dialog.copy();
    EXPECT_EQ(QApplication::clipboard()->text(), findings[2].toString() + '\n' + findings[250].toString() + '\n');
}
