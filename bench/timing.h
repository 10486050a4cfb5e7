#pragma once

#include "platform/operation.h"

#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
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

// Median of runs figures that measure() gives, for a step that times only
// part of itself.
inline double medianof(int runs, const std::function<double()> &measure)
{
    std::vector<double> figures;
    for (int i = 0; i < runs; ++i)
        figures.push_back(measure());
    std::sort(figures.begin(), figures.end());
    return figures[figures.size() / 2];
}

// Ends the benchmark with the message when a run failed: its figures would mean nothing.
inline void check(const Result &r)
{
    if (!r.ok) {
        std::fprintf(stderr, "%s\n", qPrintable(r.message));
        std::exit(1);
    }
}

template <typename Outcome>
    requires requires(const Outcome &o) { o.result.ok; }
void check(const Outcome &outcome)
{
    check(outcome.result);
}

} // namespace zorbo::bench
