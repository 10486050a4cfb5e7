#include "resources/ui/crestgridmodel.h"

#include "resources/crestfiles.h"
#include "resources/ui/crestimage.h"

namespace zorbo {

CrestGridModel::CrestGridModel(const QString &wappenFolder, QObject *parent)
    : QAbstractTableModel(parent), m_folder(wappenFolder)
{
}

int CrestGridModel::crest(const QModelIndex &index)
{
    const int n = index.row() * Columns + index.column();
    return index.isValid() && n < CrestCount ? n : -1;
}

int CrestGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Rows;
}

int CrestGridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Columns;
}

QVariant CrestGridModel::data(const QModelIndex &index, int role) const
{
    const int n = crest(index);
    if (n < 0)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return n;
    case Qt::TextAlignmentRole:
        return int(Qt::AlignRight | Qt::AlignBottom);
    case Qt::DecorationRole: {
        auto it = m_cache.constFind(n);
        if (it == m_cache.constEnd()) {
            const QImage image = crestimage(crestfile(m_folder, n));
            const QPixmap pixmap = image.isNull() ? QPixmap()
                : QPixmap::fromImage(image.scaled(CellSize - 6, CellSize - 6, Qt::KeepAspectRatio, Qt::SmoothTransformation));
            it = m_cache.insert(n, pixmap);
        }
        return *it;
    }
    default:
        return {};
    }
}

Qt::ItemFlags CrestGridModel::flags(const QModelIndex &index) const
{
    return crest(index) < 0 ? Qt::NoItemFlags : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

void CrestGridModel::forget(int n)
{
    m_cache.remove(n);
    const QModelIndex cell = index(n / Columns, n % Columns);
    emit dataChanged(cell, cell);
}

} // namespace zorbo
