#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <stdexcept>

namespace zorbo {

// Outcome of a library operation: on failure a German message for the user,
// naming the file, line and field where that is known. cancelled tells a
// stop the user asked for from a failure.
struct Result {
    bool ok = true;
    QString message;
    bool cancelled = false;

    static Result success(const QString &text = {}) { return {true, text}; }
    static Result failure(const QString &text) { return {false, text}; }
    // "Abgebrochen – es wurde nichts geändert."
    static Result cancel();
    explicit operator bool() const { return ok; }
};

// Something a run found on its way: a row left out or replaced, a crest that
// keeps the default picture, the place where a run stopped. The place is told
// in the fields as far as it is known (line counts from 1, -1 and 0 stand for
// unknown), the text says what is the matter there.
struct Finding {
    QString text{};
    QString file{};
    int line = 0;
    QString field{};
    qint64 team = -1;
    qint64 player = -1;

    // One German line: "1_tm.cfg, Zeile 12, Feld NAME: …", the parts that are
    // unknown left out; the file in the system's separators.
    QString toString() const;
};

// Each finding as its one line.
QStringList findinglines(const QList<Finding> &findings);

// Progress of a long run: done of total steps (rows, files or bytes, as fits
// the run). The answer false asks the run to stop.
using Progress = std::function<bool(qint64 done, qint64 total)>;

// Thrown by report() when the progress callback asks to stop. Runs report
// only where stopping leaves nothing half done: inside a transaction that the
// stop rolls back, or before a file target is replaced.
class Cancelled : public std::exception {
public:
    const char *what() const noexcept override { return "cancelled"; }
};

// Tells the callback how far the run is; throws Cancelled when it answers false.
inline void report(const Progress &progress, qint64 done, qint64 total)
{
    if (progress && !progress(done, total))
        throw Cancelled();
}

// A fault that stops a run: message() is the whole German text for the user;
// finding() holds the place apart (with the fault's own words as its text),
// for the list of findings. A fault without a file in its finding names a
// record or nothing, and the run puts its own words in front of it.
class Fault : public std::runtime_error {
public:
    explicit Fault(const QString &message, const Finding &where = {})
        : std::runtime_error("fault"), m_message(message), m_where(where)
    {
    }
    const QString &message() const { return m_message; }
    const Finding &finding() const { return m_where; }
    bool hasPlace() const;

private:
    QString m_message;
    Finding m_where;
};

} // namespace zorbo
