#pragma once

#include <QImage>
#include <QLabel>

namespace zorbo {

// ImgXwappen: shows one crest picture, which can be taken from another
// view and read back. A click raises clicked().
class CrestView : public QLabel {
    Q_OBJECT
public:
    explicit CrestView(QWidget *parent = nullptr);

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
