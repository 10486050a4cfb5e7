#include "app/application.h"

#include <QApplication>
#include <gtest/gtest.h>

#include "support/testsupport.h"

int main(int argc, char **argv)
{
    // Window tests always run without a display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    zorbo::setupapplication();
    ::testing::InitGoogleTest(&argc, argv);
    zorbo::test::failOnModelTesterWarnings();
    return RUN_ALL_TESTS();
}
