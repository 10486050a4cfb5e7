#include "platform/profile.h"

#include "support/testsupport.h"

#include "support/qstringprint.h"

#include <gtest/gtest.h>

using namespace zorbo;
using zorbo::test::readBytes;
using zorbo::test::TempFolder;
using zorbo::test::writeBytes;

namespace {

// Writes before, applies one writeini and returns the file's bytes.
QByteArray afterWrite(const QByteArray &before, const QString &section, const QString &key,
                      const QString &value)
{
    TempFolder dir;
    const QString file = dir.file("w.ini");
    if (!writeBytes(file, before))
        return "not written";
    if (!writeini(section, key, value, file))
        return "writeini failed";
    return readBytes(file);
}

} // namespace

TEST(ProfileWrite, MissingFileIsCreatedExactly)
{
    TempFolder dir;
    const QString file = dir.file("neu.ini");
    ASSERT_TRUE(writeini("ordner", "wappen", "C:\\x\\", file));
    EXPECT_EQ(readBytes(file), QByteArray("[ordner]\r\nwappen=C:\\x\\\r\n"));
    EXPECT_FALSE(writeini("s", "k", "v", dir.file("kein/ordner.ini")));
}

// An existing key is replaced in place: only the first of two equal keys,
// only in the first of two equal sections. A new key follows the last key of
// its section; a new section is appended without a blank line, and line ends
// of another kind are rewritten as CR LF.
TEST(ProfileWrite, KeysAndSectionsGoWhereTheyBelong)
{
    const QByteArray appended("[A]\r\nx=1\r\n[Neu]\r\nk=v\r\n");
    const std::tuple<QByteArray, const char *, const char *, const char *, QByteArray> cases[] = {
        {"[A]\r\nFirst=1\r\n; note\r\n  Key = old \r\nLast=3\r\n", "a", "KEY", "new",
         "[A]\r\nFirst=1\r\n; note\r\nKey=new\r\nLast=3\r\n"},
        {"[A]\r\nk=1\r\nk=2\r\n[a]\r\nk=3\r\n", "A", "k", "9", "[A]\r\nk=9\r\nk=2\r\n[a]\r\nk=3\r\n"},
        {";top\r\n[A]\r\nx=1\r\n; tail\r\n\r\n[B]\r\ny=2\r\n", "A", "z", "9",
         ";top\r\n[A]\r\nx=1\r\nz=9\r\n; tail\r\n\r\n[B]\r\ny=2\r\n"},
        {"[A]\r\n\r\n[B]\r\n", "A", "z", "9", "[A]\r\nz=9\r\n\r\n[B]\r\n"},
        {"[A]\r\nx=1\r\n", "Neu", "k", "v", appended},
        {"[A]\r\nx=1", "Neu", "k", "v", appended},
        {"[A]\nx=1\n", "Neu", "k", "v", appended},
        {"[A]\rx=1\r", "Neu", "k", "v", appended}};
    for (const auto &[before, section, key, value, after] : cases)
        EXPECT_EQ(afterWrite(before, section, key, value), after) << before.toStdString();
}

TEST(ProfileWrite, ValueIsWrittenAsGivenInCodePage1252)
{
    TempFolder dir;
    const QString file = dir.file("w.ini");
    ASSERT_TRUE(writeini(QStringLiteral(u"Ärzte"), QStringLiteral(u"Größe"), QStringLiteral(u"  €5 \"q\""), file));
    EXPECT_EQ(readBytes(file), QByteArray("[\xc4rzte]\r\nGr\xf6\xdf" "e=  \x80" "5 \"q\"\r\n"));
    EXPECT_EQ(readinistring(QStringLiteral(u"ÄRZTE"), QStringLiteral(u"größe"), file),
              QStringLiteral(u"€5 \"q\""));

    const QByteArray before = readBytes(file);
    EXPECT_FALSE(writeini(QStringLiteral(u"Ärzte"), QStringLiteral(u"Größe"), QStringLiteral(u"Ω"), file));
    EXPECT_EQ(readBytes(file), before);
}
