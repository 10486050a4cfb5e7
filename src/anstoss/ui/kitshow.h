#pragma once

#include <QColor>
#include <QPixmap>
#include <QVariant>
#include <QWidget>
#include <array>

namespace zorbo {

// One kit of the workbench: its drawing and beside it a small figure in the
// kit's four colours (trikot1, trikot2, hose, streifen). The tag is the
// drawing's number, empty until the kit was shown from the database once.
class KitShow : public QWidget {
    Q_OBJECT
public:
    explicit KitShow(const QString &name, QWidget *parent = nullptr);

    void setdrawing(const QVariant &tag, const QPixmap &picture);
    void setcolours(const std::array<QColor, 4> &colours);
    const std::array<QColor, 4> &colours() const { return m_colours; }
    QVariant tag;

    QSize sizeHint() const override { return {150, 90}; }

signals:
    void doubleclicked();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    QPixmap m_picture;
    std::array<QColor, 4> m_colours{};
};

// "r,g,b" with blanks allowed before each number; black when unreadable.
QColor colouroftext(const QString &text);

} // namespace zorbo
