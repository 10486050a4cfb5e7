#pragma once

#include "exchange/changeapply.h"

#include <QDialog>

class QTreeWidget;

namespace zorbo {

class Shell;

// "Änderungen anwenden" (frmaenderungenanwenden): the preview of a change
// file, its summary and its conflicts with a choice each (ticked: the
// file's value, else this world's), then applied as one step.
class ApplyWindow : public QDialog {
    Q_OBJECT
public:
    ApplyWindow(Shell &shell, const QString &path, const ChangeFile &file, const ApplyOutcome &preview, QWidget *parent);

private:
    void chooseall(Choice choice);
    void apply();

    Shell &m_shell;
    QString m_path;
    ChangeFile m_file;
    QList<Conflict> m_conflicts;
    QTreeWidget *m_conflictlist;
};

} // namespace zorbo
