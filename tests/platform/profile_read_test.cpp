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

// Sections and keys without regard to case; the first [ordner] wins and the
// second is never searched; a comment or a line before any section is no key.
// Of a quote pair the outer one goes, and the blanks it protected are then
// trimmed by the reader.
TEST_P(ProfileRead, KeysValuesQuotesAndDefaults)
{
    const std::tuple<const char *, const char *, const char *> cases[] = {
        {"ORDNER", "wAPPEN", "C:\\Spiel\\wappen\\"}, {"Ordner", "a", "b = c"}, {"Ordner", "leer", ""},
        {"Ordner", "#hash", "2"}, {"Ordner", "k", "v ;x"}, {"Ordner", "tab", "val"}, {"ärzte", "GRÖßE", "1"},
        {"Spaced", "dup", "1"}, {"offen", "k", "open"}, {"Ordner", "fehlt", "DEF"}, {"Fehlt", "a", "DEF"},
        {"Ordner", "; kommentar", "DEF"}, {"Ordner", "orphan", "DEF"}, {"Ordner", "extra", "DEF"},
        {"Ordner", "quoted", "x"}, {"Ordner", "single", "y"}, {"Ordner", "lone", "\""}, {"Ordner", "mixed", "\"z'"},
        {"Ordner", "inner", "a\"b"}};
    for (const auto &[section, key, value] : cases)
        EXPECT_EQ(read(QString::fromUtf8(section), QString::fromUtf8(key)), QString::fromUtf8(value)) << key;
    EXPECT_EQ(readinistring("a", "b", dir.file("none.ini"), "  d  "), QLatin1String("d"));
    for (auto [key, value] : {std::pair{"num", 7}, {"n1", 12}, {"n2", -1}, {"n3", 0}, {"fehlt", 0}})
        EXPECT_EQ(readiniint("Ordner", key, file), value) << key;
}

TEST_P(ProfileRead, ListsSectionsAndSectionLines)
{
    EXPECT_EQ(readinisections(file), QStringList({"Ordner", QStringLiteral(u"Ärzte"), "ordner", "Spaced", "Offen"}));
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
    TempFolder dir;
    const QString path = dir.file("gross.ini");
    const QByteArray bytes = "[A]\r\nk=v\r\n" + QByteArray(9 * 1024 * 1024, ';');
    ASSERT_TRUE(writeBytes(path, bytes));
    EXPECT_EQ(readinistring("A", "k", path, "fehlt"), "fehlt");
    EXPECT_FALSE(writeini("A", "k", "w", path));
    EXPECT_EQ(zorbo::test::readBytes(path), bytes);
}
