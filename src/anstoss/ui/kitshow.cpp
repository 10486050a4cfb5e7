#include "anstoss/ui/kitshow.h"

#include "core/kitfigure.h"
#include "core/ui/kitfigurepainter.h"

#include <QPainter>
#include <QStringList>

namespace zorbo {

QColor colouroftext(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 3)
        return Qt::black;
    return QColor(qBound(0, parts[0].trimmed().toInt(), 255), qBound(0, parts[1].trimmed().toInt(), 255),
                  qBound(0, parts[2].trimmed().toInt(), 255));
}

KitShow::KitShow(const QString &name, QWidget *parent) : QWidget(parent)
{
    setObjectName(name);
    setMinimumSize(150, 90);
}

void KitShow::setdrawing(const QVariant &t, const QPixmap &picture)
{
    tag = t;
    m_picture = picture;
    update();
}

void KitShow::setcolours(const std::array<QColor, 4> &colours)
{
    m_colours = colours;
    update();
}

void KitShow::paintEvent(QPaintEvent *)
{
    QPainter g(this);
    // The drawing where the editor's kit preview shows it, the figure beside it.
    const QRect drawing = kitpixels(KitPictureLeft, KitPictureTop, KitPictureWidth, KitPictureHeight);
    if (!m_picture.isNull()) {
        const QPixmap shown = m_picture.scaled(drawing.size(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
        g.drawPixmap(drawing.center() - shown.rect().center(), shown);
    }
    else
        g.drawRect(drawing.adjusted(0, 0, -1, -1));
    paintkitfigure(g, m_colours);
}

void KitShow::mouseDoubleClickEvent(QMouseEvent *)
{
    emit doubleclicked();
}

} // namespace zorbo
