#pragma once

#include <QTableView>
#include <QTreeWidget>

namespace zorbo {

// The tree and the grid of the main window open what the arrow keys (and
// Page, Home, End) select, as a click does. Only a move by a key is reported:
// a click has its own signal, and a selection set by the program opens
// nothing.
class KeyTree : public QTreeWidget {
    Q_OBJECT
public:
    using QTreeWidget::QTreeWidget;

signals:
    void keyChosen(QTreeWidgetItem *item);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

class KeyTable : public QTableView {
    Q_OBJECT
public:
    using QTableView::QTableView;

signals:
    void keyChosen(const QModelIndex &index);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

} // namespace zorbo
