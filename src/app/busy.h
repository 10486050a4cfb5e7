#pragma once

#include "core/ui/shell.h"

#include <QElapsedTimer>
#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>

class QAbstractButton;
class QLabel;
class QProgressBar;
class QProgressDialog;

namespace zorbo {

// The one way a long run shows that the program is busy: window disabled,
// wait cursor, status text ending in "...", progress from 0 to 100. A run
// that reports progress past a moment offers "Abbrechen": the status bar's
// button when the window has one, else (and while a modal window blocks the
// window) a small window with the progress; after a click on it the progress
// callback answers "stop". All of it is undone when the object goes, also
// when the run fails.
class Busy : public BusyScope {
public:
    // cancel: the status bar's "Abbrechen", a hidden child of the window, or null.
    Busy(QWidget *window, QLabel *status, QProgressBar *bar, const QString &text,
         QAbstractButton *cancel = nullptr);
    ~Busy() override;
    Busy(const Busy &) = delete;
    Busy &operator=(const Busy &) = delete;

    // Progress callback for library operations; lets pending events run.
    Progress progress() override;
    void setText(const QString &text);

    // Whether a run goes in the window.
    static bool running(const QWidget *window);

    // How long a run goes before it offers "Abbrechen", in milliseconds;
    // answers the delay that held before.
    static int setcanceldelay(int milliseconds);

private:
    void offercancel();
    void stop();

    QWidget *m_window;
    QLabel *m_status;
    QProgressBar *m_bar;
    QPointer<QAbstractButton> m_button;
    // A run inside another run gives the outer one back its state.
    bool m_nested;
    QString m_outerText;
    int m_outerValue;
    QPointer<QWidget> m_focus; // where the keyboard was; a disabled window loses it
    // With a button in the window, the window stays enabled and its other
    // parts are disabled instead; these are the parts to enable again.
    QList<QPointer<QWidget>> m_disabled;
    QObject *m_inputFilter = nullptr;
    QElapsedTimer m_clock;     // since the start
    qint64 m_lastEvents = 0;   // when pending events last ran
    bool m_offered = false;
    QProgressDialog *m_cancel = nullptr;
    bool m_stopped = false;
};

} // namespace zorbo
