#include "app/busy.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QWidget>
#include <algorithm>

namespace zorbo {

Busy::Busy(QWidget *window, QLabel *status, QProgressBar *bar, const QString &text)
    : m_window(window), m_status(status), m_bar(bar), m_nested(!window->isEnabled()),
      m_outerText(status->text()), m_outerValue(bar->value()), m_focus(QApplication::focusWidget())
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_window->setEnabled(false);
    setText(text);
    m_bar->setRange(0, 100);
    m_bar->setValue(0);
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

Busy::~Busy()
{
    if (m_nested) {
        m_status->setText(m_outerText);
        m_bar->setValue(m_outerValue);
    } else {
        m_status->clear();
        m_bar->setValue(100);
        m_window->setEnabled(true);
        // The keyboard goes on where it was, so that an arrow key after a
        // run still moves in the tree or the grid.
        if (m_focus && m_window->isAncestorOf(m_focus))
            m_focus->setFocus();
    }
    QApplication::restoreOverrideCursor();
}

Progress Busy::progress()
{
    return [this](qint64 done, qint64 total) {
        const int percent = total > 0 ? int(std::clamp<qint64>(done * 100 / total, 0, 100)) : 0;
        if (percent == m_bar->value())
            return true;
        m_bar->setValue(percent);
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        return true;
    };
}

void Busy::setText(const QString &text)
{
    m_status->setText(text.endsWith(QLatin1String("...")) ? text : text + QStringLiteral("..."));
}

} // namespace zorbo
