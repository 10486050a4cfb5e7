#pragma once

#include "core/teamtree.h"

#include <QAbstractListModel>

namespace zorbo {

// The clubs as the club lists show them, "Name (Land)", with the club's
// number as the item data (Qt::UserRole).
class ClubListModel : public QAbstractListModel {
    Q_OBJECT
public:
    using QAbstractListModel::QAbstractListModel;

    void setClubs(QList<ClubEntry> clubs);
    const QList<ClubEntry> &clubs() const { return m_clubs; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    QList<ClubEntry> m_clubs;
};

} // namespace zorbo
