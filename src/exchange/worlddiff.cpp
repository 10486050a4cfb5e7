// Two worlds compared through SQLite's session extension, and the
// changesets told as changes of countries, clubs and players.
#include "exchange/worlddiff.h"

#include "core/schema.h"
#include "exchange/configruns.h"
#include "exchange/valuetexts.h"
#include "platform/runner.h"

#include <QCollator>
#include <QFileInfo>
#include <QHash>
#include <QMap>
#include <QSet>
#include <algorithm>
#include <map>
#include <sqlite3.h>

namespace zorbo {

const QStringList &worldtables()
{
    static const QStringList tables{QStringLiteral("vereine_national"), QStringLiteral("vereine"), QStringLiteral("spieler"),
                                    QStringLiteral("kaderzeilen"), QStringLiteral("a4spieler")};
    return tables;
}

QString entitytext(EntityChange::Entity entity)
{
    switch (entity) {
    case EntityChange::Country:
        return QStringLiteral("Land");
    case EntityChange::Club:
        return QStringLiteral("Verein");
    case EntityChange::Player:
        return QStringLiteral("Spieler");
    case EntityChange::FreePlayer:
        return QStringLiteral("Freier Spieler");
    case EntityChange::Other:
        break;
    }
    return QStringLiteral("Zeile");
}

QString EntityChange::kindtext() const
{
    switch (kind) {
    case Added:
        return QStringLiteral("neu");
    case Removed:
        return QStringLiteral("entfernt");
    case Moved:
        return QStringLiteral("wechselt");
    case Changed:
        break;
    }
    return QStringLiteral("geändert");
}

QString EntityChange::text() const
{
    QString head = entitytext(entity) + QLatin1Char(' ') + QString::number(number);
    if (entity == Other)
        head = QStringLiteral("Tabelle %1, Zeile %2").arg(table).arg(number);
    const QString named = name.isEmpty() ? head : QStringLiteral("%1 „%2“").arg(head, name);
    switch (kind) {
    case Added:
        return named + QStringLiteral(" neu");
    case Removed:
        return head + QStringLiteral(" entfernt");
    case Moved:
        if (fromClub.isEmpty())
            return QStringLiteral("%1 kommt zu „%2“").arg(head, toClub);
        if (toClub.isEmpty())
            return QStringLiteral("%1 verlässt „%2“").arg(head, fromClub);
        return QStringLiteral("%1 wechselt von „%2“ nach „%3“").arg(head, fromClub, toClub);
    case Changed:
        break;
    }
    QStringList parts;
    for (const FieldChange &f : fields)
        parts << QStringLiteral("%1 %2 → %3").arg(f.field, f.before, f.after);
    return named + QStringLiteral(": ") + parts.join(QStringLiteral("; "));
}

QString ChangeCounts::text() const
{
    return QStringLiteral("%1 neu, %2 geändert, %3 entfernt, %4 Wechsel").arg(added).arg(changed).arg(removed).arg(moved);
}

ChangeCounts countchanges(const QList<EntityChange> &changes)
{
    ChangeCounts counts;
    for (const EntityChange &c : changes) {
        switch (c.kind) {
        case EntityChange::Added:
            ++counts.added;
            break;
        case EntityChange::Changed:
            ++counts.changed;
            break;
        case EntityChange::Removed:
            ++counts.removed;
            break;
        case EntityChange::Moved:
            ++counts.moved;
            break;
        }
    }
    return counts;
}

namespace {

EntityChange::Entity entityof(const QString &table)
{
    if (table == QLatin1String("vereine_national"))
        return EntityChange::Country;
    if (table == QLatin1String("vereine"))
        return EntityChange::Club;
    if (table == QLatin1String("spieler"))
        return EntityChange::Player;
    if (table == QLatin1String("a4spieler"))
        return EntityChange::FreePlayer;
    return EntityChange::Other;
}

// Looks rows up in the worlds before and after, the one after first.
class Lookup {
public:
    Lookup(Database &db, const QString &before, const QString &after)
    {
        for (const QString &schema : {after, before}) {
            if (schema.isEmpty())
                continue;
            Side side;
            side.team = std::make_unique<Statement>(db.prepare(
                QStringLiteral("SELECT NAME, NATION FROM %1.vereine WHERE NUMMER = ?1 UNION ALL "
                               "SELECT NAME, NAME FROM %1.vereine_national WHERE NUMMER = ?1")
                    .arg(schema)));
            side.player = std::make_unique<Statement>(db.prepare(QStringLiteral("SELECT NAME FROM %1.spieler WHERE NUMMER = ?1").arg(schema)));
            side.club = std::make_unique<Statement>(db.prepare(
                QStringLiteral("SELECT verein FROM %1.kaderzeilen WHERE spieler = ?1 ORDER BY zeile LIMIT 1").arg(schema)));
            side.squadrow = std::make_unique<Statement>(
                db.prepare(QStringLiteral("SELECT verein, spieler FROM %1.kaderzeilen WHERE zeile = ?1").arg(schema)));
            m_sides.push_back(std::move(side));
        }
    }

