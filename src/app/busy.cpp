#include "app/busy.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QWidget>
#include <algorithm>
#include <utility>

namespace zorbo {

namespace {

// A run that goes on past half a second offers "Abbrechen".
int cancelDelay = 500;

} // namespace

int Busy::setcanceldelay(int milliseconds)
{
    return std::exchange(cancelDelay, milliseconds);
}

Busy::Busy(QWidget *window, QLabel *status, QProgressBar *bar, const QString &text)
    : m_window(window), m_status(status), m_bar(bar), m_nested(!window->isEnabled()),
      m_outerText(status->text()), m_outerValue(bar->value()), m_focus(QApplication::focusWidget())
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_window->setEnabled(false);
    setText(text);
    m_bar->setRange(0, 100);
    m_bar->setValue(0);
    m_bar->show();
    m_clock.start();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

Busy::~Busy()
{
    if (m_cancel) {
        delete m_cancel;
        QApplication::restoreOverrideCursor();
    }
    if (m_nested) {
        m_status->setText(m_outerText);
        m_bar->setValue(m_outerValue);
    } else {
        m_status->clear();
        m_bar->setValue(100);
        // The bar is there only while a run goes.
        m_bar->hide();
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
        const qint64 now = m_clock.elapsed();
        if (percent == m_bar->value() && now - m_lastEvents < 50)
            return !m_stopped;
        m_lastEvents = now;
        m_bar->setValue(percent);
        if (!m_cancel && now >= cancelDelay) {
            // Not a child of the disabled window, which would disable it too;
            // modal, so that only its button takes a click.
            m_cancel = new QProgressDialog(m_status->text(), QStringLiteral("Abbrechen"), 0, 100);
            m_cancel->setObjectName(QStringLiteral("frmabbrechen"));
            m_cancel->setWindowTitle(m_window->window()->windowTitle());
            m_cancel->setWindowModality(Qt::ApplicationModal);
            m_cancel->setAutoReset(false);
            m_cancel->setAutoClose(false);
            m_cancel->setMinimumDuration(0);
            QObject::connect(m_cancel, &QProgressDialog::canceled, [this] {
                m_stopped = true;
                m_status->setText(QStringLiteral("Wird abgebrochen..."));
            });
            m_cancel->show();
            m_cancel->move(m_window->window()->geometry().center() - m_cancel->rect().center());
            QApplication::setOverrideCursor(Qt::ArrowCursor);
        }
        if (m_cancel) {
            m_cancel->setValue(percent);
            // The dialog is the only window that takes input now.
            QApplication::processEvents();
        } else {
            QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        }
        return !m_stopped;
    };
}

void Busy::setText(const QString &text)
{
    m_status->setText(text.endsWith(QLatin1String("...")) ? text : text + QStringLiteral("..."));
}

} // namespace zorbo
