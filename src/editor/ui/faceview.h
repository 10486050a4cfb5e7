#pragma once

#include "editor/facecode.h"

#include <QLabel>
#include <array>

namespace zorbo {

class FacePictures;

// picgesicht with imggesicht(0) to imggesicht(4) stacked on it. The tag of
// picgesicht holds the code, the tag of each image its digit from the code,
// whatever picture stands in for it.
class FaceView : public QLabel {
    Q_OBJECT
public:
    explicit FaceView(QWidget *parent = nullptr);

    void setPictures(const FacePictures *pictures) { m_pictures = pictures; }
    // showgesicht: the face of a code.
    void showgesicht(qint64 code);
    // One colour and five digits, as the face dialog's sliders stand.
    void showface(int farbe, const std::array<int, 5> &digits);
    qint64 code() const { return property("Tag").toString().toLongLong(); }
    int digit(int part) const;
    QLabel *image(int part) const { return m_images[size_t(part)]; }

signals:
    void doubleClicked();

protected:
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    const FacePictures *m_pictures = nullptr;
    std::array<QLabel *, 5> m_images{};
};

} // namespace zorbo
