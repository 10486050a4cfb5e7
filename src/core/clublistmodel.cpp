#include "core/clublistmodel.h"

namespace zorbo {

void ClubListModel::setClubs(QList<ClubEntry> clubs)
{
    beginResetModel();
    m_clubs = std::move(clubs);
    endResetModel();
}

int ClubListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_clubs.size());
}

QVariant ClubListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ClubEntry &club = m_clubs[index.row()];
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return club.text;
    if (role == Qt::UserRole)
        return club.number;
    return {};
}

} // namespace zorbo
