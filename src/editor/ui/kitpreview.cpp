#include "editor/ui/kitpreview.h"

#include "editor/kitfigure.h"

#include <QEvent>
#include <QFileInfo>
#include <QLabel>
#include <QPainter>

namespace zorbo {

namespace {

// The highest shapes, the sleeves and the outer stripes, stand this far down the frame.
constexpr int figureTop = 195;

// Frame twips to pixels of the preview, which starts at the picture's left
// and the figure's top.
QRect pixels(int left, int top, int width, int height)
{
    return QRect(twipstopixels(left - KitPictureLeft), twipstopixels(top - figureTop), twipstopixels(width),
                 twipstopixels(height));
}

} // namespace

KitPreview::KitPreview(int slot, QWidget *parent) : QWidget(parent), m_slot(slot)
{
    setObjectName(QStringLiteral("kitpreview(%1)").arg(slot));
    m_picture = new QLabel(this);
    m_picture->setObjectName(QStringLiteral("pictrikot(%1)").arg(slot));
    m_picture->setGeometry(pixels(KitPictureLeft, KitPictureTop, KitPictureWidth, KitPictureHeight));
    m_picture->setAlignment(Qt::AlignCenter);
    m_picture->installEventFilter(this);
    int right = 0, bottom = m_picture->geometry().bottom();
    for (const KitShape &s : kitfigure()) {
        const QRect r = pixels(s.left, s.top, s.width, s.height);
        right = qMax(right, r.right());
        bottom = qMax(bottom, r.bottom());
    }
    setFixedSize(right + 4, bottom + 4);
    m_picture->setProperty("Tag", 0);
}

int KitPreview::art() const
{
    return m_picture->property("Tag").toInt();
}

void KitPreview::setArt(int art, const QString &kitFolder)
{
    m_picture->setProperty("Tag", art);
    const QString file = kitartfile(kitFolder, art);
    QPixmap drawing;
    if (!kitFolder.isEmpty() && QFileInfo::exists(file) && drawing.load(file))
        m_picture->setPixmap(drawing.scaled(61, 71, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    else
        m_picture->clear();
}

void KitPreview::setColours(const KitColours &colours)
{
    m_colours = colours;
    update();
}

void KitPreview::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(Qt::black);
    for (const KitShape &s : kitfigure()) {
        const Rgb &c = m_colours[size_t(s.colour)];
        painter.setBrush(QColor(c.red, c.green, c.blue));
        painter.drawRect(pixels(s.left, s.top, s.width, s.height).adjusted(0, 0, -1, -1));
    }
}

bool KitPreview::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_picture && event->type() == QEvent::MouseButtonDblClick && isEnabled())
        emit doubleClicked(m_slot);
    return QWidget::eventFilter(watched, event);
}

} // namespace zorbo
