#pragma once

#include "platform/database.h"
#include "platform/numbers.h"

#include <QAbstractTableModel>
#include <QList>
#include <QStringList>

#include <optional>

namespace zorbo {

// Columns of the player grid, those of spielerinvereine position for
// position. 10 to 12 are carried along unused.
enum PlayerColumn {
    ColNummer = 0, ColName, ColVorname, ColStaerke, ColMaxStaerke, ColLand, ColGroesse, ColPosition,
    ColRueckennummer, ColRestspiele, ColLieblingsposX, ColLieblingsposY, ColVerein, ColGesicht, ColHautfarbe,
    ColHaarfarbe, ColErlernt, ColGesperrt,
    PlayerColumnCount = 18,
    VisiblePlayerColumns = 10,
};

// One player of a squad with his stored values. An empty optional is a Null
// of the database, so that a save can write back what it read.
struct GridPlayer {
    qint64 nummer = 0;
    std::optional<QString> name;
    std::optional<QString> vorname;
    std::optional<qint64> staerke; // 2000 units a star
    std::optional<qint64> maxstaerke;
    std::optional<QString> nation;
    std::optional<qint64> groesse;
    std::optional<qint64> art; // ART: 0 goalkeeper, 1 defender, 2 midfielder, 3 forward
    std::optional<qint64> rueckennummer;
    std::optional<qint64> restspiele;
    std::optional<double> lieblingsposX;
    std::optional<double> lieblingsposY;
    qint64 verein = 0;
    std::optional<qint64> gesicht;
    std::optional<qint64> hautfarbe;
    std::optional<qint64> haarfarbe;
    std::optional<QString> erlernt;
    std::optional<QString> gesperrt;

    bool operator==(const GridPlayer &) const = default;
};

// "Tor", "Abwehr", "Mittelfeld", "Sturm" by ART.
const QStringList &positionsnamen();

// A team's squad: goalkeepers first, then defenders, midfielders and
// forwards, each by name and first name.
QList<GridPlayer> loadspielerliste(Database &db, qint64 team);

// flxgrdspieler: a squad with all of each player's columns, also those the
// window keeps out of view. Strengths show as star texts with the decimal
// sign given, the position by its name, a Null as nothing. An empty squad
// shows 20 empty rows that can't be chosen.
class PlayerGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    static constexpr int emptyRows = 20;
    // True for the cells the window paints pale yellow (255, 255, 192):
    // every second row from the second on, all columns but the first.
    static constexpr int PaleRowRole = Qt::UserRole + 1;

    explicit PlayerGridModel(QObject *parent = nullptr, QChar decimalSign = systemDecimalSign());

    void setRows(QList<GridPlayer> players);
    void clear();
    bool isEmptySquad() const { return m_empty; }
    // The player of a row; a default one for a row without a player.
    GridPlayer player(int row) const;
    void setPlayer(int row, const GridPlayer &player);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    QString celltext(const GridPlayer &player, int column) const;

    QList<GridPlayer> m_players;
    bool m_empty = false;
    QChar m_decimalSign;
};

} // namespace zorbo
