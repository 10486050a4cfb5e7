#include "core/ui/keyviews.h"

namespace zorbo {

void KeyTree::keyPressEvent(QKeyEvent *event)
{
    QTreeWidgetItem *before = currentItem();
    QTreeWidget::keyPressEvent(event);
    if (currentItem() && currentItem() != before)
        emit keyChosen(currentItem());
}

void KeyTable::keyPressEvent(QKeyEvent *event)
{
    const QModelIndex before = currentIndex();
    QTableView::keyPressEvent(event);
    if (currentIndex().isValid() && currentIndex().row() != before.row())
        emit keyChosen(currentIndex());
}

} // namespace zorbo
