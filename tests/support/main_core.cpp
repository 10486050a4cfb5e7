#include <QCoreApplication>
#include <gtest/gtest.h>

#include "support/testsupport.h"

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    zorbo::test::failOnModelTesterWarnings();
    return RUN_ALL_TESTS();
}
