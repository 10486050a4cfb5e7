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

TEST(Numbers, SternetextShowsHalfStarsWithTheDecimalSign)
{
    const QChar comma(QLatin1Char(','));
    EXPECT_EQ(sternetext(4750, comma), QLatin1String("2,4 Sterne"));
    EXPECT_EQ(sternetext(9000, comma), QLatin1String("4,5 Sterne"));
    EXPECT_EQ(sternetext(0, comma), QLatin1String("0,0 Sterne"));
    EXPECT_EQ(sternetext(12000, comma), QLatin1String("6,0 Sterne"));
    EXPECT_EQ(sternetext(2300, comma), QLatin1String("1,2 Sterne")); // 1.15 is below it in binary
    EXPECT_EQ(sternetext(3000, QLatin1Char('.')), QLatin1String("1.5 Sterne"));
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
    EXPECT_EQ(formatMinDigits(7, 2), QLatin1String("07"));
    EXPECT_EQ(formatMinDigits(123, 2), QLatin1String("123"));
    EXPECT_EQ(formatMinDigits(7, 3), QLatin1String("007"));
    EXPECT_EQ(formatMinDigits(0, 3), QLatin1String("000"));
    EXPECT_EQ(formatMinDigits(-7, 2), QLatin1String("-07"));
}

TEST(Paths, FolderpathUsesSlashesAndEndsInOne)
{
    EXPECT_EQ(folderpath(QStringLiteral("C:\\Spiel\\config")), QLatin1String("C:/Spiel/config/"));
    EXPECT_EQ(folderpath(QStringLiteral("C:\\Spiel\\")), QLatin1String("C:/Spiel/"));
    EXPECT_EQ(folderpath(QStringLiteral("/home/a/")), QLatin1String("/home/a/"));
    EXPECT_EQ(folderpath(QString()), QString());
}

TEST(Numbers, DecimalsAsASystemWithThatSignWritesThem)
{
    EXPECT_EQ(formatDecimal(0.5, QLatin1Char(',')), "0,5");
    EXPECT_EQ(formatDecimal(-1.25, QLatin1Char(',')), "-1,25");
    EXPECT_EQ(formatDecimal(-0.5, QLatin1Char(',')), "-0,5");
    EXPECT_EQ(formatDecimal(12.25, QLatin1Char('.')), "12.25");
    EXPECT_EQ(formatDecimal(6.0, QLatin1Char(',')), "6");
    EXPECT_EQ(formatDecimal(0.1, QLatin1Char(',')), "0,1");
}
