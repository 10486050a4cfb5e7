#include "core/ui/crestview.h"

#include <QMouseEvent>
#include <QPixmap>

namespace zorbo {

CrestView::CrestView(QWidget *parent) : QLabel(parent)
{
    setObjectName(QStringLiteral("ImgXwappen"));
    setAlignment(Qt::AlignCenter);
    setCursor(Qt::PointingHandCursor);
}

void CrestView::setImage(const QImage &image)
{
    m_image = image;
    if (image.isNull())
        clear();
    else
        setPixmap(QPixmap::fromImage(image.scaled(size(), Qt::KeepAspectRatio, Qt::SmoothTransformation)));
}

void CrestView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        emit clicked();
    QLabel::mouseReleaseEvent(event);
}

} // namespace zorbo