    // Name and country of a team; the changeset's own rows first.
    std::pair<QString, QString> team(qint64 number)
    {
        if (const auto it = known.constFind(number); it != known.cend())
            return *it;
        for (Side &s : m_sides) {
            s.team->bind(1, number);
            if (s.team->step()) {
                std::pair<QString, QString> found{s.team->text(0), s.team->text(1)};
                s.team->reset();
                return known[number] = found;
            }
            s.team->reset();
        }
        return {};
    }

    QString player(qint64 number)
    {
        return first(&Side::player, number).toString();
    }

    std::optional<qint64> club(qint64 player)
    {
        const QVariant v = first(&Side::club, player);
        return v.isValid() ? std::optional<qint64>(v.toLongLong()) : std::nullopt;
    }

    // A squad row as it is on the first side that has it.
    std::optional<std::pair<qint64, qint64>> squadrow(qint64 zeile)
    {
        for (Side &s : m_sides) {
            s.squadrow->bind(1, zeile);
            if (s.squadrow->step()) {
                std::pair<qint64, qint64> row{s.squadrow->integer(0), s.squadrow->integer(1)};
                s.squadrow->reset();
                return row;
            }
            s.squadrow->reset();
        }
        return std::nullopt;
    }

    QHash<qint64, std::pair<QString, QString>> known; // team number: name, country

private:
    struct Side {
        std::unique_ptr<Statement> team, player, club, squadrow;
    };

    QVariant first(std::unique_ptr<Statement> Side::*which, qint64 key)
    {
        for (Side &s : m_sides) {
            Statement &st = *(s.*which);
            st.bind(1, key);
            if (st.step()) {
                const QVariant v = st.value(0);
                st.reset();
                return v;
            }
            st.reset();
        }
        return {};
    }

