#pragma once

#include "exchange/worlddiff.h"

#include <QDialog>
#include <memory>

class QLabel;
class QLineEdit;
class QPushButton;
class QTemporaryDir;
class QTreeWidget;

namespace zorbo {

class Shell;

// Fills a tree with the changes, grouped by country and club, each change
// carrying its index in the list; checkable gives a tick per change (a
// group ticks its own). filter keeps the changes that name it.
void fillchangetree(QTreeWidget *tree, const QList<EntityChange> &changes, bool checkable, const QString &filter = {});
// A button of the two windows, by its objectName.
QPushButton *changebutton(const QString &text, const QString &name, QWidget *parent);

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

} // namespace zorbo
