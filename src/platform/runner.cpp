#include "platform/runner.h"

namespace zorbo {

namespace detail {

Result guarded(const std::function<void()> &body, const QString &lead, std::optional<Finding> &where)
{
    const auto led = [&lead](const QString &text) {
        return lead.isEmpty() ? text : lead + QStringLiteral(": ") + text;
    };
    try {
        body();
        return Result::success();
    } catch (const Cancelled &) {
        return Result::cancel();
    } catch (const Fault &e) {
        if (e.hasPlace())
            where = e.finding();
        return Result::failure(e.finding().file.isEmpty() ? led(e.message()) : e.message());
    } catch (const DbError &e) {
        return Result::failure(led(e.text()));
    }
}

} // namespace detail

} // namespace zorbo
