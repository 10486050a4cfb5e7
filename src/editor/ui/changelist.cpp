#include "editor/ui/changelist.h"

#include <QHeaderView>

namespace zorbo {

ChangeList::ChangeList(QWidget *parent) : QTreeWidget(parent)
{
    setObjectName(QStringLiteral("lstvvorschau"));
    setHeaderLabels({QStringLiteral("Nummer"), QStringLiteral("Spieler"), QStringLiteral("Feld"), QStringLiteral("vorher"),
                     QStringLiteral("nachher")});
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    setMinimumSize(560, 260);
}

void ChangeList::show(const QList<PlayerChange> &changes)
{
    clear();
    QList<QTreeWidgetItem *> items;
    for (const PlayerChange &c : changes) {
        for (const PlayerFieldChange &f : c.fields) {
            const QString before = c.created ? QStringLiteral("(neu)") : f.before;
            items << new QTreeWidgetItem(QStringList{QString::number(c.nummer), c.name, f.field, before, f.after});
        }
    }
    addTopLevelItems(items);
}

} // namespace zorbo
