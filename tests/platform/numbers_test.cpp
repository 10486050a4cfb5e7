#include "platform/numbers.h"
#include "platform/paths.h"

#include "support/qstringprint.h"

#include <gtest/gtest.h>

using namespace zorbo;

TEST(Numbers, ValtextTakesTheNumberAtTheStart)
{
    const std::pair<const char *, double> cases[] = {
        {"12abc", 12},   {"  -3.5x", -3.5}, {".5", 0.5},   {"1,5", 1},   {"abc", 0},
        {"", 0},         {"\t 7", 7},       {"+4", 4},     {"-", 0},     {"- 3", 0},
        {"1.2.3", 1.2},  {"1e3", 1},        {"-.25", -0.25}, {"007", 7}, {"3 4", 3},
        {"7.x", 7},
    };
    for (const auto &[text, expected] : cases)
        EXPECT_DOUBLE_EQ(valtext(QString::fromLatin1(text)), expected) << text;
}

TEST(Numbers, RoundHalfEvenTiesToEven)
{
    const std::pair<double, long long> cases[] = {
        {2.5, 2}, {3.5, 4}, {0.5, 0}, {1.5, 2}, {-2.5, -2}, {-3.5, -4}, {2.4999, 2}, {2.6, 3},
    };
    for (const auto &[value, expected] : cases)
        EXPECT_EQ(roundHalfEven(value), expected) << value;
}

TEST(Numbers, OneDecimalRoundsHalfAwayFromZeroOnDecimalDigits)
{
    const std::pair<double, const char *> cases[] = {
        {1.25, "1,3"}, {0.35, "0,4"}, {1.05, "1,1"}, {2.375, "2,4"}, {9.96, "10,0"},
        {0.04, "0,0"}, {-1.25, "-1,3"}, {-0.04, "0,0"}, {123.0, "123,0"}, {0.15, "0,2"},
    };
    for (const auto &[value, expected] : cases)
        EXPECT_EQ(formatOneDecimal(value, QLatin1Char(',')), QLatin1String(expected)) << value;
    EXPECT_EQ(formatOneDecimal(4.5, QLatin1Char('.')), QLatin1String("4.5"));
}

TEST(Numbers, SternetextAndDecimalsWriteTheDecimalSignGiven)
{
    // 2300 is 1.15 stars, just below it in binary.
    const std::tuple<qint64, char, const char *> stars[] = {{4750, ',', "2,4 Sterne"}, {9000, ',', "4,5 Sterne"},
                                                            {0, ',', "0,0 Sterne"},    {12000, ',', "6,0 Sterne"},
                                                            {2300, ',', "1,2 Sterne"}, {3000, '.', "1.5 Sterne"}};
    for (const auto &[staerke, sign, expected] : stars)
        EXPECT_EQ(sternetext(staerke, QLatin1Char(sign)), QLatin1String(expected)) << staerke;
    const std::tuple<double, char, const char *> decimals[] = {{0.5, ',', "0,5"},     {-1.25, ',', "-1,25"}, {-0.5, ',', "-0,5"},
                                                               {12.25, '.', "12.25"}, {6.0, ',', "6"},       {0.1, ',', "0,1"}};
    for (const auto &[value, sign, expected] : decimals)
        EXPECT_EQ(formatDecimal(value, QLatin1Char(sign)), QLatin1String(expected)) << value;
}

TEST(Numbers, PlainDecimalHasNoLeadingZeroExponentOrTrailingZeros)
{
    const std::pair<double, const char *> cases[] = {
        {0.5, ".5"},       {-0.5, "-.5"},         {3, "3"},   {2.25, "2.25"}, {1e6, "1000000"},
        {0.1, ".1"},       {0.0, "0"},            {-0.0, "0"}, {1e-7, ".0000001"},
        {123.456, "123.456"}, {1e21, "1000000000000000000000"}, {-12.5, "-12.5"}, {10, "10"},
    };
    for (const auto &[value, expected] : cases)
        EXPECT_EQ(plainDecimal(value), QLatin1String(expected)) << value;
}

TEST(Numbers, MinDigitsPadsWithZeros)
{
    for (auto [value, digits, expected] : {std::tuple{7, 2, "07"}, {123, 2, "123"}, {7, 3, "007"}, {0, 3, "000"}, {-7, 2, "-07"}})
        EXPECT_EQ(formatMinDigits(value, digits), QLatin1String(expected)) << value;
}

TEST(Paths, FolderpathUsesSlashesAndEndsInOne)
{
    EXPECT_EQ(folderpath(QStringLiteral("C:\\Spiel\\config")), QLatin1String("C:/Spiel/config/"));
    EXPECT_EQ(folderpath(QStringLiteral("C:\\Spiel\\")), QLatin1String("C:/Spiel/"));
    EXPECT_EQ(folderpath(QStringLiteral("/home/a/")), QLatin1String("/home/a/"));
    EXPECT_EQ(folderpath(QString()), QString());
}
