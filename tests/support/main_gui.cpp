#include "app/application.h"
#include "app/busy.h"

#include <QApplication>
#include <gtest/gtest.h>
#include <limits>

#include "support/testsupport.h"

int main(int argc, char **argv)
{
    // Window tests always run without a display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    zorbo::setupapplication();
    // A slow machine must not turn a test's dialog into the busy helper's
    // "Abbrechen" window; the tests of cancelling ask for that window.
    zorbo::Busy::setcanceldelay(std::numeric_limits<int>::max());
    ::testing::InitGoogleTest(&argc, argv);
    zorbo::test::failOnModelTesterWarnings();
    return RUN_ALL_TESTS();
}
