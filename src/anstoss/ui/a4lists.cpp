#include "anstoss/ui/a4lists.h"

#include <QDrag>
#include <QDragEnterEvent>
#include <QHeaderView>
#include <QMimeData>

namespace zorbo {

QPixmap a4picture(int image)
{
    // Drawn by tools/drawpictures into the program's icons.
    static const char *const files[] = {"iltrikot_sturm", "iltrikot_mittelfeld", "iltrikot_abwehr", "iltrikot_tor",
                                        "cursor_verboten", "cursor_ablegen"};
    if (image < 1 || image > 6)
        return {};
    return QPixmap(QStringLiteral(":/icons/%1.png").arg(QLatin1String(files[image - 1])));
}

A4List::A4List(const QString &name, bool source, QWidget *parent) : QTreeWidget(parent), m_source(source)
{
    setObjectName(name);
    setRootIsDecorated(false);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setHeaderLabels({QStringLiteral("Name"), QStringLiteral("Position"), QStringLiteral("Stärke"), QStringLiteral("art")});
    header()->setDefaultAlignment(Qt::AlignCenter);
    // Position and strength always whole; the name takes what is left.
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(0, QHeaderView::Stretch);
    header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(2, QHeaderView::ResizeToContents);
    setColumnHidden(3, true); // the art only sorts
    setContextMenuPolicy(Qt::CustomContextMenu);
    setDragEnabled(source);
    setAcceptDrops(!source);
    setDropIndicatorShown(false);
    setDragDropMode(source ? QAbstractItemView::DragOnly : QAbstractItemView::DropOnly);
}

void A4List::startDrag(Qt::DropActions)
{
    auto *mime = new QMimeData;
    mime->setData(QLatin1String(mimetype), objectName().toUtf8());
    auto *drag = new QDrag(this);
    drag->setMimeData(mime);
    drag->setDragCursor(a4picture(5), Qt::IgnoreAction);
    drag->setDragCursor(a4picture(6), Qt::CopyAction);
    drag->exec(Qt::CopyAction);
}

bool A4List::accepts(const QMimeData *mime) const
{
    return !m_source && mime && mime->hasFormat(QLatin1String(mimetype))
           && QString::fromUtf8(mime->data(QLatin1String(mimetype))) != objectName();
}

void A4List::dragEnterEvent(QDragEnterEvent *event)
{
    if (accepts(event->mimeData()))
        event->acceptProposedAction();
    else
        event->ignore();
}

void A4List::dragMoveEvent(QDragMoveEvent *event)
{
    if (accepts(event->mimeData()))
        event->acceptProposedAction();
    else
        event->ignore();
}

void A4List::dropEvent(QDropEvent *event)
{
    if (!accepts(event->mimeData())) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    emit dropped(QString::fromUtf8(event->mimeData()->data(QLatin1String(mimetype))));
}

} // namespace zorbo
