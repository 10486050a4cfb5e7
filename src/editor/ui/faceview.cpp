#include "editor/ui/faceview.h"

#include "editor/facepictures.h"

#include <QPixmap>

namespace zorbo {

FaceView::FaceView(QWidget *parent) : QLabel(parent)
{
    setObjectName(QStringLiteral("picgesicht"));
    setFixedSize(85, 100);
    // Chin first and hair last, so the hair lies over the forehead.
    for (int part : {Kinn, Augen, Nase, Mund, Haare}) {
        auto *img = new QLabel(this);
        img->setObjectName(QStringLiteral("imggesicht(%1)").arg(part));
        img->setGeometry(0, 0, 85, 100);
        img->setAttribute(Qt::WA_TransparentForMouseEvents);
        img->raise();
        m_images[size_t(part)] = img;
    }
}

void FaceView::showgesicht(qint64 code)
{
    const Face f = decodeface(code);
    showface(f.farbe, f.digits);
    setProperty("Tag", QString::number(code));
}

void FaceView::showface(int farbe, const std::array<int, 5> &digits)
{
    if (!m_pictures)
        return;
    setPixmap(QPixmap(m_pictures->folder() + facebackground(farbe)));
    for (int part = 0; part < FacePartCount; ++part) {
        QLabel *img = m_images[size_t(part)];
        const QString path = m_pictures->path(farbe, part, digits[size_t(part)]);
        img->setPixmap(path.isEmpty() ? QPixmap() : QPixmap(path));
        // With no picture at all down to 1 the part falls back to digit 0.
        img->setProperty("Tag", QString::number(path.isEmpty() ? 0 : digits[size_t(part)]));
    }
    Face f{farbe, digits};
    setProperty("Tag", QString::number(encodeface(f)));
}

int FaceView::digit(int part) const
{
    return m_images[size_t(part)]->property("Tag").toString().toInt();
}

void FaceView::mouseDoubleClickEvent(QMouseEvent *event)
{
    QLabel::mouseDoubleClickEvent(event);
    emit doubleClicked();
}

} // namespace zorbo
