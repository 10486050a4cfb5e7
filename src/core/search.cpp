#include "core/search.h"

#include <QHash>
#include <sqlite3.h>
#include <algorithm>

namespace zorbo {

namespace {

// The three tables are FTS5 tables with the trigram tokenizer: a query of
// three characters or more finds its text anywhere in a name through the
// index; shorter ones look through the table's texts. The rowid is the row's
// NUMMER. The text is folded by searchfold before it goes in, as the query
// is, because the trigram tokenizer of SQLite 3.40 keeps accents.
const char *const tables[] = {"suche_laender", "suche_vereine", "suche_spieler"};

constexpr int rowsForRebuild = 2000;

QString foldchar(QChar c)
{
    switch (c.unicode()) {
    case 0x00DF: case 0x1E9E: return QStringLiteral("ss");
    case 0x00C6: case 0x00E6: return QStringLiteral("ae");
    case 0x0152: case 0x0153: return QStringLiteral("oe");
    case 0x00D8: case 0x00F8: return QStringLiteral("o");
    case 0x0141: case 0x0142: return QStringLiteral("l");
    case 0x0110: case 0x0111: return QStringLiteral("d");
    case 0x0131: return QStringLiteral("i");
    case 0x00DE: case 0x00FE: return QStringLiteral("th");
    default: break;
    }
    return {};
}

void create(Database &db)
{
    for (const char *t : tables)
        db.exec(QStringLiteral("CREATE VIRTUAL TABLE IF NOT EXISTS temp.%1 USING fts5(text, tokenize = 'trigram')")
                    .arg(QLatin1String(t)));
}

// suchtext(text): searchfold for statements; Null stays Null.
void foldSql(sqlite3_context *context, int, sqlite3_value **argv)
{
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) {
        sqlite3_result_null(context);
        return;
    }
    const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(argv[0]));
    const QByteArray folded = searchfold(QString::fromUtf8(text, sqlite3_value_bytes(argv[0]))).toUtf8();
    sqlite3_result_text(context, folded.constData(), int(folded.size()), SQLITE_TRANSIENT);
}

QString position(qint64 art)
{
    static const char *names[] = {"Tor", "Abwehr", "Mittelfeld", "Sturm"};
    return art >= 0 && art <= 3 ? QString::fromLatin1(names[art]) : QString();
}

} // namespace

QString searchfold(const QString &text)
{
    // Names are mostly ASCII with a few accented letters; each letter
    // beyond ASCII is folded once and remembered.
    thread_local QHash<char16_t, QString> folded;
    QString out;
    out.reserve(text.size() + 4);
    for (QChar c : text) {
        const char16_t u = c.unicode();
        if (u < 0x80) {
            out += QChar(u >= 'A' && u <= 'Z' ? u + 32 : u);
            continue;
        }
        auto known = folded.constFind(u);
        if (known == folded.constEnd()) {
            QString f = foldchar(c);
            if (f.isEmpty() && !c.isSurrogate()) {
                for (QChar d : QString(c).normalized(QString::NormalizationForm_KD)) {
                    if (d.category() != QChar::Mark_NonSpacing && d.category() != QChar::Mark_Enclosing
                        && d.category() != QChar::Mark_SpacingCombining)
                        f += d;
                }
                f = f.toCaseFolded();
            } else if (f.isEmpty()) {
                f = QString(c); // half of a pair: kept as it is
            }
            known = folded.insert(u, f);
        }
        out += *known;
    }
    return out;
}

SearchIndex::SearchIndex(World &world) : QObject(&world), m_world(world)
{
    connect(&world, &World::changed, this, &SearchIndex::update);
    attach();
}

// The function and the tables live on the connection, which the world
// opens anew after it had to close it (to compact the file).
void SearchIndex::attach()
{
    m_rank.reset();
    m_dirtyTeams = m_dirtyPlayers = true;
    if (Database *db = m_world.db()) {
        sqlite3_create_function_v2(db->handle(), "suchtext", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, foldSql,
                                   nullptr, nullptr, nullptr);
        create(*db);
        m_rank = std::make_unique<PlayerRank>(*db);
        if (m_idle)
            m_idle->start();
    }
}

bool SearchIndex::rankready() const
{
    return m_rank && m_rank->built();
}

void SearchIndex::rankinidle()
{
    if (m_idle)
        return;
    m_idle = new QTimer(this);
    // Not before the window has drawn what the world shows first.
    m_idle->setInterval(250);
    connect(m_idle, &QTimer::timeout, this, &SearchIndex::idlestep);
    m_idle->start();
}

// A piece of the build, never inside a run that is under way (an event
// loop turning while it waits): its rollback would take the piece along.
void SearchIndex::idlestep()
{
    Database *db = m_world.db();
    if (!db || !m_rank) {
        m_idle->stop();
        return;
    }
    // Looked at again a little later, not spinning while the run goes on.
    m_idle->setInterval(sqlite3_get_autocommit(db->handle()) ? 0 : 50);
    if (m_idle->interval())
        return;
    if (m_rank->buildstep(20))
        m_idle->stop();
}

