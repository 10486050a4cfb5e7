#include "editor/playerlist.h"

#include "core/problems.h"

#include <QLocale>
#include <QRegularExpression>
#include <QSet>

namespace zorbo {

namespace {

// The two kinds of rows of the list: players of spieler, free players of a4spieler.
enum Arm { Spieler = 0, Frei = 1 };

// Joins an arm needs for the columns it shows or filters by.
enum Join { Kader = 1, Teams = 2, Laender = 4, Rang = 8 };

const char *const headings[] = {"Nummer", "Name",     "Vorname",   "Verein", "Land",         "Kontinent",
                                "Position", "Stärke", "Maxstärke", "Größe",  "Rückennummer", "Resteinsätze"};

// The expression of a column in an arm, with the joins it needs.
QString expr(ListColumn c, Arm arm, int *joins)
{
    const bool s = arm == Spieler;
    switch (c) {
    case ListColumn::Nummer: return s ? QStringLiteral("s.NUMMER") : QStringLiteral("a.id");
    case ListColumn::Name: return s ? QStringLiteral("s.NAME") : QStringLiteral("a.name");
    case ListColumn::Vorname: return s ? QStringLiteral("s.VORNAME") : QStringLiteral("a.vorname");
    case ListColumn::Verein:
        if (!s)
            return QStringLiteral("'Freie Spieler'");
        *joins |= Kader | Teams;
        return QStringLiteral("CASE WHEN k.verein IS NULL THEN 'vereinslos' WHEN k.verein = 0 THEN 'Transfermarkt' "
                              "ELSE coalesce(t.NAME, n.NAME, '') END");
    case ListColumn::Land: return s ? QStringLiteral("s.NATION") : QStringLiteral("a.land");
    case ListColumn::Kontinent: *joins |= Laender; return QStringLiteral("l.kontinent");
    case ListColumn::Position: return s ? QStringLiteral("s.ART") : QStringLiteral("a.position");
    case ListColumn::Staerke: return s ? QStringLiteral("s.\"Stärke\"") : QStringLiteral("a.staerke");
    case ListColumn::MaxStaerke: return s ? QStringLiteral("s.\"Max_Stärke\"") : QStringLiteral("NULL");
    case ListColumn::Groesse: return s ? QStringLiteral("s.GROESSE") : QStringLiteral("NULL");
    case ListColumn::Rueckennummer: return s ? QStringLiteral("s.RUECKENNUMMER") : QStringLiteral("a.rueckennummer");
    case ListColumn::Einsaetze: return s ? QStringLiteral("s.\"REST_EINSÄTZE\"") : QStringLiteral("a.restspiele");
    }
    return QStringLiteral("NULL");
}

const char *const aliases[] = {"nummer", "name", "vorname", "verein", "land", "kontinent",
                               "art", "staerke", "maxstaerke", "groesse", "rueckennummer", "einsaetze"};

bool istext(ListColumn c)
{
    return c == ListColumn::Name || c == ListColumn::Vorname || c == ListColumn::Verein || c == ListColumn::Land
        || c == ListColumn::Kontinent;
}

// The continent of each country's name, small enough to be made for each statement.
const char *const laenderSql =
    "(SELECT NAME AS land, min(KONTINENT) AS kontinent FROM vereine_national WHERE NAME IS NOT NULL GROUP BY NAME)";

// page: the marks of the players of a window ("?1,?2"), whose first teams
// are looked up for them alone; else the squads' table kept for the list.
QString fromclause(Arm arm, int joins, const QString &page = {})
{
    const QString laender = QString::fromLatin1(laenderSql);
    const QString rang = joins & Rang ? QStringLiteral(" LEFT JOIN temp.suche_rang r ON r.frei = %1 AND r.nummer = %2")
                                            .arg(QString::number(int(arm)), arm == Frei ? QStringLiteral("a.id") : QStringLiteral("s.NUMMER"))
                                      : QString();
    if (arm == Frei)
        return QStringLiteral(" FROM a4spieler a") + rang
            + (joins & Laender ? QStringLiteral(" LEFT JOIN %1 l ON l.land = a.land").arg(laender) : QString());
    QString from = QStringLiteral(" FROM spieler s") + rang;
    if (joins & Kader)
        from += page.isEmpty() ? QStringLiteral(" LEFT JOIN temp.spielerliste_kader k ON k.spieler = s.NUMMER")
                               : QStringLiteral(" LEFT JOIN (SELECT spieler, verein, min(zeile) FROM kaderzeilen WHERE spieler IN (%1) "
                                                "GROUP BY spieler) k ON k.spieler = s.NUMMER").arg(page);
    if (joins & Teams)
        from += QStringLiteral(" LEFT JOIN vereine t ON t.NUMMER = k.verein LEFT JOIN vereine_national n ON n.NUMMER = k.verein");
    if (joins & Laender)
        from += QStringLiteral(" LEFT JOIN %1 l ON l.land = s.NATION").arg(laender);
    return from;
}

} // namespace

QString listcolumnname(ListColumn column)
{
    return QString::fromUtf8(headings[int(column)]);
}

QString positionname(qint64 art)
{
    static const char *names[] = {"Tor", "Abwehr", "Mittelfeld", "Sturm"};
    return art >= 0 && art <= 3 ? QString::fromLatin1(names[art]) : QString();
}

std::optional<int> parseposition(const QString &text)
{
    const QString t = text.trimmed();
    bool ok = false;
    const int n = t.toInt(&ok);
    if (ok)
        return n >= 0 && n <= 3 ? std::optional<int>(n) : std::nullopt;
    for (int i = 0; i < 4; ++i) {
        const QString name = positionname(i);
        if (t.compare(name, Qt::CaseInsensitive) == 0 || (t.size() == 3 && name.startsWith(t, Qt::CaseInsensitive)))
            return i;
    }
    return std::nullopt;
}

QVariant PlayerRow::value(ListColumn column) const
{
    switch (column) {
    case ListColumn::Nummer: return nummer;
    case ListColumn::Name: return name;
    case ListColumn::Vorname: return vorname;
    case ListColumn::Verein: return verein;
    case ListColumn::Land: return land;
    case ListColumn::Kontinent: return kontinent;
    case ListColumn::Position: return art;
    case ListColumn::Staerke: return staerke;
    case ListColumn::MaxStaerke: return maxstaerke;
    case ListColumn::Groesse: return groesse;
    case ListColumn::Rueckennummer: return rueckennummer;
    case ListColumn::Einsaetze: return einsaetze;
    }
    return {};
}

PlayerQuery::PlayerQuery(World &world, SearchIndex &index) : m_world(world), m_index(index)
{
    setsort(ListColumn::Name);
    if (Database *db = world.db()) {
        db->exec(QStringLiteral(
            "CREATE TEMP TABLE IF NOT EXISTS spielerliste_kader (spieler INTEGER PRIMARY KEY, verein INTEGER, zahl INTEGER);"
            "CREATE TEMP TABLE IF NOT EXISTS spielerliste_probleme (spieler INTEGER PRIMARY KEY);"));
    }
    m_watch = QObject::connect(&world, &World::changed, &world, [this](const Change &change) {
        m_count.reset();
        m_problemsDirty = true;
        if (change.everything || change.tables.contains(QStringLiteral("vereinspieler")))
            m_joinsDirty = true;
    });
}

PlayerQuery::~PlayerQuery()
{
    QObject::disconnect(m_watch);
}

void PlayerQuery::setfilter(const PlayerFilter &filter)
{
    m_filter = filter;
    m_count.reset();
}

// Ties go by the player's place in German order of name and first name
// (see PlayerRank), an integer the database compares without the collator.
void PlayerQuery::setsort(ListColumn column, bool descending)
{
    const QString dir = descending ? QStringLiteral(" DESC") : QString();
    m_order.clear();
    if (column != ListColumn::Name)
        m_order = QString::fromLatin1(aliases[int(column)]) + (istext(column) ? QStringLiteral(" COLLATE deutsch") : QString()) + dir
            + QStringLiteral(", ");
    m_order += QStringLiteral("rang") + dir;
    m_sortColumn = column;
    m_descending = descending;
}

// The list sorted by name with no filter but a text, as it opens and while
// the user types: the ranks' table answers it alone, in the order of its
// index without a sort, and holds the folded text that one or two letters,
// hitting tens of thousands, are looked for in. The condition on
// temp.suche_rang, its values into values; nothing for other filters.
std::optional<QString> PlayerQuery::rankedfilter(QVariantList &values)
{
    PlayerFilter plain;
    plain.text = m_filter.text;
    plain.freie = m_filter.freie;
    if (!(m_filter == plain) || m_sortColumn != ListColumn::Name || !m_index.rankplayers())
        return std::nullopt;
    QString cond = QStringLiteral("+frei <= ?"); // a walk of the whole table, not of the index by player
    values << (m_filter.freie ? 1 : 0);
    const QString folded = searchfold(m_filter.text.trimmed());
    if (folded.size() >= 3) {
        QVariant match;
        cond += QStringLiteral(" AND (frei = 1 AND instr(text, ?) > 0 OR frei = 0 AND %1)")
                    .arg(m_index.playercondition(QStringLiteral("nummer"), m_filter.text, &match));
        values << folded << match;
    } else if (!folded.isEmpty()) {
        cond += QStringLiteral(" AND instr(text, ?) > 0");
        values << folded;
    }
    return cond;
}

// The squads and the continents as temporary tables keyed for the joins,
// brought up to date before each statement that reads them: the world
// changes under the list.
void PlayerQuery::refreshjoins()
{
    if (m_filter.problem && m_problemsDirty) {
        markproblems();
        m_problemsDirty = false;
    }
}

// The first team of every player, kept while the squads stay as they are:
// only a list sorted by club needs it.
void PlayerQuery::refreshsquads()
{
    if (!m_joinsDirty)
        return;
    m_joinsDirty = false;
    m_world.db()->exec(QStringLiteral(
        "DELETE FROM temp.spielerliste_kader;"
        "INSERT INTO temp.spielerliste_kader SELECT spieler, verein, count(*) FROM "
        "(SELECT spieler, verein, zeile FROM kaderzeilen ORDER BY spieler, zeile) GROUP BY spieler;"));
}

void PlayerQuery::markproblems()
{
    Database *db = m_world.db();
    if (!db)
        return;
    const ProblemReport report = checkproblems(*db, m_world.settings());
    db->exec(QStringLiteral("DELETE FROM temp.spielerliste_probleme"));
    Statement put = db->prepare(QStringLiteral("INSERT OR IGNORE INTO temp.spielerliste_probleme VALUES (?1)"));
    for (const Problem &p : report.problems) {
        if (p.where.player >= 0) {
            put.bind(1, p.where.player);
            put.exec();
        }
    }
}

// One arm of the list's statement: the columns asked for, under their
// aliases, with the filter's conditions; values go into values in order.
QString PlayerQuery::arm(int a, const QList<ListColumn> &columns, QVariantList &values, bool ranked)
{
    const Arm which = Arm(a);
    const PlayerFilter &f = m_filter;
    int joins = 0;
    QStringList conds;
    const auto cond = [&](ListColumn c, const QString &op, const QVariant &v) {
        conds << expr(c, which, &joins) + op;
        values << v;
    };
    if (which == Frei && (!f.freie || !m_world.db()->scalar(QStringLiteral("SELECT EXISTS (SELECT 1 FROM a4spieler)")).toBool() || f.ohneVerein || f.verein || !f.vereinName.isEmpty() || f.doppelteNummer || f.problem))
        return {};
    if (!f.text.trimmed().isEmpty()) {
        if (which == Spieler) {
            QVariant v;
            conds << m_index.playercondition(QStringLiteral("s.NUMMER"), f.text, &v);
            values << v;
        } else {
            conds << QStringLiteral("instr(suchtext(coalesce(a.vorname, '') || ' ' || coalesce(a.name, '')), ?) > 0");
            values << searchfold(f.text.trimmed());
        }
    }
    if (!f.land.isEmpty()) {
        conds << QStringLiteral("samename(%1, ?)").arg(expr(ListColumn::Land, which, &joins));
        values << f.land;
    }
    if (!f.kontinent.isEmpty())
        cond(ListColumn::Kontinent, QStringLiteral(" = ?"), f.kontinent);
    if (f.position)
        cond(ListColumn::Position, QStringLiteral(" = ?"), *f.position);
    if (f.staerkeVon)
        cond(ListColumn::Staerke, QStringLiteral(" >= ?"), *f.staerkeVon);
    if (f.staerkeBis)
        cond(ListColumn::Staerke, QStringLiteral(" <= ?"), *f.staerkeBis);
    if (which == Spieler) {
        if (f.verein) {
            conds << QStringLiteral("s.NUMMER IN (SELECT spieler FROM kaderzeilen WHERE verein = ?)");
            values << *f.verein;
        }
        if (!f.vereinName.isEmpty()) {
            conds << QStringLiteral("s.NUMMER IN (SELECT spieler FROM kaderzeilen WHERE verein IN (SELECT NUMMER FROM "
                                    "vereine WHERE samename(NAME, ?1) UNION SELECT NUMMER FROM vereine_national WHERE samename(NAME, ?1)))")
                         .replace(QStringLiteral("?1"), QStringLiteral("?"));
            values << f.vereinName << f.vereinName;
        }
        if (f.ohneVerein)
            conds << QStringLiteral("s.NUMMER NOT IN (SELECT spieler FROM kaderzeilen)");
        if (f.doppelteNummer)
            conds << QStringLiteral(
                "s.NUMMER IN (SELECT k.spieler FROM kaderzeilen k JOIN spieler d ON d.NUMMER = k.spieler "
                "JOIN (SELECT k2.verein, d2.RUECKENNUMMER AS nr FROM kaderzeilen k2 JOIN spieler d2 ON d2.NUMMER = k2.spieler "
                "WHERE k2.verein <> 0 GROUP BY k2.verein, d2.RUECKENNUMMER HAVING count(*) > 1) w "
                "ON w.verein = k.verein AND w.nr IS d.RUECKENNUMMER)");
        if (f.problem)
            conds << QStringLiteral("s.NUMMER IN (SELECT spieler FROM temp.spielerliste_probleme)");
    }
    QStringList cols{QString::number(a) + QStringLiteral(" AS frei")};
    for (ListColumn c : columns)
        cols << expr(c, which, &joins) + QStringLiteral(" AS ") + QString::fromLatin1(aliases[int(c)]);
    if (ranked) {
        cols << QStringLiteral("r.rang AS rang");
        joins |= Rang;
    }
    if (joins & Kader)
        refreshsquads();
    QString sql = QStringLiteral("SELECT ") + cols.join(QStringLiteral(", ")) + fromclause(which, joins);
    if (!conds.isEmpty())
        sql += QStringLiteral(" WHERE ") + conds.join(QStringLiteral(" AND "));
    return sql;
}

QString PlayerQuery::statement(const QList<ListColumn> &columns, QVariantList &values, bool ranked)
{
    QStringList arms;
    for (int a : {Spieler, Frei}) {
        const QString s = arm(a, columns, values, ranked);
        if (!s.isEmpty())
            arms << s;
    }
    return arms.join(QStringLiteral(" UNION ALL "));
}

qint64 PlayerQuery::count()
{
    Database *db = m_world.db();
    if (!db)
        return 0;
    if (!m_count) {
        refreshjoins();
        QVariantList values;
        const std::optional<QString> ranked = rankedfilter(values);
        const QString sql = ranked ? QStringLiteral("SELECT 1 FROM temp.suche_rang WHERE ") + *ranked : statement({ListColumn::Nummer}, values);
        Statement st = db->prepare(QStringLiteral("SELECT count(*) FROM (") + sql + QLatin1Char(')'));
        for (int i = 0; i < values.size(); ++i)
            st.bind(i + 1, values[i]);
        m_count = st.step() ? st.integer(0) : 0;
    }
    return *m_count;
}

qint64 PlayerQuery::total()
{
    Database *db = m_world.db();
    if (!db)
        return 0;
    return db->scalar(QStringLiteral("SELECT (SELECT count(*) FROM spieler) + (SELECT count(*) FROM a4spieler)")).toLongLong();
}

QList<PlayerRow> PlayerQuery::rows(qint64 offset, int limit)
{
    QList<PlayerRow> out;
    Database *db = m_world.db();
    if (!db || limit <= 0)
        return out;
    refreshjoins();
    m_index.rankplayers();
    // First the keys of the window, with only the columns the sort needs,
    // then the window's rows whole.
    QList<ListColumn> keycols{ListColumn::Nummer};
    if (m_sortColumn != ListColumn::Name && m_sortColumn != ListColumn::Nummer)
        keycols << m_sortColumn;
    QVariantList values;
    const std::optional<QString> ranked = rankedfilter(values);
    const QString sql = ranked ? QStringLiteral("SELECT frei, nummer, rang FROM temp.suche_rang WHERE ") + *ranked
                               : statement(keycols, values, true);
    if (sql.isEmpty())
        return out;
    Statement keys = db->prepare(QStringLiteral("SELECT frei, nummer FROM (") + sql + QStringLiteral(") ORDER BY ") + m_order
                                 + QStringLiteral(" LIMIT ? OFFSET ?"));
    values << limit << offset;
    for (int i = 0; i < values.size(); ++i)
        keys.bind(i + 1, values[i]);
    QList<QPair<bool, qint64>> order;
    while (keys.step())
        order.append({keys.integer(0) != 0, keys.integer(1)});
    if (order.isEmpty())
        return out;

    QList<ListColumn> all;
    for (int c = 0; c < listColumnCount; ++c)
        all << ListColumn(c);
    QHash<QPair<bool, qint64>, PlayerRow> found;
    for (int a : {Spieler, Frei}) {
        QStringList marks;
        QVariantList numbers;
        for (const auto &k : order) {
            if (k.first == (a == Frei)) {
                marks << QStringLiteral("?") + QString::number(numbers.size() + 1);
                numbers << k.second;
            }
        }
        if (numbers.isEmpty())
            continue;
        int joins = Kader | Teams | Laender;
        QStringList cols{QString::number(a)};
        QString vereinnr = a == Spieler ? QStringLiteral("k.verein") : QStringLiteral("NULL");
        cols << vereinnr;
        for (ListColumn c : all)
            cols << expr(c, Arm(a), &joins);
        Statement st = db->prepare(QStringLiteral("SELECT ") + cols.join(QStringLiteral(", ")) + fromclause(Arm(a), joins, marks.join(QLatin1Char(',')))
                                   + QStringLiteral(" WHERE ") + expr(ListColumn::Nummer, Arm(a), &joins)
                                   + QStringLiteral(" IN (") + marks.join(QLatin1Char(',')) + QLatin1Char(')'));
        for (int i = 0; i < numbers.size(); ++i)
            st.bind(i + 1, numbers[i]);
        while (st.step()) {
            PlayerRow r;
            r.frei = a == Frei;
            r.vereinNr = st.isNull(1) ? -1 : st.integer(1);
            r.nummer = st.integer(2);
            r.name = st.text(3);
            r.vorname = st.text(4);
            r.verein = st.text(5);
            r.land = st.text(6);
            r.kontinent = st.text(7);
            r.art = st.value(8);
            r.staerke = st.value(9);
            r.maxstaerke = st.value(10);
            r.groesse = st.value(11);
            r.rueckennummer = st.value(12);
            r.einsaetze = st.value(13);
            found.insert({r.frei, r.nummer}, r);
        }
    }
    for (const auto &k : order)
        out.append(found.value(k));
    return out;
}

QList<qint64> PlayerQuery::numbers()
{
    QList<qint64> out;
    Database *db = m_world.db();
    if (!db)
        return out;
    refreshjoins();
    QVariantList values;
    const QString sql = arm(Spieler, {ListColumn::Nummer}, values);
    Statement st = db->prepare(sql + QStringLiteral(" ORDER BY s.NUMMER"));
    for (int i = 0; i < values.size(); ++i)
        st.bind(i + 1, values[i]);
    while (st.step())
        out.append(st.integer(1));
    return out;
}

QString countline(qint64 shown, qint64 total)
{
    const QLocale german(QLocale::German, QLocale::Germany);
    return QStringLiteral("%1 von %2 Spielern").arg(german.toString(shown), german.toString(total));
}

} // namespace zorbo
