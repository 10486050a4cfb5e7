#pragma once

#include "core/clublistmodel.h"
#include "core/teamtree.h"

#include <QObject>
#include <QStringListModel>

namespace zorbo {

// The country and club lists of all windows, built once per rebuild of the
// tree; every combo box of countries or clubs shows one of these models.
class TeamLists : public QObject {
    Q_OBJECT
public:
    explicit TeamLists(QObject *parent = nullptr);

    void fill(const TeamTree &tree);

    QStringListModel *laender() { return &m_laender; }             // cboland
    QStringListModel *spielerlaender() { return &m_spielerlaender; } // cbospielerland
    ClubListModel *vereine() { return &m_vereine; }                 // cboverein, cbovereineeditor

private:
    QStringListModel m_laender;
    QStringListModel m_spielerlaender;
    ClubListModel m_vereine;
};

} // namespace zorbo
