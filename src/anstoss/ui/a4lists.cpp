#include "anstoss/ui/a4lists.h"

#include <QDrag>
#include <QDragEnterEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QPainter>
#include <QPainterPath>

namespace zorbo {

namespace {

QPixmap shirt(const QColor &colour)
{
    QPixmap p(16, 16);
    p.fill(QColor(192, 192, 192)); // the window's grey
    QPainter g(&p);
    g.setRenderHint(QPainter::Antialiasing);
    QPainterPath path;
    path.moveTo(5, 1);
    path.lineTo(11, 1);
    path.lineTo(15, 5);
    path.lineTo(13, 7);
    path.lineTo(12, 6);
    path.lineTo(12, 15);
    path.lineTo(4, 15);
    path.lineTo(4, 6);
    path.lineTo(3, 7);
    path.lineTo(1, 5);
    path.closeSubpath();
    g.setPen(colour.darker(160));
    g.setBrush(colour);
    g.drawPath(path);
    return p;
}

QPixmap cursor(bool over)
{
    QPixmap p(32, 32);
    p.fill(Qt::transparent);
    QPainter g(&p);
    g.setRenderHint(QPainter::Antialiasing);
    if (!over) {
        g.setPen(QPen(QColor(200, 0, 0), 3));
        g.drawEllipse(QRectF(6, 6, 20, 20));
        g.drawLine(QPointF(9, 9), QPointF(23, 23));
        return p;
    }
    g.setPen(QPen(Qt::black, 1, Qt::DotLine));
    g.drawRect(10, 14, 16, 12);
    QPolygonF arrow{{1, 1}, {1, 16}, {5, 12}, {8, 19}, {10, 18}, {7, 11}, {12, 11}};
    g.setPen(Qt::black);
    g.setBrush(Qt::white);
    g.drawPolygon(arrow);
    return p;
}

} // namespace

QPixmap a4picture(int image)
{
    switch (image) {
    case 1: return shirt(QColor(128, 0, 0));
    case 2: return shirt(QColor(128, 128, 0));
    case 3: return shirt(QColor(0, 128, 0));
    case 4: return shirt(QColor(64, 64, 64));
    case 5: return cursor(false);
    case 6: return cursor(true);
    default: return {};
    }
}

A4List::A4List(const QString &name, bool source, QWidget *parent) : QTreeWidget(parent), m_source(source)
{
    setObjectName(name);
    setRootIsDecorated(false);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setHeaderLabels({QStringLiteral("Name"), QStringLiteral("Position"), QStringLiteral("Stärke"), QStringLiteral("art")});
    header()->setDefaultAlignment(Qt::AlignCenter);
    setColumnWidth(0, 170);
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
