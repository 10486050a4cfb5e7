#include "platform/random.h"

namespace zorbo {

float Rnd::next()
{
    // Unsigned arithmetic wraps modulo 2^32, which keeps the low 24 bits exact.
    m_state = (m_state * 1140671485u + 12820163u) & 0xFFFFFFu;
    return float(m_state) / 16777216.0f;
}

Rnd &rnd()
{
    static Rnd generator;
    return generator;
}

int rndBelow(int limit)
{
    // Single precision as the game computes it: near a whole number a double
    // product may fall on the other side of it and pick another index.
    const float product = rnd().next() * float(limit);
    return int(product);
}

} // namespace zorbo