    std::vector<Side> m_sides;
};

} // namespace

QList<EntityChange> summarize(Database &db, const QByteArray &changeset, const QString &before, const QString &after)
{
    // One read transaction over all lookups: the worlds' pages stay cached
    // and locked once, not per statement.
    Transaction reading(db);
    ValueTexts texts(db);
    Lookup lookup(db, before, after);
    QHash<QString, QList<ColumnInfo>> columns;
    QList<EntityChange> changes;
    // Per player the clubs whose squads he leaves and joins.
    struct Squads {
        QList<qint64> left, joined;
        QList<RowKey> rows;
    };
    QMap<qint64, Squads> squads;
    QHash<qint64, qsizetype> players; // player number: index of his change

    for (ChangesetReader it(changeset); it.next();) {
        const QString table = it.table();
        if (!columns.contains(table))
            columns.insert(table, db.columns(table));
        const QList<ColumnInfo> &cols = columns[table];
        const qint64 key = it.key().toLongLong();
        if (table == QLatin1String("kaderzeilen")) {
            QVariant oldClub = it.oldValue(1), oldPlayer = it.oldValue(2), newClub = it.newValue(1), newPlayer = it.newValue(2);
            // An update holds only the columns it changes; the other one is
            // the same before and after, as either world has it.
            if (it.op() == SQLITE_UPDATE && (!oldClub.isValid() || !oldPlayer.isValid())) {
                if (const auto row = lookup.squadrow(key)) {
                    if (!oldClub.isValid())
                        oldClub = newClub = row->first;
                    if (!oldPlayer.isValid())
                        oldPlayer = newPlayer = row->second;
                }
            }
            if (it.op() != SQLITE_INSERT && oldPlayer.isValid()) {
                Squads &s = squads[oldPlayer.toLongLong()];
                s.left << oldClub.toLongLong();
                s.rows << RowKey{table, key};
            }
            if (it.op() != SQLITE_DELETE && newPlayer.isValid()) {
                Squads &s = squads[newPlayer.toLongLong()];
                s.joined << newClub.toLongLong();
                if (!s.rows.contains(RowKey{table, key}))
                    s.rows << RowKey{table, key};
            }
            continue;
        }
        EntityChange c;
        c.entity = entityof(table);
        c.table = table;
        c.number = key;
        c.rows << RowKey{table, key};
        c.kind = it.op() == SQLITE_INSERT ? EntityChange::Added
               : it.op() == SQLITE_DELETE ? EntityChange::Removed
                                          : EntityChange::Changed;
        const int nameColumn = 1;
        // The name it has before a change, or after it when it is new.
        const QVariant ownName = it.op() == SQLITE_INSERT ? it.newValue(nameColumn) : it.oldValue(nameColumn);
        if (c.entity == EntityChange::Club || c.entity == EntityChange::Country) {
            const int nationColumn = c.entity == EntityChange::Club ? 9 : 10;
            const QVariant nation = it.op() == SQLITE_DELETE ? it.oldValue(nationColumn) : it.newValue(nationColumn);
            if (ownName.isValid() && (nation.isValid() || c.entity == EntityChange::Country))
                lookup.known.insert(key, {ownName.toString(), c.entity == EntityChange::Country ? ownName.toString()
                                                                                                 : nation.toString()});
            const auto [name, country] = lookup.team(key);
            c.name = ownName.isValid() ? ownName.toString() : name;
            c.country = c.entity == EntityChange::Country ? c.name : country;
            // A club heads its own group, under the name its players are grouped by.
            if (c.entity == EntityChange::Club)
                c.club = name.isEmpty() ? c.name : name;
        } else if (c.entity == EntityChange::Player) {
            c.name = ownName.isValid() ? ownName.toString() : lookup.player(key);
            players.insert(key, changes.size());
        } else if (c.entity == EntityChange::FreePlayer) {
            c.name = ownName.isValid() ? ownName.toString() : QString();
            const QVariant land = it.op() == SQLITE_DELETE ? it.oldValue(3) : it.newValue(3);
            c.country = land.toString();
        }
        if (c.kind == EntityChange::Changed) {
            for (int i = 1; i < it.columns() && i < cols.size(); ++i) {
                const QVariant after = it.newValue(i);
                if (!after.isValid())
                    continue;
                c.fields << FieldChange{cols.at(i).name, fieldlabel(table, i, cols.at(i).name),
                                        texts.text(cols.at(i).name, it.oldValue(i)), texts.text(cols.at(i).name, after)};
            }
            if (c.fields.isEmpty())
                continue;
        }
        changes << c;
    }

    // Squad rows that only took other numbers cancel out; what is left is a
    // move, or a player joining or leaving a squad.
    for (auto it = squads.begin(); it != squads.end(); ++it) {
        Squads &s = it.value();
        for (qsizetype i = s.left.size() - 1; i >= 0; --i) {
            if (const qsizetype j = s.joined.indexOf(s.left.at(i)); j >= 0) {
                s.joined.removeAt(j);
                s.left.removeAt(i);
            }
        }
        const qint64 player = it.key();
        if (const auto own = players.constFind(player); own != players.cend()) {
            EntityChange &c = changes[*own];
            c.rows << s.rows;
            if (c.kind != EntityChange::Changed || (s.left.isEmpty() && s.joined.isEmpty()))
                continue;
        }
        if (s.left.isEmpty() && s.joined.isEmpty())
            continue;
        const auto names = [&](const QList<qint64> &clubs) {
            QStringList n;
            for (qint64 club : clubs)
                n << lookup.team(club).first;
            return n.join(QStringLiteral("“, „"));
        };
        EntityChange c;
        c.kind = EntityChange::Moved;
        c.entity = EntityChange::Player;
        c.table = QStringLiteral("spieler");
        c.number = player;
        c.name = lookup.player(player);
        c.fromClub = names(s.left);
        c.toClub = names(s.joined);
        c.rows = s.rows;
        changes << c;
    }

    // Each player is grouped under his club, in the world after or else before.
    for (EntityChange &c : changes) {
        if (c.entity != EntityChange::Player)
            continue;
        std::optional<qint64> club = lookup.club(c.number);
        if (!club) {
            const Squads s = squads.value(c.number);
            if (!s.joined.isEmpty())
                club = s.joined.first();
            else if (!s.left.isEmpty())
                club = s.left.first();
        }
        if (club) {
            const auto [name, country] = lookup.team(*club);
            c.club = name;
            c.country = country;
        }
    }

    // Countries and clubs in German order: each distinct name ranked once,
    // so that sorting the list compares numbers.
    QCollator german(QLocale(QLocale::German, QLocale::Germany));
    german.setCaseSensitivity(Qt::CaseInsensitive);
    QStringList names;
    QSet<QString> seen;
    for (const EntityChange &c : changes) {
        for (const QString *n : {&c.country, &c.club}) {
            if (!seen.contains(*n)) {
                seen.insert(*n);
                names << *n;
            }
        }
    }
    std::sort(names.begin(), names.end(), [&](const QString &a, const QString &b) { return german.compare(a, b) < 0; });
    QHash<QString, qsizetype> rank;
    for (qsizetype i = 0; i < names.size(); ++i)
        rank.insert(names.at(i), i);
    const auto key = [&](const EntityChange &c) {
        return std::tuple(rank.value(c.country), rank.value(c.club), int(c.entity), c.number, int(c.kind));
    };
    std::stable_sort(changes.begin(), changes.end(), [&](const EntityChange &a, const EntityChange &b) { return key(a) < key(b); });
    return changes;
}

QByteArray tablediff(Database &db, const QString &to, const QString &from)
{
    Transaction reading(db);
    sqlite3_session *session = nullptr;
    const QByteArray schema = to.toUtf8();
    if (const int rc = sqlite3session_create(db.handle(), schema.constData(), &session); rc != SQLITE_OK)
        throw DbError(rc, QStringLiteral("session: %1").arg(QString::fromUtf8(sqlite3_errmsg(db.handle()))));
    const QByteArray fromSchema = from.toUtf8();
    for (const QString &table : worldtables()) {
        const QByteArray name = table.toUtf8();
        char *error = nullptr;
        int rc = sqlite3session_attach(session, name.constData());
        if (rc == SQLITE_OK)
            rc = sqlite3session_diff(session, fromSchema.constData(), name.constData(), &error);
        if (rc != SQLITE_OK) {
            const QString why = error ? QString::fromUtf8(error) : QString::fromUtf8(sqlite3_errmsg(db.handle()));
            sqlite3_free(error);
            sqlite3session_delete(session);
            throw DbError(rc, QStringLiteral("Tabelle %1: %2").arg(table, why));
        }
    }
    int size = 0;
    void *data = nullptr;
    const int rc = sqlite3session_changeset(session, &size, &data);
    QByteArray bytes = rc == SQLITE_OK ? QByteArray(static_cast<const char *>(data), size) : QByteArray();
    sqlite3_free(data);
    sqlite3session_delete(session);
    if (rc != SQLITE_OK)
        throw DbError(rc, QStringLiteral("changeset"));
    return bytes;
}

const QString OtherWorld::schema = QStringLiteral("andere");

OtherWorld::OtherWorld(Database &db, const QString &path) : m_db(db)
{
    const QFileInfo info(path);
    QString why;
    if (!info.isFile()) {
        m_result = Result::failure(QStringLiteral("Die Welt „%1“ gibt es nicht.").arg(path));
        return;
    }
    if (info.canonicalFilePath() == QFileInfo(db.path()).canonicalFilePath()) {
        m_result = Result::failure(QStringLiteral("„%1“ ist diese Welt selbst.").arg(path));
        return;
    }
    if (!isworldfile(path, &why)) {
        m_result = Result::failure(QStringLiteral("„%1“ lässt sich nicht vergleichen: %2").arg(path, why));
        return;
    }
    try {
        db.run(QStringLiteral("ATTACH DATABASE ?1 AS andere"), path);
        m_attached = true;
        // Room for the whole of an ordinary world in memory while it is compared.
        db.exec(QStringLiteral("PRAGMA andere.cache_size = -65536; PRAGMA andere.mmap_size = 268435456"));
        for (const QString &table : worldtables()) {
            const QList<ColumnInfo> here = db.columns(table);
            if (db.scalar(QStringLiteral("SELECT count(*) FROM andere.pragma_table_info(?1)"), table).toInt() != here.size()) {
                m_result = Result::failure(QStringLiteral("„%1“ lässt sich nicht vergleichen: die Tabelle %2 hat dort andere "
                                                          "Spalten (eine Welt einer anderen Programmversion?).")
                                               .arg(path, table));
                return;
            }
        }
    } catch (const DbError &e) {
        m_result = Result::failure(QStringLiteral("„%1“ lässt sich nicht öffnen: %2").arg(path, e.text()));
    }
}

OtherWorld::~OtherWorld()
{
    if (m_attached) {
        try {
            m_db.exec(QStringLiteral("DETACH DATABASE andere"));
        } catch (const DbError &) {
        }
    }
}

WorldDiff diffworlds(Database &db, const QString &otherPath)
{
    return runguarded(QStringLiteral("Der Vergleich ist gescheitert"), [&] {
        WorldDiff diff;
        OtherWorld other(db, otherPath);
        if (!other.result()) {
            diff.result = other.result();
            return diff;
        }
        Transaction reading(db);
        diff.changeset = tablediff(db, OtherWorld::schema, QStringLiteral("main"));
        diff.changes = summarize(db, diff.changeset, QStringLiteral("main"), OtherWorld::schema);
        diff.counts = countchanges(diff.changes);
        diff.result = Result::success(diff.changes.isEmpty()
                                          ? QStringLiteral("Die beiden Welten sind gleich.")
                                          : QStringLiteral("%1 Änderungen: %2").arg(diff.counts.total()).arg(diff.counts.text()));
        return diff;
    });
}

WorldDiff diffgamefiles(Database &db, const QString &teamsPath, const QString &playersPath, const QString &scratchPath,
                        const Progress &progress)
{
    WorldDiff failed;
    try {
        QFile::remove(scratchPath);
        db.copyto(scratchPath);
        Database scratch(scratchPath);
        for (const auto &[path, kind] : {std::pair{teamsPath, ConfigKind::Teams}, std::pair{playersPath, ConfigKind::Players}}) {
            if (path.isEmpty())
                continue;
            ExchangeResult read = importconfig(scratch, path, kind, progress);
            if (!read.ok()) {
                failed.result = read.result;
                failed.findings = read.findings;
                return failed;
            }
            failed.findings << read.findings;
        }
    } catch (const DbError &e) {
        failed.result = Result::failure(QStringLiteral("Die Spieldateien lassen sich nicht vergleichen: ") + e.text());
        return failed;
    }
    WorldDiff diff = diffworlds(db, scratchPath);
    diff.findings = failed.findings + diff.findings;
    return diff;
}

Result takeover(Database &db, const QList<EntityChange> &chosen)
{
    std::map<QString, std::pair<std::unique_ptr<Statement>, std::unique_ptr<Statement>>> statements;
    QList<RowKey> done;
    for (const EntityChange &c : chosen) {
        for (const RowKey &row : c.rows) {
            if (done.contains(row))
                continue;
            done << row;
            auto &st = statements[row.table];
            if (!st.first) {
                const QList<ColumnInfo> cols = db.columns(row.table);
                QStringList names, sets;
                for (const ColumnInfo &col : cols) {
                    names << QStringLiteral("\"%1\"").arg(col.name);
                    sets << QStringLiteral("\"%1\" = excluded.\"%1\"").arg(col.name);
                }
                const QString key = names.first();
                st.first = std::make_unique<Statement>(db.prepare(
                    QStringLiteral("INSERT INTO main.%1 (%2) SELECT %2 FROM andere.%1 WHERE %3 = ?1 ON CONFLICT (%3) DO UPDATE SET %4")
                        .arg(row.table, names.join(QStringLiteral(", ")), key, sets.join(QStringLiteral(", ")))));
                st.second = std::make_unique<Statement>(db.prepare(
                    QStringLiteral("DELETE FROM main.%1 WHERE %2 = ?1 AND %2 NOT IN (SELECT %2 FROM andere.%1 WHERE %2 = ?1)")
                        .arg(row.table, key)));
            }
            st.first->bind(1, row.key);
            st.first->exec();
            st.second->bind(1, row.key);
            st.second->exec();
        }
    }
    statements.clear();
    return Result::success(QStringLiteral("%1 Änderungen übernommen.").arg(chosen.size()));
}

} // namespace zorbo
