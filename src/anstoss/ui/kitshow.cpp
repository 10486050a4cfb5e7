#include "anstoss/ui/kitshow.h"

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
    if (!m_picture.isNull())
        g.drawPixmap(QRect(0, 0, 80, 80), m_picture);
    else
        g.drawRect(0, 0, 79, 79);
    // The figure: five shirt stripes (trikot1 and trikot2 in turn), arms in
    // trikot2, three parts of shorts in hose with two stripes, socks in trikot1.
    const int x = 95;
    g.setPen(Qt::NoPen);
    for (int i = 0; i < 5; ++i) {
        g.setBrush(m_colours[i % 2 == 0 ? 0 : 1]);
        g.drawRect(x + i * 8, 5, 8, 36);
    }
    g.setBrush(m_colours[1]);
    g.drawRect(x - 10, 5, 10, 20);
    g.drawRect(x + 40, 5, 10, 20);
    g.setBrush(m_colours[2]);
    g.drawRect(x, 41, 40, 18);
    g.setBrush(m_colours[3]);
    g.drawRect(x, 41, 3, 18);
    g.drawRect(x + 37, 41, 3, 18);
    g.setBrush(m_colours[0]);
    g.drawRect(x + 4, 62, 10, 20);
    g.drawRect(x + 26, 62, 10, 20);
}

void KitShow::mouseDoubleClickEvent(QMouseEvent *)
{
    emit doubleclicked();
}

} // namespace zorbo
