#pragma once

#include "platform/result.h"

#include <QString>

class QLabel;
class QProgressBar;
class QWidget;

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
};

} // namespace zorbo
