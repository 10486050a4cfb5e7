#pragma once

#include <QString>
#include <functional>

namespace zorbo {

// Outcome of a library operation: on failure a German message for the user,
// naming the file, line and field where that is known.
struct Result {
    bool ok = true;
    QString message;

    static Result success(const QString &text = {}) { return {true, text}; }
    static Result failure(const QString &text) { return {false, text}; }
    explicit operator bool() const { return ok; }
};

// Progress of a long run, 0 to 100.
using Progress = std::function<void(int percent)>;

inline void report(const Progress &progress, int percent)
{
    if (progress)
        progress(percent);
}

} // namespace zorbo
