#pragma once

#include "core/ui/shell.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QString>
#include <QWidget>

class QLabel;
class QProgressBar;
class QProgressDialog;

namespace zorbo {

// The one way a long run shows that the program is busy: window disabled,
// wait cursor, status text ending in "...", progress from 0 to 100. A run
// that reports progress past a moment gets a small window with its progress
// and "Abbrechen"; after a click on it the progress callback answers
// "stop". All of it is undone when the object goes, also when the run fails.
class Busy : public BusyScope {
public:
    Busy(QWidget *window, QLabel *status, QProgressBar *bar, const QString &text);
    ~Busy() override;
    Busy(const Busy &) = delete;
    Busy &operator=(const Busy &) = delete;

    // Progress callback for library operations; lets pending events run.
    Progress progress() override;
    void setText(const QString &text);

    // How long a run goes before it offers "Abbrechen", in milliseconds;
    // answers the delay that held before.
    static int setcanceldelay(int milliseconds);

private:
    QWidget *m_window;
    QLabel *m_status;
    QProgressBar *m_bar;
    // A run inside another run gives the outer one back its state.
    bool m_nested;
    QString m_outerText;
    int m_outerValue;
    QPointer<QWidget> m_focus; // where the keyboard was; a disabled window loses it
    QString m_text;
    QElapsedTimer m_clock;     // since the start
    qint64 m_lastEvents = 0;   // when pending events last ran
    QProgressDialog *m_cancel = nullptr;
    bool m_stopped = false;
};

} // namespace zorbo
