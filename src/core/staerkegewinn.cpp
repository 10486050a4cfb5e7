#include "core/staerkegewinn.h"

#include "platform/numbers.h"
#include "platform/random.h"

namespace zorbo {

int staerkegewinn(double s, int &gain)
{
    // 1000 units are half a star: t counts half stars, b rounds an odd
    // count up to the next whole star.
    const double t = s / 1000.0;
    const long long b = roundHalfEven(t + double(roundHalfEven(t) % 2));
    if (s >= 0 && s <= 3000)
        gain = rndBelow(int(6 - b));
    else if (s >= 4000 && s <= 7000)
        gain = rndBelow(int(10 - b));
    else if (s >= 8000 && s <= 12000)
        gain = rndBelow(int(12 - b));
    gain += gain % 2;
    return int((b + gain) * 1000);
}

} // namespace zorbo
