#pragma once

#include <QDialog>
#include <array>

class QPushButton;
class QRadioButton;
class QSlider;

namespace zorbo {

class FacePictures;
class FaceView;

// frmgesicht, "Gesichtseditor": skin colour, one slider per part, whose range
// is the number of pictures of that part in the current colour.
class FaceDialog : public QDialog {
    Q_OBJECT
public:
    // `code` and `digits` are the face on the player tab, as its tags hold them.
    FaceDialog(const FacePictures &pictures, qint64 code, const std::array<int, 5> &digits,
               QWidget *parent = nullptr);

    // The code that btnok took.
    qint64 code() const { return m_result; }

private:
    void loadform();
    void colourchanged(int farbe);
    void slidermoved(int part);
    void takeface();
    int farbe() const;

    const FacePictures &m_pictures;
    qint64 m_code;
    std::array<int, 5> m_digits;
    qint64 m_result = 0;
    FaceView *m_view;
    QRadioButton *m_colour[2];
    std::array<QSlider *, 5> m_slider{};
    std::array<QPushButton *, 5> m_plus{}, m_minus{};
    bool m_loading = false;
};

} // namespace zorbo
