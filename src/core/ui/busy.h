#pragma once

#include "platform/operation.h"

#include <QPointer>
#include <QString>
#include <QWidget>

class QLabel;
class QProgressBar;

namespace zorbo {

// The one way a long run shows that the program is busy: window disabled,
// wait cursor, status text ending in "...", progress from 0 to 100. All of
// it is undone when the object goes, also when the run fails.
class Busy {
public:
    Busy(QWidget *window, QLabel *status, QProgressBar *bar, const QString &text);
    ~Busy();
    Busy(const Busy &) = delete;
    Busy &operator=(const Busy &) = delete;

    // Progress callback for library operations; lets pending events run.
    Progress progress();
    void setText(const QString &text);

private:
    QWidget *m_window;
    QLabel *m_status;
    QProgressBar *m_bar;
    // A run inside another run gives the outer one back its state.
    bool m_nested;
    QString m_outerText;
    int m_outerValue;
    QPointer<QWidget> m_focus; // where the keyboard was; a disabled window loses it
};

} // namespace zorbo
