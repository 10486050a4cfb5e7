#include "resources/ui/crestview.h"

#include "resources/pixels.h"
#include "resources/tga.h"

#include <QMouseEvent>
#include <QPixmap>

namespace zorbo {

QImage crestimage(const QString &path)
{
    TgaImage tga;
    if (!readtga(path, tga))
        return {};
    QImage image(tga.width, tga.height, QImage::Format_RGB32);
    const auto *in = reinterpret_cast<const unsigned char *>(tga.pixels.constData());
    for (int y = 0; y < tga.height; ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < tga.width; ++x, in += 2) {
            const int p = in[0] | in[1] << 8;
            line[x] = qRgb(expand5(red565(p)), expand6(green565(p)), expand5(blue565(p)));
        }
    }
    return image;
}

CrestView::CrestView(QWidget *parent) : QLabel(parent)
{
    setObjectName(QStringLiteral("ImgXwappen"));
    setAlignment(Qt::AlignCenter);
    setCursor(Qt::PointingHandCursor);
}

bool CrestView::loadfile(const QString &path)
{
    setImage(crestimage(path));
    return !m_image.isNull();
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
