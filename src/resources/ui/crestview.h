#pragma once

#include <QImage>
#include <QLabel>

namespace zorbo {

// Decodes a crest file (a 24-bit .tga) through the crest module's reader;
// a null image when the file can't be read.
QImage crestimage(const QString &path);

// ImgXwappen: shows one crest picture, which can be loaded from a file,
// taken from another view and read back. A click raises clicked().
class CrestView : public QLabel {
    Q_OBJECT
public:
    explicit CrestView(QWidget *parent = nullptr);

    // Shows the crest file; false, showing nothing, when it can't be read.
    bool loadfile(const QString &path);
    void setImage(const QImage &image);
    const QImage &image() const { return m_image; }

signals:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QImage m_image;
};

} // namespace zorbo