SearchIndex::~SearchIndex() = default;

SearchIndex &SearchIndex::of(World &world)
{
    if (auto *index = world.findChild<SearchIndex *>(QString(), Qt::FindDirectChildrenOnly))
        return *index;
    return *new SearchIndex(world);
}

bool SearchIndex::rankplayers()
{
    if (!m_rank)
        return false;
    m_rank->ensure();
    return true;
}

void SearchIndex::rebuild()
{
    m_dirtyTeams = m_dirtyPlayers = true;
    refresh();
}

// Builds the parts that a large change left out of date; the first search
// after a whole-world import pays for it, not the import.
void SearchIndex::refresh()
{
    Database *db = m_world.db();
    if (!db || (!m_dirtyTeams && !m_dirtyPlayers))
        return;
    Transaction tx(*db);
    if (m_dirtyTeams)
        db->exec(QStringLiteral(
            "DELETE FROM temp.suche_laender; DELETE FROM temp.suche_vereine;"
            "INSERT INTO temp.suche_laender (rowid, text) SELECT NUMMER, suchtext(NAME || char(10) || coalesce(NATION, '')) "
            "FROM vereine_national;"
            "INSERT INTO temp.suche_vereine (rowid, text) SELECT NUMMER, suchtext(NAME) FROM vereine"));
    if (m_dirtyPlayers)
        db->exec(QStringLiteral("DELETE FROM temp.suche_spieler;"
                                "INSERT INTO temp.suche_spieler (rowid, text) SELECT NUMMER, suchtext(VORNAME || ' ' || NAME) FROM spieler"));
    tx.commit();
    m_dirtyTeams = m_dirtyPlayers = false;
}

void SearchIndex::putteams(const QList<qint64> &numbers)
{
    Database &db = *m_world.db();
    for (qint64 n : numbers) {
        db.run(QStringLiteral("DELETE FROM temp.suche_laender WHERE rowid = ?1"), n);
        db.run(QStringLiteral("DELETE FROM temp.suche_vereine WHERE rowid = ?1"), n);
        db.run(QStringLiteral("INSERT INTO temp.suche_laender (rowid, text) SELECT NUMMER, "
                              "suchtext(NAME || char(10) || coalesce(NATION, '')) FROM vereine_national WHERE NUMMER = ?1"), n);
        db.run(QStringLiteral("INSERT INTO temp.suche_vereine (rowid, text) SELECT NUMMER, suchtext(NAME) FROM vereine WHERE NUMMER = ?1"), n);
    }
}

void SearchIndex::putplayers(const QList<qint64> &numbers)
{
    Database &db = *m_world.db();
    for (qint64 n : numbers) {
        db.run(QStringLiteral("DELETE FROM temp.suche_spieler WHERE rowid = ?1"), n);
        db.run(QStringLiteral("INSERT INTO temp.suche_spieler (rowid, text) SELECT NUMMER, suchtext(VORNAME || ' ' || NAME) "
                              "FROM spieler WHERE NUMMER = ?1"), n);
    }
}

void SearchIndex::update(const Change &change)
{
    if (change.everything && change.tables.isEmpty()) {
        attach();
        return;
    }
    Database *db = m_world.db();
    if (!db)
        return;
    m_rank->update(change);
    // A run that cleared a table or changed many rows has its part built
    // anew, which is quicker than looking up the rows one by one. A table
    // cleared without a row told, and not filled again, shows as one whose
    // rows the index counts otherwise.
    const auto counted = [&](const char *table, const char *index) {
        return db->scalar(QStringLiteral("SELECT count(*) FROM %1").arg(QLatin1String(table))).toLongLong()
            != db->scalar(QStringLiteral("SELECT count(*) FROM temp.%1").arg(QLatin1String(index))).toLongLong();
    };
    const bool teamTables = change.tables.contains(QStringLiteral("vereine")) || change.tables.contains(QStringLiteral("vereine_national"));
    const bool playerTable = change.tables.contains(QStringLiteral("spieler"));
    if (teamTables ? change.everything || change.teams.size() > rowsForRebuild
                   : change.everything && !m_dirtyTeams
                         && (counted("vereine", "suche_vereine") || counted("vereine_national", "suche_laender")))
        m_dirtyTeams = true;
    if (playerTable ? change.everything || change.players.size() > rowsForRebuild
                    : change.everything && !m_dirtyPlayers && counted("spieler", "suche_spieler"))
        m_dirtyPlayers = true;
    Transaction tx(*db);
    if (!m_dirtyTeams)
        putteams(QList<qint64>(change.teams.begin(), change.teams.end()));
    if (!m_dirtyPlayers)
        putplayers(QList<qint64>(change.players.begin(), change.players.end()));
    tx.commit();
}

