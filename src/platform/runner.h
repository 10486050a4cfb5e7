#pragma once

#include "platform/database.h"
#include "platform/operation.h"

#include <optional>
#include <type_traits>

namespace zorbo {

// The Result of an operation's outcome: a Result itself, or the member
// `result` of a larger outcome (ExchangeResult, CrestRunReport, …).
inline Result &resultof(Result &outcome)
{
    return outcome;
}

template <typename Outcome>
    requires requires(Outcome o) { o.result.ok; }
Result &resultof(Outcome &outcome)
{
    return outcome.result;
}

namespace detail {

// Runs body and turns what it throws into a failed Result; see runguarded.
Result guarded(const std::function<void()> &body, const QString &lead, std::optional<Finding> &where);

} // namespace detail

// Runs op and turns what it throws into a failed outcome of op's type, with
// nothing but the failure in it: a DbError becomes "<lead>: <its German
// text>", Cancelled "Abgebrochen – es wurde nichts geändert.", a Fault its
// message, led by lead when the fault names no file, and its place goes into
// the outcome's findings where it has them. Other exceptions pass.
template <typename Op>
std::invoke_result_t<Op &> runguarded(const QString &lead, Op &&op)
{
    using Outcome = std::invoke_result_t<Op &>;
    Outcome outcome{};
    std::optional<Finding> where;
    const Result failed = detail::guarded([&] { outcome = op(); }, lead, where);
    if (failed.ok)
        return outcome;
    Outcome stopped{};
    resultof(stopped) = failed;
    if constexpr (requires { stopped.findings.append(Finding()); }) {
        if (where)
            stopped.findings.append(*where);
    }
    return stopped;
}

// The one way an operation runs on the database: inside one transaction,
// committed only when op's Result is ok, so that a failed, faulty or
// cancelled run leaves the database as it was; what op throws is turned into
// a failed outcome as runguarded does. Runs nest: an inner one commits into
// the outer one's transaction.
template <typename Op>
std::invoke_result_t<Op &> runtransaction(Database &db, const QString &lead, Op &&op)
{
    return runguarded(lead, [&] {
        Transaction tx(db);
        std::invoke_result_t<Op &> outcome = op();
        if (resultof(outcome).ok)
            tx.commit();
        return outcome;
    });
}

} // namespace zorbo
