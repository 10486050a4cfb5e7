#pragma once

#include <QElapsedTimer>
#include <algorithm>
#include <functional>
#include <vector>

namespace zorbo::bench {

// Median wall time of runs calls of step, in milliseconds.
inline double medianms(int runs, const std::function<void()> &step)
{
    std::vector<double> ms;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        step();
        ms.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(ms.begin(), ms.end());
    return ms[ms.size() / 2];
}

} // namespace zorbo::bench
