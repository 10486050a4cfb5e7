#include "editor/playergrid.h"

namespace zorbo {

namespace {

const char *const headings[VisiblePlayerColumns] = {"Nummer", "Name",     "Vorname",     "Stärke",      "Maxstärke",
                                                    "Land",   "Größe",    "Position",    "Rückenummer", "Restspiele"};

} // namespace

const QStringList &positionsnamen()
{
    static const QStringList names = {QStringLiteral("Tor"), QStringLiteral("Abwehr"), QStringLiteral("Mittelfeld"),
                                      QStringLiteral("Sturm")};
    return names;
}

QList<GridPlayer> loadspielerliste(Database &db, qint64 team)
{
    QList<GridPlayer> players;
    Statement st = db.prepare(QStringLiteral(
        "SELECT nummer, name, vorname, \"stärke\", \"MAX_STÄRKE\", NATION, GROESSE, art, rueckennummer, "
        "\"REST_EINSÄTZE\", LIEBLINGSPOS_X, LIEBLINGSPOS_Y, verein, GESICHT, HAUTFARBE, HAARFARBE, ERLERNT, GESPERRT "
        "FROM spielerinvereine WHERE verein = ?1 ORDER BY art, name COLLATE deutsch, vorname COLLATE deutsch"));
    st.bind(1, team);
    const auto integer = [&](int c) { return st.isNull(c) ? std::optional<qint64>() : st.integer(c); };
    const auto real = [&](int c) { return st.isNull(c) ? std::optional<double>() : st.real(c); };
    const auto text = [&](int c) { return st.isNull(c) ? std::optional<QString>() : st.text(c); };
    while (st.step()) {
        GridPlayer p;
        p.nummer = st.integer(ColNummer);
        p.name = text(ColName);
        p.vorname = text(ColVorname);
        p.staerke = integer(ColStaerke);
        p.maxstaerke = integer(ColMaxStaerke);
        p.nation = text(ColLand);
        p.groesse = integer(ColGroesse);
        p.art = integer(ColPosition);
        p.rueckennummer = integer(ColRueckennummer);
        p.restspiele = integer(ColRestspiele);
        p.lieblingsposX = real(ColLieblingsposX);
        p.lieblingsposY = real(ColLieblingsposY);
        p.verein = st.integer(ColVerein);
        p.gesicht = integer(ColGesicht);
        p.hautfarbe = integer(ColHautfarbe);
        p.haarfarbe = integer(ColHaarfarbe);
        p.erlernt = text(ColErlernt);
        p.gesperrt = text(ColGesperrt);
        players << p;
    }
    return players;
}

PlayerGridModel::PlayerGridModel(QObject *parent, QChar decimalSign)
    : QAbstractTableModel(parent), m_decimalSign(decimalSign)
{
}

void PlayerGridModel::setRows(QList<GridPlayer> players)
{
    beginResetModel();
    m_empty = players.isEmpty();
    m_players = std::move(players);
    endResetModel();
}

void PlayerGridModel::clear()
{
    beginResetModel();
    m_players.clear();
    m_empty = false;
    endResetModel();
}

GridPlayer PlayerGridModel::player(int row) const
{
    return row >= 0 && row < m_players.size() ? m_players[row] : GridPlayer();
}

void PlayerGridModel::setPlayer(int row, const GridPlayer &player)
{
    if (row < 0 || row >= m_players.size())
        return;
    m_players[row] = player;
    emit dataChanged(index(row, 0), index(row, PlayerColumnCount - 1));
}

QString PlayerGridModel::celltext(const GridPlayer &p, int column) const
{
    const auto number = [](const std::optional<qint64> &value) {
        return value ? QString::number(*value) : QString();
    };
    const auto real = [](const std::optional<double> &value) {
        return value ? QString::number(*value, 'g', 15) : QString();
    };
    switch (column) {
    case ColNummer:
        return QString::number(p.nummer);
    case ColName:
        return p.name.value_or(QString());
    case ColVorname:
        return p.vorname.value_or(QString());
    case ColStaerke:
        return sternetext(p.staerke.value_or(0), m_decimalSign);
    case ColMaxStaerke:
        return sternetext(p.maxstaerke.value_or(0), m_decimalSign);
    case ColLand:
        return p.nation.value_or(QString());
    case ColGroesse:
        return number(p.groesse);
    case ColPosition:
        return p.art && *p.art >= 0 && *p.art < positionsnamen().size() ? positionsnamen()[*p.art] : QString();
    case ColRueckennummer:
        return number(p.rueckennummer);
    case ColRestspiele:
        return number(p.restspiele);
    case ColLieblingsposX:
        return real(p.lieblingsposX);
    case ColLieblingsposY:
        return real(p.lieblingsposY);
    case ColVerein:
        return QString::number(p.verein);
    case ColGesicht:
        return number(p.gesicht);
    case ColHautfarbe:
        return number(p.hautfarbe);
    case ColHaarfarbe:
        return number(p.haarfarbe);
    case ColErlernt:
        return p.erlernt.value_or(QString());
    case ColGesperrt:
        return p.gesperrt.value_or(QString());
    default:
        return {};
    }
}

int PlayerGridModel::rowCount(const QModelIndex &parent) const
{
    if (parent.isValid())
        return 0;
    return m_empty ? emptyRows : int(m_players.size());
}

int PlayerGridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : PlayerColumnCount;
}

QVariant PlayerGridModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return m_empty ? QString() : celltext(m_players[index.row()], index.column());
    case Qt::TextAlignmentRole:
        if (index.column() < VisiblePlayerColumns)
            return QVariant::fromValue(Qt::Alignment(Qt::AlignCenter));
        return {};
    case PaleRowRole:
        return index.row() % 2 == 1 && index.column() > 0 && !m_empty;
    default:
        return {};
    }
}

QVariant PlayerGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= PlayerColumnCount)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (role == Qt::DisplayRole)
        return section < VisiblePlayerColumns ? QString::fromUtf8(headings[section]) : QString();
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignCenter));
    return {};
}

Qt::ItemFlags PlayerGridModel::flags(const QModelIndex &index) const
{
    if (!index.isValid() || m_empty)
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

} // namespace zorbo
