#include "app/busy.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
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

// How many runs go in a window, kept on the window.
const char *const runsProperty = "zorbo_runs";

// While the status bar's "Abbrechen" is offered, pending events run with
// the user's input; only the button takes it. The rest of the window is
// disabled, but shortcuts of the window itself and windows opened meanwhile
// would still answer.
class OnlyTheButton : public QObject {
public:
    OnlyTheButton(QAbstractButton *button) : m_button(button) {}

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::Wheel:
        case QEvent::ContextMenu:
            break;
        default:
            return false;
        }
        auto *widget = qobject_cast<QWidget *>(watched);
        if (!widget)
            return false; // the window system's copy of the event; the widget's copy decides
        return !(m_button && (widget == m_button || m_button->isAncestorOf(widget)));
    }

private:
    QPointer<QAbstractButton> m_button;
};

} // namespace

int Busy::setcanceldelay(int milliseconds)
{
    return std::exchange(cancelDelay, milliseconds);
}

bool Busy::running(const QWidget *window)
{
    return window->property(runsProperty).toInt() > 0;
}

Busy::Busy(QWidget *window, QLabel *status, QProgressBar *bar, const QString &text, QAbstractButton *cancel)
    : m_window(window), m_status(status), m_bar(bar), m_button(cancel), m_nested(running(window)),
      m_outerText(status->text()), m_outerValue(bar->value()), m_focus(QApplication::focusWidget())
{
    m_window->setProperty(runsProperty, m_window->property(runsProperty).toInt() + 1);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    if (!m_nested) {
        if (m_button && m_window->isAncestorOf(m_button)) {
            // The button must stay clickable: everything of the window but
            // the part that holds it goes grey.
            for (QWidget *part : m_window->findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
                if (part->isEnabled() && part != m_button && !part->isAncestorOf(m_button)) {
                    part->setEnabled(false);
                    m_disabled.append(part);
                }
            }
        } else {
            m_button = nullptr;
            m_window->setEnabled(false);
        }
    }
    setText(text);
    m_bar->setRange(0, 100);
    m_bar->setValue(0);
    m_bar->show();
    m_clock.start();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

Busy::~Busy()
{
    if (m_offered) {
        delete m_cancel;
        delete m_inputFilter;
        QApplication::restoreOverrideCursor();
    }
    m_window->setProperty(runsProperty, m_window->property(runsProperty).toInt() - 1);
    if (m_nested) {
        m_status->setText(m_outerText);
        m_bar->setValue(m_outerValue);
    } else {
        m_status->clear();
        m_bar->setValue(100);
        // The bar and the button are there only while a run goes.
        m_bar->hide();
        if (m_button)
            m_button->hide();
        for (const QPointer<QWidget> &part : std::as_const(m_disabled)) {
            if (part)
                part->setEnabled(true);
        }
        m_window->setEnabled(true);
        // The keyboard goes on where it was, so that an arrow key after a
        // run still moves in the tree or the grid.
        if (m_focus && m_window->isAncestorOf(m_focus))
            m_focus->setFocus();
    }
    QApplication::restoreOverrideCursor();
}

void Busy::stop()
{
    m_stopped = true;
    m_status->setText(QStringLiteral("Wird abgebrochen..."));
}

void Busy::offercancel()
{
    m_offered = true;
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    // A modal window (a check's window, say) blocks the main window and its
    // status bar; then "Abbrechen" comes in a small window of its own.
    if (m_button && !QApplication::activeModalWidget()) {
        m_inputFilter = new OnlyTheButton(m_button);
        qApp->installEventFilter(m_inputFilter);
        QObject::connect(m_button, &QAbstractButton::clicked, m_inputFilter, [this] { stop(); });
        m_button->setEnabled(true);
        m_button->show();
        return;
    }
    // Not a child of the disabled window, which would disable it too;
    // modal, so that only its button takes a click.
    m_cancel = new QProgressDialog(m_status->text(), QStringLiteral("Abbrechen"), 0, 100);
    m_cancel->setObjectName(QStringLiteral("frmabbrechen"));
    m_cancel->setWindowTitle(m_window->window()->windowTitle());
    m_cancel->setWindowModality(Qt::ApplicationModal);
    m_cancel->setAutoReset(false);
    m_cancel->setAutoClose(false);
    m_cancel->setMinimumDuration(0);
    QObject::connect(m_cancel, &QProgressDialog::canceled, [this] { stop(); });
    m_cancel->show();
    m_cancel->move(m_window->window()->geometry().center() - m_cancel->rect().center());
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
        if (!m_offered && now >= cancelDelay)
            offercancel();
        if (m_cancel)
            m_cancel->setValue(percent);
        if (m_offered) {
            // Only "Abbrechen" takes input now.
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
