#pragma once

#include "exchange/changefile.h"

#include <QDialog>
#include <memory>

class QLabel;
class QLineEdit;
class QPushButton;
class QTemporaryDir;
class QTreeWidget;
class QTreeWidgetItem;

namespace zorbo {

class Shell;

// "Welten vergleichen" (frmvergleich): this world against another one or
// against a pair of game files, grouped by country and club, filterable,
// with a tick per change; "Übernehmen" takes the ticked changes of the other
// side into this world as one step of the history.
class CompareWindow : public QDialog {
    Q_OBJECT
public:
    CompareWindow(Shell &shell, QWidget *parent);
    ~CompareWindow() override;

    // Compares with the world in the file; false (and told) when it can't.
    bool compareworld(const QString &path);
    // Compares with the game files read into a scratch world; either may be
    // empty.
    bool comparegamefiles(const QString &teams, const QString &players);

private:
    bool show(WorldDiff diff, const QString &other, const QString &label);
    void fill();
    void takeover();
    void tickall(bool on);
    QList<EntityChange> ticked() const;

    Shell &m_shell;
    QLabel *m_source;
    QLabel *m_counts;
    QLineEdit *m_filter;
    QTreeWidget *m_list;
    QPushButton *m_take;
    WorldDiff m_diff;
    QString m_other;  // the file of the other world
    QString m_label;  // how the step of a takeover names it
    QString m_teams, m_players; // the game files compared, to compare again
    std::unique_ptr<QTemporaryDir> m_scratch;
};

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

// The menu entries: "Änderungen exportieren...", "Änderungen anwenden...",
// "Welten vergleichen...".
void installchanges(Shell &shell);

// Opens "Welten vergleichen" on this world against the game files (either
// may be empty), as after a merge the game files' own view of the world.
void opencomparison(Shell &shell, const QString &teams, const QString &players);

// Exports the steps from the history's step on as a change file, asking for
// the description and the file.
void exportchangesfrom(Shell &shell, qint64 step);

} // namespace zorbo