SearchResult SearchIndex::find(const QString &text, int limit)
{
    SearchResult result;
    Database *db = m_world.db();
    const QString trimmed = text.trimmed();
    if (!db || trimmed.isEmpty())
        return result;
    refresh();

    Statement clubOf = db->prepare(QStringLiteral(
        "SELECT v.verein, coalesce(t.NAME, n.NAME), n.NUMMER IS NOT NULL FROM kaderzeilen v "
        "LEFT JOIN vereine t ON t.NUMMER = v.verein LEFT JOIN vereine_national n ON n.NUMMER = v.verein "
        "WHERE v.spieler = ?1 ORDER BY v.rowid LIMIT 1"));
    const auto hitsOf = [&](HitKind kind, const QString &sql, const QVariant &value) {
        QList<SearchHit> hits;
        Statement st = db->prepare(sql);
        st.bind(1, value).bind(2, limit);
        while (st.step()) {
            SearchHit h{kind, st.integer(0), st.text(1), {}, {}};
            if (kind == HitKind::Spieler) {
                clubOf.bind(1, h.number);
                if (clubOf.step()) {
                    h.teamKey = (clubOf.integer(2) ? QStringLiteral("L") : QStringLiteral("T")) + QString::number(clubOf.integer(0));
                    h.detail = clubOf.text(1);
                }
                clubOf.reset();
                const QString pos = position(st.integer(2));
                if (!pos.isEmpty())
                    h.detail += (h.detail.isEmpty() ? QString() : QStringLiteral(", ")) + pos;
            } else {
                h.teamKey = (kind == HitKind::Land ? QStringLiteral("L") : QStringLiteral("T")) + QString::number(h.number);
            }
            hits.append(h);
        }
        return hits;
    };

    const QString countrySql = QStringLiteral("SELECT NUMMER, NAME FROM vereine_national WHERE %1 ORDER BY NAME COLLATE deutsch, NUMMER");
    const QString clubSql = QStringLiteral("SELECT NUMMER, NAME FROM vereine WHERE %1 ORDER BY NAME COLLATE deutsch, NUMMER");
    const QString playerSql = QStringLiteral(
        "SELECT NUMMER, VORNAME || ' ' || NAME, ART FROM spieler WHERE %1 ORDER BY NAME COLLATE deutsch, VORNAME COLLATE deutsch, NUMMER");

    if (trimmed.startsWith(QLatin1Char('#'))) {
        bool ok = false;
        const qint64 number = trimmed.mid(1).trimmed().toLongLong(&ok);
        if (!ok)
            return result;
        const QString byNumber = QStringLiteral("NUMMER = ?1 AND ?2 > 0");
        result.laender = hitsOf(HitKind::Land, countrySql.arg(byNumber), number);
        result.vereine = hitsOf(HitKind::Verein, clubSql.arg(byNumber), number);
        result.spieler = hitsOf(HitKind::Spieler, playerSql.arg(byNumber), number);
        return result;
    }

    const QString folded = searchfold(trimmed);
    // Three characters and more go through the trigram index as one phrase.
    const bool indexed = folded.size() >= 3;
    const QVariant value = indexed ? QVariant(QLatin1Char('"') + QString(folded).replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"'))
                                   : QVariant(folded);
    const auto match = [&](const char *table) {
        // The first hits, then in German order: sorting every match of a
        // single letter would take longer than a keystroke. Short texts are
        // looked for in the FTS5 table's own store of the texts (its
        // _content table, columns id and c0), five times quicker to walk
        // than the table itself.
        if (indexed)
            return QStringLiteral("NUMMER IN (SELECT rowid FROM temp.%1 WHERE text MATCH ?1 LIMIT ?2)").arg(QLatin1String(table));
        return QStringLiteral("NUMMER IN (SELECT id FROM temp.%1_content WHERE instr(c0, ?1) > 0 LIMIT ?2)").arg(QLatin1String(table));
    };
    result.laender = hitsOf(HitKind::Land, countrySql.arg(match(tables[0])), value);
    result.vereine = hitsOf(HitKind::Verein, clubSql.arg(match(tables[1])), value);
    result.spieler = hitsOf(HitKind::Spieler, playerSql.arg(match(tables[2])), value);
    return result;
}

QString SearchIndex::playercondition(const QString &column, const QString &text, QVariant *value)
{
    refresh();
    const QString folded = searchfold(text.trimmed());
    if (folded.size() >= 3) {
        *value = QLatin1Char('"') + QString(folded).replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
        return column + QStringLiteral(" IN (SELECT rowid FROM temp.suche_spieler WHERE text MATCH ?)");
    }
    *value = folded;
    return column + QStringLiteral(" IN (SELECT id FROM temp.suche_spieler_content WHERE instr(c0, ?) > 0)");
}

} // namespace zorbo
