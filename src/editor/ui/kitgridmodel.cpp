#include "editor/ui/kitgridmodel.h"

#include "editor/kitart.h"

#include <QFileInfo>

namespace zorbo {

KitGridModel::KitGridModel(const QString &kitFolder, QObject *parent) : QAbstractTableModel(parent), m_folder(kitFolder)
{
}

int KitGridModel::art(const QModelIndex &index)
{
    const int n = index.row() * Columns + index.column();
    return index.isValid() && n < KitArtCount ? n : -1;
}

void KitGridModel::setChosen(int art)
{
    m_chosen = art;
    const QModelIndex last = index(Rows - 1, Columns - 1);
    emit dataChanged(last, last);
}

int KitGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Rows;
}

int KitGridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Columns;
}

QPixmap KitGridModel::drawing(int art) const
{
    auto it = m_cache.constFind(art);
    if (it == m_cache.constEnd()) {
        QPixmap pixmap;
        const QString file = kitartfile(m_folder, art);
        if (!m_folder.isEmpty() && QFileInfo::exists(file))
            pixmap.load(file);
        it = m_cache.insert(art, pixmap);
    }
    return *it;
}

QVariant KitGridModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const bool chosenCell = index.row() == Rows - 1 && index.column() == Columns - 1;
    const bool captionCell = index.row() == Rows - 1 && index.column() == CaptionColumn;
    const int n = chosenCell ? m_chosen : art(index);
    if (role == Qt::DecorationRole && n >= 0 && n < KitArtCount) {
        const QPixmap p = drawing(n);
        return p.isNull() ? QVariant() : QVariant(p);
    }
    if (role == Qt::DisplayRole && captionCell)
        return QStringLiteral("Ausgewähltes Trikot:");
    if (role == Qt::TextAlignmentRole && captionCell)
        return int(Qt::AlignCenter);
    if (role == Qt::ToolTipRole && n >= 0)
        return n;
    return {};
}

Qt::ItemFlags KitGridModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    return art(index) < 0 ? Qt::ItemIsEnabled : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

} // namespace zorbo
