#pragma once

#include <QtGlobal>

namespace zorbo {

// The maximum strength a player brought in from outside receives: his
// strength brought up to a whole star, plus a random gain in whole stars.
// 1000 units are half a star. The gain belongs to the run: a strength that
// lies in none of the ranges 0-3000, 4000-7000, 8000-12000 takes the gain of
// the player before it (0 for the first). So one object serves one run.
class Staerkegewinn {
public:
    enum class Base {
        Whole,      // the base is rounded to a whole number of half stars (imports)
        Fractional, // the base keeps what lies between half stars (transfer market)
    };

    explicit Staerkegewinn(Base base = Base::Whole, int gain = 0) : m_base(base), m_gain(gain) {}

    // MAX_STÄRKE for strength s; draws one random number from rnd() when s
    // lies in one of the ranges.
    qint64 maximum(double s);
    int gain() const { return m_gain; }

private:
    Base m_base;
    int m_gain = 0;
};

// MAX_STÄRKE of an imported player of strength s, with whole half stars;
// gain is the run's gain, carried from player to player.
qint64 staerkegewinn(double s, int &gain);

} // namespace zorbo
