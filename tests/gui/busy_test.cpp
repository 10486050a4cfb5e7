#include "app/busy.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QWidget>
#include <gtest/gtest.h>
#include <stdexcept>

using namespace zorbo;

TEST(Busy, FailingRunsLeaveTheWindowUsableAndInnerRunsGiveBackTheOuterState)
{
    QWidget window;
    QLabel status;
    QProgressBar bar;
    try {
        Busy outer(&window, &status, &bar, QStringLiteral("Importiere Vereine"));
        EXPECT_FALSE(window.isEnabled());
        EXPECT_EQ(status.text(), "Importiere Vereine...");
        EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        EXPECT_FALSE(bar.isHidden()) << "the bar shows while a run goes";
        outer.progress()(2, 5);
        {
            Busy inner(&window, &status, &bar, QStringLiteral("Lade Spielerliste..."));
            EXPECT_EQ(status.text(), "Lade Spielerliste...");
            EXPECT_EQ(bar.value(), 0);
        }
        EXPECT_FALSE(window.isEnabled()) << "the outer run is still going";
        EXPECT_EQ(status.text(), "Importiere Vereine...");
        EXPECT_EQ(bar.value(), 40);
        throw std::runtime_error("Datei kaputt");
    } catch (const std::runtime_error &) {
    }
    EXPECT_TRUE(window.isEnabled());
    EXPECT_TRUE(status.text().isEmpty());
    EXPECT_EQ(bar.value(), 100);
    EXPECT_TRUE(bar.isHidden());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(Busy, TheKeyboardStaysWhereItWas)
{
    QWidget window;
    auto *field = new QLabel(&window);
    field->setFocusPolicy(Qt::StrongFocus);
    // The status bar's parts sit in the window, as in the main window.
    auto &status = *new QLabel(&window);
    auto &bar = *new QProgressBar(&window);
    window.show();
    QApplication::setActiveWindow(&window);
    field->setFocus();
    ASSERT_TRUE(field->hasFocus());
    {
        Busy busy(&window, &status, &bar, QStringLiteral("Lade Spielerliste"));
    }
    EXPECT_TRUE(field->hasFocus());
}
