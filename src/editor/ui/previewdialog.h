#pragma once

#include "editor/playerfields.h"
#include "platform/operation.h"

#include <QDialog>

class QLabel;
class QLayout;
class QPushButton;

namespace zorbo {

class ChangeList;
class Shell;

// The frame of a dialog that shows what a run on many players would change
// before "Übernehmen" makes it one step of the history: the list of changes
// (lstvvorschau), a line that sums them up (lblvorschau), "Übernehmen"
// (btnuebernehmen) and "Abbrechen" (btnabbrechen).
class PreviewDialog : public QDialog {
    Q_OBJECT

public:
    // Runs the change for good (see finish()).
    virtual void apply() = 0;

protected:
    PreviewDialog(Shell &shell, QWidget *parent);
    // Lays the dialog out: above the list, the dialog's own fields; below the summary, one more.
    void arrange(QLayout *above, QWidget *below);
    // Shows a preview: its changes and the summary, or what failed;
    // "Übernehmen" only when it would change something.
    void showpreview(const Result &result, const QList<PlayerChange> &changes, qint64 changed, const QString &summary);
    bool applicable() const;
    // After the run for good: its message in the status bar and the dialog
    // closed, or the failure with its findings, the dialog left open.
    void finish(const Result &result, const QList<Finding> &findings);

    Shell &m_shell;

private:
    ChangeList *m_list;
    QLabel *m_summary;
    QPushButton *m_apply;
};

} // namespace zorbo
