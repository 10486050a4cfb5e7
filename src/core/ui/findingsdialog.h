#pragma once

#include "platform/operation.h"

#include <QDialog>

class QLabel;
class QTreeWidget;

namespace zorbo {

// The outcome of a run with all its findings: what the run did or why it
// stopped, then one row per finding (file, line, field, team, player, what
// was found), to scroll through and to copy, all at once or the rows chosen.
class FindingsDialog : public QDialog {
    Q_OBJECT
public:
    FindingsDialog(const QString &title, const QString &text, const QList<Finding> &findings, bool failed,
                   QWidget *parent = nullptr);

    // The chosen rows, or all rows when none is chosen, one finding a line.
    QString copytext() const;
    void copy() const;

private:
    QList<Finding> m_findings;
    QTreeWidget *m_list;
};

} // namespace zorbo
