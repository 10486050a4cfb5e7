#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <QPixmap>

namespace zorbo {

// The picker's grid of crests 0 to 999, eleven to a row; the cell after
// the last crest stays empty. A crest is decoded when the view first asks
// for it and kept from then on, so opening the picker reads no pictures
// beyond the visible ones.
class CrestGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    static constexpr int Columns = 11;
    static constexpr int Rows = 91;
    static constexpr int CellSize = 66;

    CrestGridModel(const QString &wappenFolder, QObject *parent = nullptr);

    // The crest of a cell; -1 for the empty one.
    static int crest(const QModelIndex &index);
    int decoded() const { return int(m_cache.size()); }
    // Crest n's file was written anew: its cell decodes it again.
    void forget(int n);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    QString m_folder;
    mutable QHash<int, QPixmap> m_cache;
};

} // namespace zorbo
