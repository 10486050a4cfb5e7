#include "editor/ui/playerlistmodel.h"

namespace zorbo {

namespace {

constexpr int pageRows = 200;
constexpr int pagesKept = 20;

} // namespace

PlayerListModel::PlayerListModel(World &world, QObject *parent)
    : QAbstractTableModel(parent), m_world(world), m_query(std::make_unique<PlayerQuery>(world, SearchIndex::of(world)))
{
    m_count = int(m_query->count());
    connect(&world, &World::changed, this, [this] { reload(); });
}

PlayerListModel::~PlayerListModel() = default;

int PlayerListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_count;
}

int PlayerListModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : listColumnCount;
}

PlayerRow PlayerListModel::row(int r) const
{
    if (r < 0 || r >= m_count)
        return {};
    const int page = r / pageRows;
    auto it = m_pages.constFind(page);
    if (it == m_pages.constEnd()) {
        if (m_pages.size() >= pagesKept)
            m_pages.clear();
        it = m_pages.insert(page, m_query->rows(qint64(page) * pageRows, pageRows));
    }
    return it->value(r % pageRows);
}

QVariant PlayerListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_count || index.column() >= listColumnCount)
        return {};
    const auto column = ListColumn(index.column());
    const QVariant v = row(index.row()).value(column);
    if (role == Qt::UserRole)
        return v;
    if (role == Qt::TextAlignmentRole)
        return v.typeId() == QMetaType::QString || column == ListColumn::Position ? QVariant()
                                                                                  : QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    if (v.isNull())
        return QString();
    if (column == ListColumn::Staerke || column == ListColumn::MaxStaerke)
        return starstext(v.toLongLong());
    if (column == ListColumn::Position)
        return positionname(v.toLongLong());
    return v;
}

QVariant PlayerListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= listColumnCount)
        return QAbstractTableModel::headerData(section, orientation, role);
    return listcolumnname(ListColumn(section));
}

void PlayerListModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0 || column >= listColumnCount)
        return;
    m_query->setsort(ListColumn(column), order == Qt::DescendingOrder);
    reload();
}

void PlayerListModel::setfilter(const PlayerFilter &filter)
{
    m_query->setfilter(filter);
    reload();
}

void PlayerListModel::reload()
{
    beginResetModel();
    m_pages.clear();
    m_query->setfilter(m_query->filter());
    m_count = int(m_query->count());
    endResetModel();
}

} // namespace zorbo
