#include "core/search.h"

#include <algorithm>

namespace zorbo {

namespace {

// The three tables are FTS5 tables with the trigram tokenizer: a query of
// three characters or more finds its text anywhere in a name through the
// index; shorter ones are a LIKE over the table. The rowid is the row's
// NUMMER. The text is folded by searchfold before it goes in, as the query
// is, because the trigram tokenizer of SQLite 3.40 keeps accents.
const char *const tables[] = {"suche_laender", "suche_vereine", "suche_spieler"};

// A run that changes more rows than this is followed by a rebuild, which
// is quicker than looking up the rows one by one.
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

QString likepattern(const QString &folded)
{
    QString escaped = folded;
    escaped.replace(QLatin1Char('\\'), QLatin1String("\\\\"))
        .replace(QLatin1Char('%'), QLatin1String("\\%"))
        .replace(QLatin1Char('_'), QLatin1String("\\_"));
    return QLatin1Char('%') + escaped + QLatin1Char('%');
}

QString position(qint64 art)
{
    static const char *names[] = {"Tor", "Abwehr", "Mittelfeld", "Sturm"};
    return art >= 0 && art <= 3 ? QString::fromLatin1(names[art]) : QString();
}

} // namespace

QString searchfold(const QString &text)
{
    bool ascii = true;
    for (QChar c : text)
        ascii = ascii && c.unicode() < 0x80;
    if (ascii)
        return text.toLower();
    QString out;
    out.reserve(text.size());
    for (QChar c : text) {
        const QString special = foldchar(c);
        out += special.isEmpty() ? QString(c) : special;
    }
    const QString decomposed = out.normalized(QString::NormalizationForm_KD);
    QString plain;
    plain.reserve(decomposed.size());
    for (QChar c : decomposed) {
        if (c.category() != QChar::Mark_NonSpacing && c.category() != QChar::Mark_Enclosing
            && c.category() != QChar::Mark_SpacingCombining)
            plain += c;
    }
    return plain.toCaseFolded();
}

SearchIndex::SearchIndex(World &world, QObject *parent) : QObject(parent), m_world(world)
{
    connect(&world, &World::changed, this, &SearchIndex::update);
    rebuild();
}

SearchIndex::~SearchIndex() = default;

void SearchIndex::rebuild()
{
    Database *db = m_world.db();
    if (!db)
        return;
    Transaction tx(*db);
    create(*db);
    for (const char *t : tables)
        db->exec(QStringLiteral("DELETE FROM temp.%1").arg(QLatin1String(t)));
    putteams({});
    putplayers({});
    tx.commit();
    m_ready = true;
}

// Puts the rows of the numbers in anew, or all rows when numbers is empty.
void SearchIndex::putteams(const QList<qint64> &numbers)
{
    Database &db = *m_world.db();
    const QString where = numbers.isEmpty() ? QString() : QStringLiteral(" WHERE NUMMER = ?1");
    Statement countries = db.prepare(QStringLiteral("SELECT NUMMER, NAME, NATION FROM vereine_national") + where);
    Statement clubs = db.prepare(QStringLiteral("SELECT NUMMER, NAME FROM vereine") + where);
    Statement putCountry = db.prepare(QStringLiteral("INSERT INTO temp.suche_laender (rowid, text) VALUES (?1, ?2)"));
    Statement putClub = db.prepare(QStringLiteral("INSERT INTO temp.suche_vereine (rowid, text) VALUES (?1, ?2)"));
    const auto walk = [&](qint64 number) {
        if (!numbers.isEmpty()) {
            db.run(QStringLiteral("DELETE FROM temp.suche_laender WHERE rowid = ?1"), number);
            db.run(QStringLiteral("DELETE FROM temp.suche_vereine WHERE rowid = ?1"), number);
            countries.bind(1, number);
            clubs.bind(1, number);
        }
        while (countries.step()) {
            const QString name = countries.text(1), nation = countries.text(2);
            putCountry.bindAll(countries.integer(0), searchfold(nation.isEmpty() || nation == name ? name : name + QLatin1Char('\n') + nation));
            putCountry.exec();
        }
        while (clubs.step()) {
            putClub.bindAll(clubs.integer(0), searchfold(clubs.text(1)));
            putClub.exec();
        }
        countries.reset();
        clubs.reset();
    };
    if (numbers.isEmpty())
        walk(0);
    for (qint64 n : numbers)
        walk(n);
}

void SearchIndex::putplayers(const QList<qint64> &numbers)
{
    Database &db = *m_world.db();
    const QString where = numbers.isEmpty() ? QString() : QStringLiteral(" WHERE NUMMER = ?1");
    Statement players = db.prepare(QStringLiteral("SELECT NUMMER, VORNAME, NAME FROM spieler") + where);
    Statement put = db.prepare(QStringLiteral("INSERT INTO temp.suche_spieler (rowid, text) VALUES (?1, ?2)"));
    const auto walk = [&](qint64 number) {
        if (!numbers.isEmpty()) {
            db.run(QStringLiteral("DELETE FROM temp.suche_spieler WHERE rowid = ?1"), number);
            players.bind(1, number);
        }
        while (players.step()) {
            put.bindAll(players.integer(0), searchfold(players.text(1) + QLatin1Char(' ') + players.text(2)));
            put.exec();
        }
        players.reset();
    };
    if (numbers.isEmpty())
        walk(0);
    for (qint64 n : numbers)
        walk(n);
}

void SearchIndex::update(const Change &change)
{
    if (!m_world.db())
        return;
    if (!m_ready || change.everything || change.teams.size() + change.players.size() > rowsForRebuild) {
        rebuild();
        return;
    }
    Transaction tx(*m_world.db());
    putteams(QList<qint64>(change.teams.begin(), change.teams.end()));
    putplayers(QList<qint64>(change.players.begin(), change.players.end()));
    tx.commit();
}

SearchResult SearchIndex::find(const QString &text, int limit) const
{
    SearchResult result;
    Database *db = m_world.db();
    const QString trimmed = text.trimmed();
    if (!db || !m_ready || trimmed.isEmpty())
        return result;

    Statement clubOf = db->prepare(QStringLiteral(
        "SELECT v.verein, coalesce(t.NAME, n.NAME), n.NUMMER IS NOT NULL FROM vereinspieler v "
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
                                   : QVariant(likepattern(folded));
    const auto match = [&](const char *table) {
        // The first hits of the index, then in German order: sorting every
        // match of a single letter would take longer than a keystroke.
        return QStringLiteral("NUMMER IN (SELECT rowid FROM temp.%1 WHERE text %2 LIMIT ?2)")
            .arg(QLatin1String(table), indexed ? QStringLiteral("MATCH ?1") : QStringLiteral("LIKE ?1 ESCAPE '\\'"));
    };
    result.laender = hitsOf(HitKind::Land, countrySql.arg(match(tables[0])), value);
    result.vereine = hitsOf(HitKind::Verein, clubSql.arg(match(tables[1])), value);
    result.spieler = hitsOf(HitKind::Spieler, playerSql.arg(match(tables[2])), value);
    return result;
}

} // namespace zorbo
