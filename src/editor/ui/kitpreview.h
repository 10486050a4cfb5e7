#pragma once

#include "editor/kitart.h"

#include <QWidget>

class QLabel;

namespace zorbo {

// The preview of one kit slot: the drawing on the left (pictrikot(slot),
// whose "Tag" holds the art) and the small figure of fourteen shapes in the
// kit's four colours on the right, at the old layout's places.
class KitPreview : public QWidget {
    Q_OBJECT
public:
    KitPreview(int slot, QWidget *parent = nullptr);

    int art() const;
    // Shows the drawing of art from the kit folder; a missing drawing shows
    // nothing, as there is no fallback picture for kits.
    void setArt(int art, const QString &kitFolder);
    void setColours(const KitColours &colours);
    const KitColours &colours() const { return m_colours; }
    QLabel *picture() const { return m_picture; }

signals:
    void doubleClicked(int slot);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int m_slot;
    QLabel *m_picture;
    KitColours m_colours{};
};

} // namespace zorbo
