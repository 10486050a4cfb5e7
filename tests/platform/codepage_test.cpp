#include "platform/codepage.h"

#include "support/qstringprint.h"

#include <QStringDecoder>
#include <gtest/gtest.h>

#include <QSet>

using namespace zorbo;

TEST(Codepage, EveryByteRoundTripsToADistinctCharacter)
{
    QByteArray all;
    for (int b = 0; b < 256; ++b)
        all += char(b);
    const QString text = fromCp1252(all);
    ASSERT_EQ(text.size(), 256);
    EXPECT_EQ(QSet<QChar>(text.begin(), text.end()).size(), 256);
    const auto back = toCp1252(text);
    ASSERT_TRUE(back.has_value());
    EXPECT_EQ(*back, all);
    EXPECT_TRUE(fitsCp1252(text));
    // Straight to UTF-8, as the readers store text, after what is there already.
    QByteArray utf8("Vor ");
    appendCp1252AsUtf8(utf8, all);
    EXPECT_EQ(utf8, "Vor " + text.toUtf8());
}

TEST(Codepage, HighRowFollowsTheCodePageNotLatin1)
{
    // Both ends of the row, the five bytes without a character, and a few between.
    const std::pair<unsigned char, char16_t> cases[] = {
        {0x80, 0x20AC}, {0x81, 0x0081}, {0x84, 0x201E}, {0x8A, 0x0160}, {0x8D, 0x008D},
        {0x8F, 0x008F}, {0x90, 0x0090}, {0x96, 0x2013}, {0x99, 0x2122}, {0x9C, 0x0153},
        {0x9D, 0x009D}, {0x9E, 0x017E}, {0x9F, 0x0178},
    };
    for (const auto &[byte, ch] : cases) {
        const QByteArray bytes(1, char(byte));
        EXPECT_EQ(fromCp1252(bytes), QString(QChar(ch))) << "byte " << int(byte);
        EXPECT_EQ(toCp1252(QString(QChar(ch))).value_or("?"), bytes) << "byte " << int(byte);
    }
    // Outside that row the page is ASCII and Latin-1.
    EXPECT_EQ(fromCp1252("\x7f\xa0\xc4\xdf\xff"), QStringLiteral(u"\u007f\u00a0\u00c4\u00df\u00ff"));
    EXPECT_EQ(toCp1252(QStringLiteral(u"Müller-Lüdenscheidt")).value_or(""),
              QByteArray("M\xfcller-L\xfc" "denscheidt"));
}

TEST(Codepage, CharacterOutsideThePageIsReportedByIndex)
{
    struct Case {
        QString text;
        int bad;
    };
    const Case cases[] = {
        {QStringLiteral(u"abc\u03a9d"), 3},     // Greek capital omega
        {QStringLiteral(u"x\u0080"), 1},        // C1 control that the page places elsewhere
        {QStringLiteral(u"\u20ac\U0001F600"), 1}, // a character outside the basic plane
        {QStringLiteral(u"ok\u0100\u03a9"), 2}, // first of two bad ones
    };
    for (const Case &c : cases) {
        int bad = -1;
        EXPECT_FALSE(toCp1252(c.text, &bad).has_value()) << c.text.toStdString();
        EXPECT_EQ(bad, c.bad) << c.text.toStdString();
        EXPECT_FALSE(fitsCp1252(c.text));
    }
    EXPECT_TRUE(toCp1252(QString()).has_value());
}

TEST(Codepage, Utf8IsToldByItsMultiByteCharactersOrItsMark)
{
    EXPECT_TRUE(looksutf8(QStringLiteral("FC Müßiggang").toUtf8()));
    EXPECT_TRUE(looksutf8(QByteArray("\xEF\xBB\xBFNEUES_TEAM")));
    EXPECT_FALSE(looksutf8(*toCp1252(QStringLiteral("FC Müßiggang"))));
    EXPECT_FALSE(looksutf8(QByteArray("NEUES_TEAM only ASCII")));
    EXPECT_FALSE(looksutf8(QByteArray("\xC3(")));
    // Code page 1252 text that happens to hold a valid pair, beside a lone high byte.
    EXPECT_FALSE(looksutf8(QByteArray("Ã¼ und \xFC")));
}

TEST(Codepage, Utf8IsWhatTheUtf8DecoderTakes)
{
    // The check walks the bytes itself; it must agree with the decoder on the
    // edges of the encoding: overlong forms, surrogates, the last code point,
    // sequences cut short at the end.
    const QByteArray samples[] = {
        "a\xC2\x80", "a\xC1\xBF", "a\xC0\x80", "a\xDF\xBF", "a\xE0\xA0\x80", "a\xE0\x9F\xBF", "a\xED\x9F\xBF",
        "a\xED\xA0\x80", "a\xEF\xBF\xBF", "a\xF0\x90\x80\x80", "a\xF0\x8F\xBF\xBF", "a\xF4\x8F\xBF\xBF",
        "a\xF4\x90\x80\x80", "a\xF5\x80\x80\x80", "a\xE2\x82", "a\xF0\x9F\x98", "a\xE2\x82\xAC" " b",
        "a\xE2\x28\xA1", "a\xC3\xA4\xC3", "\xF0\x9F\x98\x80 Gr\xC3\xBC\xC3\x9F" "e",
    };
    for (const QByteArray &bytes : samples) {
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString text = decoder.decode(bytes);
        EXPECT_EQ(looksutf8(bytes), !decoder.hasError()) << bytes.toHex(' ').toStdString();
    }
}

TEST(Codepage, StoredTextGoesStraightToTheCodePageOrNotAtAll)
{
    // Every character below U+10000 alone and between letters, and the
    // edges of UTF-8: the straight way gives the bytes the long way gives
    // for the decoded text, or leaves the text to the long way; it leaves
    // no printable character the code page holds.
    QList<QByteArray> samples{"", "\xC1\xBF", "\xC0\x80", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x9F\x98\x80", "\xE2\x82",
                              "\xC3", "\xC3\xA4\xC3", "\xE2\x28\xA1", "\xFF", "\x80"};
    for (char32_t c = 0; c < 0x10000; ++c) {
        if (c >= 0xD800 && c <= 0xDFFF)
            continue; // no character of its own
        const QByteArray one = QString(QChar(char16_t(c))).toUtf8();
        samples << one << "G" + one + "ro";
    }
    int plain = 0;
    for (const QByteArray &utf8 : samples) {
        QByteArray out(utf8.size(), '\0');
        const qsizetype n = plainUtf8ToCp1252(utf8, out.data());
        const QString text = QString::fromUtf8(utf8);
        const std::optional<QByteArray> expected = toCp1252(text);
        if (n < 0)
            continue;
        ++plain;
        ASSERT_TRUE(expected) << utf8.toHex(' ').toStdString();
        EXPECT_EQ(out.left(n), *expected) << utf8.toHex(' ').toStdString();
    }
    EXPECT_EQ(plain, 1 + 2 * (256 - 32)); // the empty text, and each of 224 characters alone and between letters
}
