#pragma once

#include <QByteArray>
#include <QtEndian>
#include <algorithm>
#include <bit>
#include <cstring>

namespace zorbo {

// A 128-bit print of a sequence of 64-bit words: two lanes, each word folded
// in by a round of the kind xxHash uses (one-to-one in the lane, so no lane
// forgets what it has seen), the lanes with other constants; murmur's
// finalizer at the end. Far quicker than a cryptographic hash, and a print
// only has to tell worlds, or two versions of a file, apart; nobody forges one.
class Print {
public:
    void word(quint64 w)
    {
        m_a = std::rotl(m_a + w * 0xc2b2ae3d27d4eb4fULL, 31) * 0x9e3779b185ebca87ULL;
        m_b = std::rotl(m_b ^ (w * 0x165667b19e3779f9ULL), 27) * 0x85ebca77c2b2ae63ULL + 0x27d4eb2f165667c5ULL;
    }
    // The length first, then the bytes eight at a time, the last ones
    // padded with zeros.
    void bytes(const void *data, qsizetype size)
    {
        begin(size);
        piece(data, size);
        end();
    }
    // The same print for bytes that come in pieces, as from a file: begin()
    // with their whole length, the pieces in order, then end().
    void begin(qsizetype size)
    {
        word(quint64(size));
        m_held = 0;
    }
    void piece(const void *data, qsizetype size)
    {
        const auto *p = static_cast<const char *>(data);
        if (m_held > 0) {
            const qsizetype take = std::min<qsizetype>(8 - m_held, size);
            std::memcpy(m_hold + m_held, p, size_t(take));
            m_held += int(take);
            p += take;
            size -= take;
            if (m_held < 8)
                return;
            quint64 w;
            std::memcpy(&w, m_hold, 8);
            word(w);
            m_held = 0;
        }
        for (; size >= 8; p += 8, size -= 8) {
            quint64 w;
            std::memcpy(&w, p, 8);
            word(w);
        }
        std::memcpy(m_hold, p, size_t(size));
        m_held = int(size);
    }
    void end()
    {
        if (m_held > 0) {
            quint64 w = 0;
            std::memcpy(&w, m_hold, size_t(m_held));
            word(w);
            m_held = 0;
        }
    }
    QByteArray result() const
    {
        const quint64 lanes[2] = {qToBigEndian(mix(m_a ^ std::rotl(m_b, 17))), qToBigEndian(mix(m_b + m_a))};
        return QByteArray(reinterpret_cast<const char *>(lanes), sizeof lanes);
    }

private:
    static quint64 mix(quint64 x)
    {
        x ^= x >> 33;
        x *= 0xff51afd7ed558ccdULL;
        x ^= x >> 33;
        x *= 0xc4ceb9fe1a85ec53ULL;
        x ^= x >> 33;
        return x;
    }
    quint64 m_a = 0x243f6a8885a308d3ULL;
    quint64 m_b = 0x13198a2e03707344ULL;
    char m_hold[8] = {};
    int m_held = 0;
};

} // namespace zorbo
