#include "platform/profile.h"

#include "support/testsupport.h"

#include "support/qstringprint.h"

#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::TempFolder;
using zorbo::test::writeBytes;

namespace {

// One file in code page 1252, written with the line end under test.
const char *const sampleLines[] = {
    "orphan=before",
    "[Ordner]",
    "  Wappen = C:\\Spiel\\wappen\\  ",
    "a = b = c",
    "leer=",
    "; kommentar=1",
    "#hash=2",
    "k=v ;x",
    "\tTab\t=\tval\t",
    "quoted=\"  x  \"",
    "single='y'",
    "lone=\"",
    "mixed=\"z'",
    "inner=\"a\"b\"",
    "num=\" 7\"",
    "n1=12abc",
    "n2=-1",
    "n3=abc",
    "",
    "[\xc4rzte]",
    "Gr\xf6\xdf" "e=1",
    "[ordner]",
    "wappen=second",
    "extra=only here",
    "[ Spaced ] trailing text",
    "dup=1",
    "dup=2",
    "[Offen",
    "k=open",
};

class ProfileRead : public ::testing::TestWithParam<const char *> {
protected:
    void SetUp() override
    {
        QByteArray bytes;
        for (const char *line : sampleLines)
            bytes += QByteArray(line) + GetParam();
        ASSERT_TRUE(writeBytes(file, bytes));
    }
    QString read(const QString &section, const QString &key, const QString &def = QStringLiteral("DEF"))
    {
        return readinistring(section, key, file, def);
    }
    TempFolder dir;
    QString file = dir.file(QStringLiteral("test.ini"));
};

} // namespace

TEST_P(ProfileRead, KeysAndValues)
{
    EXPECT_EQ(read("ORDNER", "wAPPEN"), QLatin1String("C:\\Spiel\\wappen\\"));
    EXPECT_EQ(read("Ordner", "a"), QLatin1String("b = c"));
    EXPECT_EQ(read("Ordner", "leer"), QString());
    EXPECT_EQ(read("Ordner", "#hash"), QLatin1String("2"));
    EXPECT_EQ(read("Ordner", "k"), QLatin1String("v ;x"));
    EXPECT_EQ(read("Ordner", "tab"), QLatin1String("val"));
    EXPECT_EQ(read(QStringLiteral(u"ärzte"), QStringLiteral(u"GRÖßE")), QLatin1String("1"));
    EXPECT_EQ(read("Spaced", "dup"), QLatin1String("1"));
    EXPECT_EQ(read("offen", "k"), QLatin1String("open"));
}

TEST_P(ProfileRead, MissingGivesDefaultAndFirstSectionWins)
{
    EXPECT_EQ(read("Ordner", "fehlt"), QLatin1String("DEF"));
    EXPECT_EQ(read("Fehlt", "a"), QLatin1String("DEF"));
    EXPECT_EQ(read("Ordner", "; kommentar"), QLatin1String("DEF"));
    EXPECT_EQ(read("Ordner", "orphan"), QLatin1String("DEF"));
    // The second [ordner] is never searched.
    EXPECT_EQ(read("Ordner", "extra"), QLatin1String("DEF"));
    EXPECT_EQ(readinistring("a", "b", dir.file("none.ini"), "  d  "), QLatin1String("d"));
    EXPECT_EQ(readiniint("Ordner", "fehlt", file), 0);
}

TEST_P(ProfileRead, QuotePairsAndIntegers)
{
    // The outer pair goes; the blanks it protected are then trimmed by the reader.
    EXPECT_EQ(read("Ordner", "quoted"), QLatin1String("x"));
    EXPECT_EQ(read("Ordner", "single"), QLatin1String("y"));
    EXPECT_EQ(read("Ordner", "lone"), QLatin1String("\""));
    EXPECT_EQ(read("Ordner", "mixed"), QLatin1String("\"z'"));
    EXPECT_EQ(read("Ordner", "inner"), QLatin1String("a\"b"));
    EXPECT_EQ(readiniint("Ordner", "num", file), 7);
    EXPECT_EQ(readiniint("Ordner", "n1", file), 12);
    EXPECT_EQ(readiniint("Ordner", "n2", file), -1);
    EXPECT_EQ(readiniint("Ordner", "n3", file), 0);
}

TEST_P(ProfileRead, ListsSectionsAndSectionLines)
{
    const QStringList sections = {QStringLiteral("Ordner"), QStringLiteral(u"Ärzte"),
                                  QStringLiteral("ordner"), QStringLiteral("Spaced"),
                                  QStringLiteral("Offen")};
    EXPECT_EQ(readinisections(file), sections);
    const QStringList lines = readinisection(QStringLiteral("ordner"), file);
    ASSERT_EQ(lines.size(), 15);
    EXPECT_EQ(lines.front(), QLatin1String("Wappen = C:\\Spiel\\wappen\\"));
    EXPECT_EQ(lines[3], QLatin1String("#hash=2"));
    EXPECT_EQ(lines.back(), QLatin1String("n3=abc"));
    EXPECT_TRUE(readinisection(QStringLiteral("fehlt"), file).isEmpty());
    EXPECT_TRUE(readinisections(dir.file("none.ini")).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(LineEnds, ProfileRead, ::testing::Values("\r\n", "\n", "\r"));

TEST(ProfileReadLimits, LongValueIsCutAtTheBufferSize)
{
    TempFolder dir;
    const QString file = dir.file("long.ini");
    ASSERT_TRUE(writeBytes(file, "[s]\r\nk=" + QByteArray(40000, 'x') + "\r\n"));
    EXPECT_EQ(readinistring("s", "k", file).size(), 32766);
}

TEST(ProfileRead, FilesFarBeyondAnyProfileReadAsMissing)
{
    // No settings, team or exporter file comes near this size; reading one
    // would take many times its size in memory.
    zorbo::test::TempFolder dir;
    const QString path = dir.file("gross.ini");
    QByteArray bytes = "[A]\r\nk=v\r\n";
    bytes += QByteArray(9 * 1024 * 1024, ';');
    ASSERT_TRUE(zorbo::test::writeBytes(path, bytes));
    EXPECT_EQ(zorbo::readinistring("A", "k", path, "fehlt"), "fehlt");
    EXPECT_FALSE(zorbo::writeini("A", "k", "w", path));
    EXPECT_EQ(zorbo::test::readBytes(path), bytes);
}
