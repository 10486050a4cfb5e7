// New countries and clubs: the dialog and the provisional tree node.
#include "editor/ui/editorview.h"

#include "core/teamlists.h"
#include "core/ui/shell.h"
#include "editor/provisional.h"
#include "editor/ui/newentrydialog.h"

#include <QTreeWidget>

namespace zorbo {

void EditorView::shownew()
{
    if (!db())
        return;
    NewEntryDialog dialog(m_shell.lists()->laender(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    addprovisional(dialog.kind() == NewEntryDialog::Land, dialog.choice());
}

QTreeWidgetItem *EditorView::addprovisional(bool land, const QString &choice)
{
    QStringList keys;
    for (QTreeWidgetItemIterator it(m_tvdb); *it; ++it)
        keys << (*it)->data(0, Qt::UserRole).toString();
    const qint64 number = provisionalnumber(*db(), keys);

    // The parent: a continent by its key, or the first country by its name.
    QTreeWidgetItem *parent = nullptr;
    for (QTreeWidgetItemIterator it(m_tvdb); *it && !parent; ++it) {
        const QString key = (*it)->data(0, Qt::UserRole).toString();
        if (land ? key == choice : key.startsWith(QLatin1Char('L')) && (*it)->text(0) == choice)
            parent = *it;
        else
            (*it)->setExpanded(false);
    }
    if (!parent)
        return nullptr;
    for (QTreeWidgetItem *p = parent; p; p = p->parent())
        p->setExpanded(true);

    auto *item = new QTreeWidgetItem(parent);
    const QChar kind = land ? QLatin1Char('L') : QLatin1Char('T');
    item->setText(0, (land ? QStringLiteral("Land%1") : QStringLiteral("Team%1")).arg(number));
    item->setData(0, Qt::UserRole, QStringLiteral("%1%2_").arg(kind).arg(number));
    item->setData(0, Qt::UserRole + 1, land ? int(CountryPicture) : int(ClubPicture));
    item->setIcon(0, treeicon(land ? CountryPicture : ClubPicture));
    m_tvdb->setCurrentItem(item);
    tvdb_NodeClick(item);
    return item;
}

} // namespace zorbo
