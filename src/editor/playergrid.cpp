#include "editor/playergrid.h"

#include "platform/numbers.h"

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

QList<QStringList> loadspielerliste(Database &db, qint64 team, QChar decimalSign)
{
    QList<QStringList> rows;
    Statement st = db.prepare(QStringLiteral(
        "SELECT nummer, name, vorname, \"stärke\", \"MAX_STÄRKE\", NATION, GROESSE, art, rueckennummer, "
        "\"REST_EINSÄTZE\", LIEBLINGSPOS_X, LIEBLINGSPOS_Y, verein, GESICHT, HAUTFARBE, HAARFARBE, ERLERNT, GESPERRT "
        "FROM spielerinvereine WHERE verein = ?1 ORDER BY art, name, vorname"));
    st.bind(1, team);
    const QStringList &positions = positionsnamen();
    while (st.step()) {
        QStringList texts;
        texts.reserve(PlayerColumnCount);
        for (int c = 0; c < PlayerColumnCount; ++c) {
            if (c == ColStaerke || c == ColMaxStaerke) {
                texts << sternetext(st.isNull(c) ? 0 : st.integer(c), decimalSign);
            } else if (c == ColPosition) {
                const qint64 art = st.isNull(c) ? -1 : st.integer(c);
                texts << (art >= 0 && art < positions.size() ? positions[art] : QString());
            } else {
                texts << (st.isNull(c) ? QString() : st.text(c));
            }
        }
        rows << texts;
    }
    return rows;
}

PlayerGridModel::PlayerGridModel(QObject *parent) : QAbstractTableModel(parent) {}

void PlayerGridModel::setRows(QList<QStringList> rows)
{
    beginResetModel();
    m_empty = rows.isEmpty();
    if (m_empty) {
        for (int i = 0; i < emptyRows; ++i)
            rows << QStringList(PlayerColumnCount, QString());
    }
    m_rows = std::move(rows);
    endResetModel();
}

void PlayerGridModel::clear()
{
    beginResetModel();
    m_rows.clear();
    m_empty = false;
    endResetModel();
}

QStringList PlayerGridModel::row(int r) const
{
    return r >= 0 && r < m_rows.size() ? m_rows[r] : QStringList();
}

void PlayerGridModel::setRow(int r, const QStringList &texts)
{
    if (r < 0 || r >= m_rows.size() || texts.size() != PlayerColumnCount)
        return;
    m_rows[r] = texts;
    emit dataChanged(index(r, 0), index(r, PlayerColumnCount - 1));
}

int PlayerGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
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
        return m_rows[index.row()][index.column()];
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
