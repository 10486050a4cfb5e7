#pragma once

#include <functional>
#include <utility>

namespace zorbo {

// The modified state of a form: what its fields were filled with, and
// whether they differ from it now. The form says when it fills its fields
// (their signals are no typing then) and whether it is open at all; an
// empty form has nothing to type in.
template <typename Form>
class FormState {
public:
    FormState(std::function<Form()> read, std::function<bool()> open, std::function<void(bool)> changed)
        : m_read(std::move(read)), m_open(std::move(open)), m_changed(std::move(changed))
    {
    }

    // Before the fields are filled.
    void filling() { m_filling = true; }
    // After they are filled: what they hold is the form as filled.
    void filled()
    {
        m_filling = false;
        m_shown = m_read();
        m_modified = true;
        recheck();
    }
    // Compares the fields with the form as filled, after each change.
    void recheck()
    {
        if (m_filling)
            return;
        const bool modified = m_open() && m_read() != m_shown;
        if (modified != m_modified) {
            m_modified = modified;
            m_changed(modified);
        }
    }
    bool modified() const { return m_modified; }
    const Form &shown() const { return m_shown; }

private:
    std::function<Form()> m_read;
    std::function<bool()> m_open;
    std::function<void(bool)> m_changed;
    Form m_shown{};
    bool m_filling = false;
    bool m_modified = false;
};

} // namespace zorbo
