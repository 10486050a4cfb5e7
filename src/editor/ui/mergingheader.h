#pragma once

#include <QHeaderView>

namespace zorbo {

// A horizontal header that draws neighbouring sections with the same text as
// one, so "Voraus." stands once over its three narrow picture columns.
class MergingHeader : public QHeaderView {
    Q_OBJECT
public:
    explicit MergingHeader(QWidget *parent = nullptr);

protected:
    void paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const override;

private:
    QString text(int logicalIndex) const;
};

} // namespace zorbo
