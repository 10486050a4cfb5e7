#include "anstoss/squadbuilder.h"

#include "platform/numbers.h"
#include "platform/random.h"

#include <algorithm>

namespace zorbo {

namespace {

QString stars(double strength)
{
    return formatOneDecimal(strength / 2000.0, systemDecimalSign()) + QStringLiteral(" Sterne");
}

} // namespace

QString systemcaption(int system)
{
    const auto &c = squadsystems[size_t(system)];
    return QStringLiteral("%1 TOR, %2 ABW, %3 MIT, %4 STU").arg(c[0]).arg(c[1]).arg(c[2]).arg(c[3]);
}

int randomsystem()
{
    return rndBelow(9);
}

void SquadBuilder::clear()
{
    m_import.clear();
    m_editor.clear();
    m_squad.clear();
}

void SquadBuilder::fill(Database &db, const AetFile &file, qint64 club)
{
    clear();
    const int n = aetplayercount(file);
    for (int i = 0; i < n; ++i) {
        const QString s = aetsection(i);
        ListEntry e;
        e.id = i;
        e.key = QStringLiteral("I_") + QString::number(i);
        e.art = aetposition(file, i, QStringLiteral("3"));
        e.text = file.value(s, QStringLiteral("Vorname"), QStringLiteral(" ")).left(1) + QStringLiteral(". ")
                 + file.value(s, QStringLiteral("Name"));
        e.position = positiontext(e.art);
        e.staerke = stars(valtext(file.value(s, QStringLiteral("Staerke"), QStringLiteral("0"))));
        m_import.append(e);
    }
    fillclub(db, club);
}

void SquadBuilder::fillclub(Database &db, qint64 club)
{
    m_editor.clear();
    Statement st = db.prepare(QStringLiteral("SELECT nummer, art, name, vorname, \"stärke\" FROM spielerinvereine "
                                             "WHERE verein = ?1 ORDER BY art, name, vorname"));
    Statement row = db.prepare(QStringLiteral("SELECT * FROM spieler WHERE NUMMER = ?1"));
    st.bind(1, club);
    while (st.step()) {
        ListEntry e;
        e.id = st.integer(0);
        e.key = QStringLiteral("E_") + QString::number(e.id);
        e.art = int(st.integer(1));
        e.text = st.text(3) + QLatin1Char(' ') + st.text(2);
        e.position = positiontext(e.art);
        e.staerke = stars(st.real(4));
        row.bind(1, e.id);
        if (row.step()) {
            for (int c = 1; c < row.columnCount(); ++c)
                e.row.append(row.value(c));
        }
        row.reset();
        m_editor.append(e);
    }
    // The squad's players of the club no longer stand for rows of the list.
    for (ListEntry &e : m_squad) {
        if (e.key.startsWith(QLatin1Char('E')))
            e.key = QStringLiteral("E_0");
    }
}

void SquadBuilder::dropsquad()
{
    QList<int> rows;
    for (int i = 0; i < m_squad.size(); ++i)
        rows.append(i);
    remove(rows);
}

QList<int> SquadBuilder::copy(Source source, QList<int> rows)
{
    std::sort(rows.begin(), rows.end());
    QList<ListEntry> &from = sourcelist(source);
    QList<int> copied;
    for (int row : rows) {
        if (full())
            break;
        if (row < 0 || row >= from.size() || from[row].ghosted || copied.contains(row))
            continue;
        ListEntry e = from[row];
        e.key = e.key.left(2) + QString::number(row + 1);
        // Kept sorted by position; equal positions in the order they came.
        const auto at = std::upper_bound(m_squad.begin(), m_squad.end(), e.art,
                                         [](int art, const ListEntry &x) { return art < x.art; });
        m_squad.insert(at, e);
        from[row].ghosted = true;
        copied.append(row);
    }
    return copied;
}

void SquadBuilder::remove(QList<int> rows)
{
    std::sort(rows.begin(), rows.end(), std::greater<int>());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    for (int row : rows) {
        if (row < 0 || row >= m_squad.size())
            continue;
        const ListEntry &e = m_squad[row];
        QList<ListEntry> &from = sourcelist(e.key.startsWith(QLatin1Char('I'), Qt::CaseInsensitive) ? Import : Editor);
        const int place = e.key.mid(2).toInt() - 1;
        if (place >= 0 && place < from.size())
            from[place].ghosted = false;
        m_squad.removeAt(row);
    }
}

void SquadBuilder::autochoose(int system)
{
    // The strongest first by the text of the strength column, as the work
    // list compares it; equal texts keep the list's order.
    QList<int> order;
    for (int i = 0; i < m_import.size(); ++i)
        order.append(i);
    std::stable_sort(order.begin(), order.end(),
                     [this](int a, int b) { return m_import[a].staerke.compare(m_import[b].staerke) > 0; });
    const auto &counts = squadsystems[size_t(system)];
    for (int art = 0; art < 4; ++art) {
        int counter = 0;
        for (int r : order) {
            if (m_import[r].art != art)
                continue;
            ++counter;
            copy(Import, {r});
            m_import[r].ghosted = true;
            if (counter == counts[size_t(art)])
                break;
        }
    }
}

void SquadBuilder::ghost(Source source, const QList<int> &rows)
{
    QList<ListEntry> &from = sourcelist(source);
    for (int row : rows) {
        if (row >= 0 && row < from.size())
            from[row].ghosted = true;
    }
}

QList<SquadEntry> SquadBuilder::entries() const
{
    QList<SquadEntry> out;
    for (const ListEntry &e : m_squad) {
        const bool fromFile = e.key.startsWith(QLatin1Char('I'), Qt::CaseInsensitive);
        out.append({fromFile, e.id, e.row});
    }
    return out;
}

int SquadBuilder::rowof(Source source, qint64 id) const
{
    const QList<ListEntry> &from = list(source);
    for (int i = 0; i < from.size(); ++i) {
        if (from[i].id == id)
            return i;
    }
    return -1;
}

} // namespace zorbo
