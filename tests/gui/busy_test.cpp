#include "app/busy.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
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

// A window as the main window: a part with the work, a status bar with the
// label, the bar and its hidden "Abbrechen".
struct StatusWindow {
    QWidget window;
    QWidget *work = new QLineEdit(&window);
    QWidget *statusbar = new QWidget(&window);
    QLabel *status = new QLabel(statusbar);
    QProgressBar *bar = new QProgressBar(statusbar);
    QPushButton *cancel = new QPushButton(QStringLiteral("Abbrechen"), statusbar);
    StatusWindow()
    {
        auto *layout = new QVBoxLayout(&window);
        layout->addWidget(work);
        layout->addWidget(statusbar);
        cancel->hide();
        window.show();
    }
};

bool smallWindowShown()
{
    for (QWidget *w : QApplication::topLevelWidgets()) {
        if (qobject_cast<QProgressDialog *>(w) && w->isVisible())
            return true;
    }
    return false;
}

TEST(Busy, AbbrechenSitsInTheStatusBarUnlessAModalWindowBlocksIt)
{
    const int delay = Busy::setcanceldelay(0);
    {
        StatusWindow w;
        Busy busy(&w.window, w.status, w.bar, QStringLiteral("Importiere Vereine"), w.cancel);
        EXPECT_TRUE(Busy::running(&w.window));
        EXPECT_FALSE(w.work->isEnabled()) << "the work waits for the run";
        const Progress progress = busy.progress();
        EXPECT_TRUE(progress(1, 10));
        EXPECT_TRUE(w.cancel->isVisible());
        EXPECT_TRUE(w.cancel->isEnabled());
        EXPECT_FALSE(smallWindowShown());
        // Typing into the work goes nowhere; the button takes its click.
        QTest::keyClicks(w.work, QStringLiteral("x"));
        QTest::mouseClick(w.cancel, Qt::LeftButton);
        EXPECT_FALSE(progress(2, 10));
        EXPECT_EQ(w.status->text(), "Wird abgebrochen...");
        EXPECT_TRUE(static_cast<QLineEdit *>(w.work)->text().isEmpty());
    }
    {
        StatusWindow w;
        QDialog check(&w.window);
        check.setWindowModality(Qt::ApplicationModal);
        check.show();
        {
            Busy busy(&w.window, w.status, w.bar, QStringLiteral("Suche"), w.cancel);
            const Progress progress = busy.progress();
            EXPECT_TRUE(progress(1, 10));
            EXPECT_TRUE(w.cancel->isHidden());
            EXPECT_TRUE(smallWindowShown()) << "the modal window blocks the status bar";
        }
        EXPECT_FALSE(smallWindowShown());
        EXPECT_FALSE(Busy::running(&w.window));
        EXPECT_TRUE(w.work->isEnabled());
        EXPECT_TRUE(w.cancel->isHidden());
    }
    Busy::setcanceldelay(delay);
}
