#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <QPixmap>

namespace zorbo {

// The kit picker's grid: the 80 drawings of a kit folder, twelve to a row,
// and in the last row the caption over three cells and the chosen drawing
// in the last cell. Drawings are read when the view first asks for them.
class KitGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    static constexpr int Columns = 12;
    static constexpr int Rows = 7;
    static constexpr int CaptionColumn = 8; // the caption spans columns 8 to 10

    KitGridModel(const QString &kitFolder, QObject *parent = nullptr);

    // The art of a cell; -1 for the cells of the last row.
    static int art(const QModelIndex &index);
    int chosen() const { return m_chosen; }
    void setChosen(int art);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    QPixmap drawing(int art) const;

    QString m_folder;
    int m_chosen = 0;
    mutable QHash<int, QPixmap> m_cache;
};

} // namespace zorbo
