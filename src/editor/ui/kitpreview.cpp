#include "editor/ui/kitpreview.h"

#include "core/kitfigure.h"
#include "core/ui/kitfigurepainter.h"

#include <QEvent>
#include <QFileInfo>
#include <QLabel>
#include <QPainter>

namespace zorbo {

KitPreview::KitPreview(int slot, QWidget *parent) : QWidget(parent), m_slot(slot)
{
    setObjectName(QStringLiteral("kitpreview(%1)").arg(slot));
    m_picture = new QLabel(this);
    m_picture->setObjectName(QStringLiteral("pictrikot(%1)").arg(slot));
    m_picture->setGeometry(kitpixels(KitPictureLeft, KitPictureTop, KitPictureWidth, KitPictureHeight));
    m_picture->setAlignment(Qt::AlignCenter);
    m_picture->installEventFilter(this);
    int right = 0, bottom = m_picture->geometry().bottom();
    for (const KitShape &s : kitfigure()) {
        const QRect r = kitpixels(s.left, s.top, s.width, s.height);
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
    std::array<QColor, 4> colours;
    for (size_t i = 0; i < colours.size(); ++i)
        colours[i] = QColor(m_colours[i].red, m_colours[i].green, m_colours[i].blue);
    paintkitfigure(painter, colours);
}

bool KitPreview::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_picture && event->type() == QEvent::MouseButtonDblClick && isEnabled())
        emit doubleClicked(m_slot);
    return QWidget::eventFilter(watched, event);
}

} // namespace zorbo
