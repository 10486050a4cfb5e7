#include "editor/ui/mergingheader.h"

#include <QPainter>

namespace zorbo {

MergingHeader::MergingHeader(QWidget *parent) : QHeaderView(Qt::Horizontal, parent) {}

QString MergingHeader::text(int logicalIndex) const
{
    return model() ? model()->headerData(logicalIndex, orientation(), Qt::DisplayRole).toString() : QString();
}

void MergingHeader::paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const
{
    const QString label = text(logicalIndex);
    int first = logicalIndex, last = logicalIndex;
    if (!label.trimmed().isEmpty()) {
        while (first > 0 && text(first - 1) == label && !isSectionHidden(first - 1))
            --first;
        while (last + 1 < count() && text(last + 1) == label && !isSectionHidden(last + 1))
            ++last;
    }
    QRect whole = rect;
    whole.setLeft(sectionViewportPosition(first));
    whole.setRight(sectionViewportPosition(last) + sectionSize(last) - 1);

    QStyleOptionHeader option;
    initStyleOption(&option);
    option.rect = whole;
    option.section = logicalIndex;
    option.text = label;
    option.textAlignment = Qt::AlignCenter;
    option.position = QStyleOptionHeader::Middle;
    painter->save();
    painter->setClipRect(whole);
    style()->drawControl(QStyle::CE_Header, &option, painter, this);
    painter->restore();
}

} // namespace zorbo
