#include "core/strength.h"

#include "platform/numbers.h"
#include "platform/random.h"

#include <cmath>

namespace zorbo {

qint64 Staerkegewinn::maximum(double s)
{
    const double t = s / 1000.0;
    // An odd number of half stars goes up to the next whole star.
    double b = t + double(roundHalfEven(t) % 2);
    if (m_base == Base::Whole)
        b = double(roundHalfEven(b));
    int limit = 0;
    if (s >= 0 && s <= 3000)
        limit = 6;
    else if (s >= 4000 && s <= 7000)
        limit = 10;
    else if (s >= 8000 && s <= 12000)
        limit = 12;
    if (limit > 0) {
        // Single precision, as the game computes its draws.
        const int g = int(std::floor(rnd().next() * float(limit - b)));
        // The gain stays in whole stars.
        m_gain = g + g % 2;
    }
    // A strength no game file holds must not run past the whole numbers.
    const double result = (b + m_gain) * 1000.0;
    constexpr double edge = 9.0e18;
    return result >= edge ? qint64(edge) : result <= -edge ? -qint64(edge) : qRound64(result);
}

qint64 staerkegewinn(double s, int &gain)
{
    Staerkegewinn run(Staerkegewinn::Base::Whole, gain);
    const qint64 maximum = run.maximum(s);
    gain = run.gain();
    return maximum;
}

} // namespace zorbo
