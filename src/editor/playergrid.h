#pragma once

#include "platform/database.h"

#include <QAbstractTableModel>
#include <QList>
#include <QStringList>

namespace zorbo {

// Columns of the player grid, those of spielerinvereine position for
// position. 10 to 12 are carried along unused.
enum PlayerColumn {
    ColNummer = 0, ColName, ColVorname, ColStaerke, ColMaxStaerke, ColLand, ColGroesse, ColPosition,
    ColRueckennummer, ColRestspiele, ColGesicht = 13, ColHautfarbe, ColHaarfarbe, ColErlernt, ColGesperrt,
    PlayerColumnCount = 18,
    VisiblePlayerColumns = 10,
};

// "Tor", "Abwehr", "Mittelfeld", "Sturm" by ART.
const QStringList &positionsnamen();

// A team's squad as the grid shows it: goalkeepers first, then defenders,
// midfielders and forwards, each by name and first name. Strengths as star
// texts with the given decimal sign, the position by its name.
QList<QStringList> loadspielerliste(Database &db, qint64 team, QChar decimalSign);

// flxgrdspieler: a squad with all of each player's columns, also those the
// window keeps out of view. An empty squad shows 20 empty rows that can't
// be chosen.
class PlayerGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    static constexpr int emptyRows = 20;
    // True for the cells the window paints pale yellow (255, 255, 192):
    // every second row from the second on, all columns but the first.
    static constexpr int PaleRowRole = Qt::UserRole + 1;

    explicit PlayerGridModel(QObject *parent = nullptr);

    void setRows(QList<QStringList> rows);
    void clear();
    bool isEmptySquad() const { return m_empty; }
    // The texts of one row, PlayerColumnCount of them.
    QStringList row(int r) const;
    void setRow(int r, const QStringList &texts);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    QList<QStringList> m_rows;
    bool m_empty = false;
};

} // namespace zorbo
