#pragma once

#include "editor/playerlist.h"

#include <QAbstractTableModel>
#include <QHash>
#include <memory>

namespace zorbo {

// All players of the world as a table, filtered and sorted by the database.
// Rows are read a window at a time as the view asks for them, so that a
// list of 100,000 players opens at once. DisplayRole shows stars and
// positions in words; Qt::UserRole holds the stored value.
class PlayerListModel : public QAbstractTableModel {
    Q_OBJECT

public:
    PlayerListModel(World &world, QObject *parent = nullptr);
    ~PlayerListModel() override;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    void setfilter(const PlayerFilter &filter);
    const PlayerFilter &filter() const { return m_query->filter(); }
    qint64 total() const { return m_query->total(); }
    // The row's player; a default row outside the list.
    PlayerRow row(int r) const;
    // NUMMER of every player of spieler the filter shows.
    QList<qint64> numbers() const { return m_query->numbers(); }

private:
    void reload();

    World &m_world;
    std::unique_ptr<PlayerQuery> m_query;
    int m_count = 0;
    mutable QHash<int, QList<PlayerRow>> m_pages; // by first row / pageRows
};

} // namespace zorbo
