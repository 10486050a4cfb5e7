#include "platform/print.h"

#include <gtest/gtest.h>

using namespace zorbo;

// A print made of pieces is the print of the whole, wherever the pieces
// break; one changed, added or moved byte changes it.
TEST(Print, PiecesGiveThePrintOfTheWholeAndEveryByteCounts)
{
    QByteArray data;
    for (int i = 0; i < 61; ++i)
        data += char(i * 37 + 11);
    Print whole;
    whole.bytes(data.constData(), data.size());
    const QByteArray expected = whole.result();
    EXPECT_EQ(expected.size(), 16);
    for (const std::vector<int> &cuts : std::vector<std::vector<int>>{{0}, {1}, {7}, {8}, {9}, {3, 4}, {5, 6, 13}, {1, 1, 1, 1, 1, 1, 1, 1, 1, 60}}) {
        Print pieces;
        pieces.begin(data.size());
        qsizetype at = 0;
        for (int cut : cuts) {
            const qsizetype to = std::min<qsizetype>(cut + at, data.size());
            pieces.piece(data.constData() + at, to - at);
            at = to;
        }
        pieces.piece(data.constData() + at, data.size() - at);
        pieces.end();
        EXPECT_EQ(pieces.result(), expected) << cuts.size() << " cuts, first " << cuts[0];
    }
    const auto printof = [](const QByteArray &bytes) {
        Print p;
        p.bytes(bytes.constData(), bytes.size());
        return p.result();
    };
    QByteArray changed = data;
    changed[60] = char(changed[60] ^ 1);
    EXPECT_NE(printof(changed), expected);
    EXPECT_NE(printof(data + '\0'), expected) << "a zero byte more is another length";
    EXPECT_NE(printof(data.mid(1) + data.left(1)), expected);
    EXPECT_NE(printof({}), printof(QByteArray(1, '\0')));
}
