// Change files: the changes of one world written down, read back and
// applied to another world with its conflicts.
#include "exchange/changefile.h"

#include "core/history.h"
#include "core/world.h"
#include "exchange/valuetexts.h"
#include "platform/runner.h"

#include <generated/version.h>

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <sqlite3.h>

namespace zorbo {

namespace {

constexpr qint64 maxFileBytes = 1024LL * 1024 * 1024;
constexpr qint64 maxChangesetBytes = 512LL * 1024 * 1024;
constexpr int maxTextLength = 4096;
constexpr qint64 maxSummaryLines = 5'000'000;

// Columns of each table a change file may carry, as our worlds have them.
int columncount(const QString &table)
{
    static const QHash<QString, int> counts{{QStringLiteral("vereine_national"), 32}, {QStringLiteral("vereine"), 28},
                                            {QStringLiteral("spieler"), 17}, {QStringLiteral("kaderzeilen"), 3},
                                            {QStringLiteral("a4spieler"), 12}};
    return counts.value(table, -1);
}

// The rows of the changeset's tables; a table that is none of the world's
// is named in *why.
bool checkchangeset(const QByteArray &changeset, QString *why)
{
    try {
        for (ChangesetReader it(changeset); it.next();) {
            if (columncount(it.table()) != it.columns()) {
                *why = QStringLiteral("die Änderungen betreffen die Tabelle „%1“ mit %2 Spalten, die keine Welt so hat")
                           .arg(it.table())
                           .arg(it.columns());
                return false;
            }
        }
    } catch (const DbError &) {
        *why = QStringLiteral("die gespeicherten Änderungen lassen sich nicht lesen");
        return false;
    }
    return true;
}

QByteArray checksum(const QByteArray &changeset)
{
    return QCryptographicHash::hash(changeset, QCryptographicHash::Sha256);
}

const QString schemaSql = QStringLiteral(R"SQL(
CREATE TABLE angaben (schluessel TEXT PRIMARY KEY, wert ANY) STRICT;
CREATE TABLE aenderungen (nr INTEGER PRIMARY KEY, changeset BLOB NOT NULL) STRICT;
CREATE TABLE zusammenfassung (nr INTEGER PRIMARY KEY, art INTEGER, objekt INTEGER, nummer INTEGER, name TEXT,
  land TEXT, verein TEXT, von TEXT, nach TEXT, tabelle TEXT, text TEXT) STRICT;
CREATE TABLE felder (nr INTEGER, spalte TEXT, feld TEXT, vorher TEXT, nachher TEXT) STRICT;
)SQL");

} // namespace

QByteArray worldfingerprint(Database &db, const QString &schema)
{
    // A fingerprint tells worlds apart, it guards nothing: SHA-1 is enough
    // and reads a world of 100,000 players faster than SHA-256.
    QCryptographicHash hash(QCryptographicHash::Sha1);
    Transaction reading(db);
    // Each value by its type and its own bytes, numbers unconverted, hashed
    // in large pieces.
    QByteArray piece;
    piece.reserve(1 << 17);
    const auto add = [&piece](const void *bytes, qsizetype size) { piece.append(static_cast<const char *>(bytes), size); };
    for (const QString &table : worldtables()) {
        piece.append(table.toUtf8());
        Statement st = db.prepare(QStringLiteral("SELECT * FROM %1.%2 ORDER BY 1").arg(schema, table));
        sqlite3_stmt *h = st.handle();
        const int columns = st.columnCount();
        while (st.step()) {
            for (int i = 0; i < columns; ++i) {
                const int type = sqlite3_column_type(h, i);
                piece.append(char('0' + type));
                if (type == SQLITE_INTEGER) {
                    const qint64 v = sqlite3_column_int64(h, i);
                    add(&v, sizeof v);
                } else if (type == SQLITE_FLOAT) {
                    const double v = sqlite3_column_double(h, i);
                    add(&v, sizeof v);
                } else if (type != SQLITE_NULL) {
                    const void *bytes = type == SQLITE_TEXT ? static_cast<const void *>(sqlite3_column_text(h, i))
                                                            : sqlite3_column_blob(h, i);
                    const int size = sqlite3_column_bytes(h, i);
                    add(&size, sizeof size);
                    if (bytes)
                        add(bytes, size);
                }
            }
            if (piece.size() > (1 << 16)) {
                hash.addData(piece);
                piece.resize(0);
            }
        }
    }
    hash.addData(piece);
    return hash.result();
}

Result writechangefile(const QString &path, const ChangeFile &file)
{
    const QFileInfo target(path);
    if (target.exists() && !target.isFile())
        return Result::failure(QStringLiteral("„%1“ ist keine Datei; die Änderungsdatei wurde nicht geschrieben.").arg(path));
    const QString temporary = path + QStringLiteral(".neu");
    QFile::remove(temporary);
    try {
        {
            Database out(temporary);
            out.exec(QStringLiteral("PRAGMA application_id = %1").arg(changeFileApplicationId));
            Transaction tx(out);
            out.exec(schemaSql);
            Statement info = out.prepare(QStringLiteral("INSERT INTO angaben VALUES (?1, ?2)"));
            info.bindAll(QStringLiteral("formatversion"), qint64(file.version)).exec();
            info.bindAll(QStringLiteral("programmversion"), file.program).exec();
            info.bindAll(QStringLiteral("datum"), file.date.toString(Qt::ISODate)).exec();
            info.bindAll(QStringLiteral("beschreibung"), file.description).exec();
            info.bindAll(QStringLiteral("fingerabdruck"), file.fingerprint).exec();
            info.bindAll(QStringLiteral("pruefsumme"), checksum(file.changeset)).exec();
            out.run(QStringLiteral("INSERT INTO aenderungen VALUES (1, ?1)"), file.changeset);
            Statement line = out.prepare(QStringLiteral("INSERT INTO zusammenfassung VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11)"));
            Statement field = out.prepare(QStringLiteral("INSERT INTO felder VALUES (?1, ?2, ?3, ?4, ?5)"));
            qint64 nr = 0;
            for (const EntityChange &c : file.summary) {
                ++nr;
                line.bindAll(nr, int(c.kind), int(c.entity), c.number, c.name, c.country, c.club, c.fromClub, c.toClub, c.table,
                             c.text())
                    .exec();
                for (const FieldChange &f : c.fields)
                    field.bindAll(nr, f.column, f.field, f.before, f.after).exec();
            }
            tx.commit();
        }
        QFile::remove(path);
        if (!QFile::rename(temporary, path)) {
            QFile::remove(temporary);
            return Result::failure(QStringLiteral("„%1“ lässt sich nicht schreiben.").arg(path));
        }
    } catch (const DbError &e) {
        QFile::remove(temporary);
        return Result::failure(QStringLiteral("„%1“ lässt sich nicht schreiben: %2").arg(path, e.text()));
    }
    return Result::success(QStringLiteral("%1 Änderungen nach „%2“ geschrieben.").arg(file.summary.size()).arg(path));
}

ChangeFileRead readchangefile(const QString &path)
{
    ChangeFileRead read;
    const auto refuse = [&](const QString &why) {
        read.result = Result::failure(QStringLiteral("„%1“ lässt sich nicht anwenden: %2. Es wurde nichts geändert.").arg(path, why));
        return read;
    };
    const QFileInfo info(path);
    if (!info.isFile())
        return refuse(QStringLiteral("die Datei gibt es nicht"));
    if (info.size() > maxFileBytes)
        return refuse(QStringLiteral("die Datei ist größer als 1 GB"));
    QFile raw(path);
    if (!raw.open(QIODevice::ReadOnly))
        return refuse(QStringLiteral("die Datei lässt sich nicht lesen"));
    if (raw.read(16) != QByteArray("SQLite format 3\0", 16))
        return refuse(QStringLiteral("sie ist keine Änderungsdatei (.zae)"));
    raw.close();
    try {
        Database in(path, Database::ReadOnly);
        if (in.scalar(QStringLiteral("PRAGMA application_id")).toInt() != changeFileApplicationId)
            return refuse(QStringLiteral("sie ist keine Änderungsdatei von Zorbo Editor"));
        if (in.scalar(QStringLiteral("PRAGMA quick_check")).toString() != QLatin1String("ok"))
            return refuse(QStringLiteral("die Datei ist beschädigt"));
        QHash<QString, QVariant> values;
        Statement st = in.prepare(QStringLiteral("SELECT schluessel, wert, typeof(wert) = 'blob' FROM angaben"));
        while (st.step())
            values.insert(st.text(0), st.integer(2) ? QVariant(st.blob(1)) : st.value(1));
        const int version = values.value(QStringLiteral("formatversion")).toInt();
        if (version > changeFileVersion)
            return refuse(QStringLiteral("sie stammt aus einer neueren Programmversion (Format %1)").arg(version));
        if (version < 1)
            return refuse(QStringLiteral("die Datei ist beschädigt (ohne Formatversion)"));
        ChangeFile &f = read.file;
        f.version = version;
        f.program = values.value(QStringLiteral("programmversion")).toString().left(maxTextLength);
        f.date = QDateTime::fromString(values.value(QStringLiteral("datum")).toString(), Qt::ISODate);
        f.description = values.value(QStringLiteral("beschreibung")).toString().left(maxTextLength);
        f.fingerprint = values.value(QStringLiteral("fingerabdruck")).toByteArray();
        if (in.scalar(QStringLiteral("SELECT count(*) FROM aenderungen")).toInt() != 1
            || in.scalar(QStringLiteral("SELECT length(changeset) FROM aenderungen")).toLongLong() > maxChangesetBytes)
            return refuse(QStringLiteral("die Datei ist beschädigt (die Änderungen fehlen oder sind zu groß)"));
        Statement changes = in.prepare(QStringLiteral("SELECT changeset FROM aenderungen"));
        if (changes.step())
            f.changeset = changes.blob(0);
        if (checksum(f.changeset) != values.value(QStringLiteral("pruefsumme")).toByteArray())
            return refuse(QStringLiteral("die Datei ist beschädigt (die Prüfsumme der Änderungen stimmt nicht)"));
        if (QString why; !checkchangeset(f.changeset, &why))
            return refuse(QStringLiteral("die Datei ist beschädigt: ") + why);
        if (in.scalar(QStringLiteral("SELECT count(*) FROM zusammenfassung")).toLongLong() > maxSummaryLines
            || in.scalar(QStringLiteral("SELECT count(*) FROM felder")).toLongLong() > 4 * maxSummaryLines)
            return refuse(QStringLiteral("die Zusammenfassung ist länger als %1 Zeilen").arg(maxSummaryLines));
        Statement lines = in.prepare(QStringLiteral("SELECT nr, art, objekt, nummer, name, land, verein, von, nach, tabelle "
                                                    "FROM zusammenfassung ORDER BY nr"));
        QHash<qint64, qsizetype> index;
        while (lines.step()) {
            EntityChange c;
            c.kind = EntityChange::Kind(std::clamp<qint64>(lines.integer(1), EntityChange::Added, EntityChange::Moved));
            c.entity = EntityChange::Entity(std::clamp<qint64>(lines.integer(2), EntityChange::Country, EntityChange::Other));
            c.number = lines.integer(3);
            c.name = lines.text(4).left(maxTextLength);
            c.country = lines.text(5).left(maxTextLength);
            c.club = lines.text(6).left(maxTextLength);
            c.fromClub = lines.text(7).left(maxTextLength);
            c.toClub = lines.text(8).left(maxTextLength);
            c.table = lines.text(9).left(maxTextLength);
            index.insert(lines.integer(0), f.summary.size());
            f.summary << c;
        }
        Statement fields = in.prepare(QStringLiteral("SELECT nr, spalte, feld, vorher, nachher FROM felder ORDER BY rowid"));
        while (fields.step()) {
            if (const auto it = index.constFind(fields.integer(0)); it != index.cend())
                f.summary[*it].fields << FieldChange{fields.text(1).left(maxTextLength), fields.text(2).left(maxTextLength),
                                                     fields.text(3).left(maxTextLength), fields.text(4).left(maxTextLength)};
        }
    } catch (const DbError &e) {
        return refuse(QStringLiteral("die Datei ist beschädigt oder keine Änderungsdatei (%1)").arg(e.text()));
    }
    read.result = Result::success();
    return read;
}

namespace {

ChangeFile newfile(Database &db, const QString &description)
{
    ChangeFile f;
    f.program = QString::fromUtf8(versionText);
    f.date = QDateTime::currentDateTime();
    f.description = description;
    f.fingerprint = worldfingerprint(db);
    return f;
}

} // namespace

ChangeFileRead changessince(Database &db, qint64 step, const QString &description)
{
    return runguarded(QStringLiteral("Die Änderungen lassen sich nicht zusammenstellen"), [&] {
        ChangeFileRead out;
        sqlite3_changegroup *group = nullptr;
        if (const int rc = sqlite3changegroup_new(&group); rc != SQLITE_OK)
            throw DbError(rc, QStringLiteral("changegroup"));
        const auto done = qScopeGuard([&] { sqlite3changegroup_delete(group); });
        Statement st = db.prepare(QStringLiteral("SELECT schritt, text, aenderungen, pruefsumme FROM verlauf "
                                                 "WHERE schritt >= ?1 AND zurueck = 0 ORDER BY schritt"));
        st.bind(1, step);
        int steps = 0;
        while (st.step()) {
            const QByteArray changes = st.blob(2);
            if (changes.isEmpty() || stepchecksum(st.integer(0), changes) != st.blob(3)) {
                out.result = Result::failure(QStringLiteral("Schritt %1 des Verlaufs („%2“) ist unvollständig oder verändert "
                                                            "(die Prüfsumme stimmt nicht); es wurde nichts geschrieben.")
                                                 .arg(st.integer(0))
                                                 .arg(st.text(1)));
                return out;
            }
            if (const int rc = sqlite3changegroup_add(group, int(changes.size()), const_cast<char *>(changes.constData()));
                rc != SQLITE_OK)
                throw DbError(rc, QStringLiteral("changegroup"));
            ++steps;
        }
        if (steps == 0) {
            out.result = Result::failure(QStringLiteral("Ab Schritt %1 gibt es im Verlauf keine Änderungen.").arg(step));
            return out;
        }
        int size = 0;
        void *data = nullptr;
        if (const int rc = sqlite3changegroup_output(group, &size, &data); rc != SQLITE_OK) {
            sqlite3_free(data);
            throw DbError(rc, QStringLiteral("changegroup"));
        }
        out.file = newfile(db, description);
        out.file.changeset = QByteArray(static_cast<const char *>(data), size);
        sqlite3_free(data);
        if (QString why; !checkchangeset(out.file.changeset, &why)) {
            out.result = Result::failure(QStringLiteral("Die Schritte lassen sich nicht als Änderungsdatei schreiben: %1.").arg(why));
            return out;
        }
        out.file.summary = summarize(db, out.file.changeset, {}, QStringLiteral("main"));
        out.result = Result::success();
        return out;
    });
}

ChangeFileRead changesagainst(Database &db, const QString &otherPath, const QString &description)
{
    return runguarded(QStringLiteral("Die Änderungen lassen sich nicht zusammenstellen"), [&] {
        ChangeFileRead out;
        OtherWorld other(db, otherPath);
        if (!other.result()) {
            out.result = other.result();
            return out;
        }
        out.file = newfile(db, description);
        out.file.changeset = tablediff(db, QStringLiteral("main"), OtherWorld::schema);
        out.file.summary = summarize(db, out.file.changeset, OtherWorld::schema, QStringLiteral("main"));
        out.result = Result::success();
        return out;
    });
}

QString Conflict::kindtext() const
{
    switch (kind) {
    case Changed:
        return QStringLiteral("hier anders geändert");
    case Missing:
        return QStringLiteral("fehlt hier");
    case Deleted:
        return QStringLiteral("hier geändert, in der Datei entfernt");
    case Taken:
        return QStringLiteral("Nummer hier schon vergeben");
    case Reference:
        break;
    }
    return QStringLiteral("Bezug fehlt hier");
}

QString Conflict::text() const
{
    QString line = QStringLiteral("%1: %2").arg(what, kindtext());
    if (!why.isEmpty())
        line += QStringLiteral(" (%1)").arg(why);
    for (const Value &v : values)
        line += QStringLiteral("; %1: vorher %2, hier %3, Datei %4").arg(v.field, v.before, v.here, v.file);
    return line;
}

namespace {

bool samevalue(const QVariant &a, const QVariant &b)
{
    if (a.isNull() || b.isNull())
        return a.isNull() == b.isNull();
    const bool na = a.typeId() == QMetaType::LongLong || a.typeId() == QMetaType::Double;
    const bool nb = b.typeId() == QMetaType::LongLong || b.typeId() == QMetaType::Double;
    if (na && nb)
        return a.toDouble() == b.toDouble();
    return a.typeId() == b.typeId() && a == b;
}

// One run of the changes over the world: the first collects the conflicts
// (its savepoint is rolled back), the second applies with the choices.
struct Pass {
    Pass(Database &database, const ApplyChoices *chosen) : db(database), texts(database), choices(chosen) {}

    Database &db;
    ValueTexts texts;
    const ApplyChoices *choices; // null: only collecting
    QHash<QString, QList<ColumnInfo>> columns;
    QList<Conflict> conflicts;
    QSet<QString> omitted; // ids of rows whose change was left out
    QList<std::pair<qint64, qint64>> squads; // squad rows whose number is taken here, to add anew
    int already = 0;
    int appendedrows = 0; // squad rows that came in under a new number

    const QList<ColumnInfo> &cols(const QString &table)
    {
        auto it = columns.find(table);
        if (it == columns.end())
            it = columns.insert(table, db.columns(table));
        return *it;
    }

    QString label(const QString &table, int i)
    {
        const QList<ColumnInfo> &c = cols(table);
        return i < c.size() ? fieldlabel(table, i, c.at(i).name) : QString::number(i);
    }

    QString show(const QString &table, int i, const QVariant &value)
    {
        const QList<ColumnInfo> &c = cols(table);
        return texts.text(i < c.size() ? c.at(i).name : QString(), value);
    }

    // "Verein 1204 „SV Beispiel“", the name as here or in the file.
    QString what(const QString &table, qint64 key, const QVariant &name)
    {
        const EntityChange::Entity entity = table == QLatin1String("vereine_national") ? EntityChange::Country
                                          : table == QLatin1String("vereine")          ? EntityChange::Club
                                          : table == QLatin1String("spieler")          ? EntityChange::Player
                                          : table == QLatin1String("a4spieler")        ? EntityChange::FreePlayer
                                                                                       : EntityChange::Other;
        if (entity == EntityChange::Other)
            return QStringLiteral("Kaderzeile %1").arg(key);
        QString n = name.toString();
        if (n.isEmpty() && entity != EntityChange::FreePlayer)
            n = db.scalar(QStringLiteral("SELECT NAME FROM main.%1 WHERE NUMMER = ?1").arg(table), key).toString();
        const QString head = entitytext(entity) + QLatin1Char(' ') + QString::number(key);
        return n.isEmpty() ? head : QStringLiteral("%1 „%2“").arg(head, n);
    }

    // A conflict found: the choice made for it, or none (then the row stays
    // as it is here and the conflict is told).
    int decide(Conflict c, bool replaceable)
    {
        const std::optional<Choice> choice = choices ? choices->of(c) : std::nullopt;
        if (!choice)
            conflicts << c;
        if (choice == Choice::Theirs && replaceable)
            return SQLITE_CHANGESET_REPLACE;
        omitted << c.id();
        return SQLITE_CHANGESET_OMIT;
    }

    int handle(int kind, sqlite3_changeset_iter *raw)
    {
        const char *name = nullptr;
        int ncol = 0, op = 0, indirect = 0;
        sqlite3changeset_op(raw, &name, &ncol, &op, &indirect);
        const QString table = QString::fromUtf8(name);
        const auto value = [&](int (*get)(sqlite3_changeset_iter *, int, sqlite3_value **), int i) {
            sqlite3_value *v = nullptr;
            get(raw, i, &v);
            return valueof(v);
        };
        const auto olds = [&](int i) { return op == SQLITE_INSERT ? QVariant() : value(sqlite3changeset_old, i); };
        const auto news = [&](int i) { return op == SQLITE_DELETE ? QVariant() : value(sqlite3changeset_new, i); };
        const auto here = [&](int i) { return value(sqlite3changeset_conflict, i); };
        const qint64 key = (op == SQLITE_INSERT ? news(0) : olds(0)).toLongLong();
        Conflict c;
        c.row = RowKey{table, key};
        const QString gone = QStringLiteral("fehlt");
        if (kind == SQLITE_CHANGESET_NOTFOUND) {
            if (op == SQLITE_DELETE) {
                ++already; // gone here as well
                return SQLITE_CHANGESET_OMIT;
            }
            c.kind = Conflict::Missing;
            c.what = what(table, key, news(1).isValid() ? news(1) : olds(1));
            for (int i = 1; i < ncol; ++i)
                if (news(i).isValid())
                    c.values << Conflict::Value{label(table, i), show(table, i, olds(i)), gone, show(table, i, news(i))};
            return decide(c, false);
        }
        if (kind == SQLITE_CHANGESET_DATA && op == SQLITE_UPDATE) {
            c.kind = Conflict::Changed;
            for (int i = 1; i < ncol; ++i) {
                const QVariant after = news(i);
                if (after.isValid() && !samevalue(after, here(i)))
                    c.values << Conflict::Value{label(table, i), show(table, i, olds(i)), show(table, i, here(i)),
                                                show(table, i, after)};
            }
            if (c.values.isEmpty()) {
                ++already;
                return SQLITE_CHANGESET_OMIT;
            }
            c.what = what(table, key, here(1));
            return decide(c, true);
        }
        if (kind == SQLITE_CHANGESET_DATA && op == SQLITE_DELETE) {
            c.kind = Conflict::Deleted;
            c.what = what(table, key, here(1));
            for (int i = 1; i < ncol; ++i)
                if (!samevalue(olds(i), here(i)))
                    c.values << Conflict::Value{label(table, i), show(table, i, olds(i)), show(table, i, here(i)),
                                                QStringLiteral("entfernt")};
            return decide(c, true);
        }
        if (kind == SQLITE_CHANGESET_CONFLICT) {
            for (int i = 1; i < ncol; ++i)
                if (!samevalue(news(i), here(i)))
                    c.values << Conflict::Value{label(table, i), QStringLiteral("–"), show(table, i, here(i)),
                                                show(table, i, news(i))};
            if (c.values.isEmpty()) {
                ++already;
                return SQLITE_CHANGESET_OMIT;
            }
            if (table == QLatin1String("kaderzeilen")) {
                // Squad rows are numbered by the order they came in; one whose
                // number went to another row here simply joins under a new one.
                squads << std::pair{news(1).toLongLong(), news(2).toLongLong()};
                omitted << c.id();
                return SQLITE_CHANGESET_OMIT;
            }
            c.kind = Conflict::Taken;
            c.what = what(table, key, here(1));
            return decide(c, true);
        }
        return SQLITE_CHANGESET_ABORT;
    }

    static int onconflict(void *self, int kind, sqlite3_changeset_iter *it)
    {
        return static_cast<Pass *>(self)->handle(kind, it);
    }

    // After the changes: squad rows that came in under a new number, then
    // every row the file brought in or changed that names a club, player or
    // country this world lacks.
    void references(const QByteArray &changeset)
    {
        Statement exists = db.prepare(QStringLiteral("SELECT 1 FROM kaderzeilen WHERE verein IS ?1 AND spieler IS ?2"));
        QList<qint64> appended;
        for (const auto &[club, player] : squads) {
            exists.bindAll(club, player);
            const bool there = exists.step();
            exists.reset();
            if (!there) {
                db.run(QStringLiteral("INSERT INTO kaderzeilen (verein, spieler) VALUES (?1, ?2)"), club, player);
                appended << db.lastInsertId();
                ++appendedrows;
            }
        }
        Statement team = db.prepare(QStringLiteral("SELECT NAME FROM vereine WHERE NUMMER = ?1 UNION ALL "
                                                   "SELECT NAME FROM vereine_national WHERE NUMMER = ?1"));
        Statement player = db.prepare(QStringLiteral("SELECT 1 FROM spieler WHERE NUMMER = ?1"));
        Statement country = db.prepare(QStringLiteral("SELECT 1 FROM vereine_national WHERE samename(NAME, ?1) OR samename(NATION, ?1)"));
        Statement squadrow = db.prepare(QStringLiteral("SELECT verein, spieler FROM kaderzeilen WHERE zeile = ?1"));
        const auto found = [](Statement &st, const QVariant &v) {
            st.bind(1, v);
            const bool yes = st.step();
            st.reset();
            return yes;
        };
        // Whether the squad row names a club or a player this world lacks.
        const auto lacking = [&](qint64 zeile, Conflict &c) {
            squadrow.bind(1, zeile);
            if (!squadrow.step()) {
                squadrow.reset();
                return false;
            }
            const qint64 club = squadrow.integer(0), who = squadrow.integer(1);
            squadrow.reset();
            QStringList missing;
            if (!found(team, club))
                missing << QStringLiteral("den Verein %1 gibt es hier nicht").arg(club);
            if (!found(player, who))
                missing << QStringLiteral("den Spieler %1 gibt es hier nicht").arg(who);
            c.what = QStringLiteral("Kaderzeile %1 (Spieler %2 in Verein %3)").arg(zeile).arg(who).arg(club);
            c.why = missing.join(QStringLiteral(", "));
            return !missing.isEmpty();
        };
        // The choice for a conflict of reference: kept as the file has it,
        // or the row goes back to what it was (true).
        const auto takeback = [&](Conflict &c) {
            const std::optional<Choice> choice = choices ? choices->of(c) : std::nullopt;
            if (!choice)
                conflicts << c;
            if (choice == Choice::Theirs)
                return false;
            omitted << c.id();
            return true;
        };
        for (ChangesetReader it(changeset); it.next();) {
            if (it.op() == SQLITE_DELETE)
                continue;
            const QString table = it.table();
            const qint64 key = it.key().toLongLong();
            Conflict c;
            c.kind = Conflict::Reference;
            c.row = RowKey{table, key};
            if (omitted.contains(c.id()))
                continue;
            if (table == QLatin1String("kaderzeilen")) {
                if (!lacking(key, c))
                    continue;
            } else if (table == QLatin1String("vereine")) {
                const QVariant nation = it.newValue(9);
                if (!nation.isValid() || nation.toString().isEmpty() || found(country, nation))
                    continue;
                c.what = what(table, key, it.newValue(1));
                c.why = QStringLiteral("das Land „%1“ gibt es hier nicht").arg(nation.toString());
            } else {
                continue;
            }
            if (!takeback(c))
                continue;
            const QList<ColumnInfo> &cs = cols(table);
            if (it.op() == SQLITE_INSERT) {
                db.run(QStringLiteral("DELETE FROM %1 WHERE \"%2\" = ?1").arg(table, cs.first().name), key);
                continue;
            }
            for (int i = 1; i < it.columns() && i < cs.size(); ++i) {
                if (it.newValue(i).isValid())
                    db.run(QStringLiteral("UPDATE %1 SET \"%2\" = ?1 WHERE \"%3\" = ?2").arg(table, cs.at(i).name, cs.first().name),
                           it.oldValue(i).isNull() ? QVariant() : it.oldValue(i), key);
            }
        }
        for (qint64 zeile : appended) {
            Conflict c;
            c.kind = Conflict::Reference;
            c.row = RowKey{QStringLiteral("kaderzeilen"), zeile};
            if (lacking(zeile, c) && takeback(c))
                db.run(QStringLiteral("DELETE FROM kaderzeilen WHERE zeile = ?1"), zeile);
        }
    }
};

int countrows(const QByteArray &changeset)
{
    int n = 0;
    for (ChangesetReader it(changeset); it.next();)
        ++n;
    return n;
}

ApplyOutcome runpass(Database &db, const QByteArray &changeset, const ApplyChoices *choices)
{
    ApplyOutcome out;
    Pass pass(db, choices);
    out.changes = countrows(changeset);
    const int rc = sqlite3changeset_apply_v2(db.handle(), int(changeset.size()), const_cast<char *>(changeset.constData()),
                                             nullptr, &Pass::onconflict, &pass, nullptr, nullptr, 0);
    if (rc != SQLITE_OK)
        throw DbError(rc, QStringLiteral("Änderungen anwenden: %1").arg(QString::fromUtf8(sqlite3_errmsg(db.handle()))));
    pass.references(changeset);
    out.conflicts = pass.conflicts;
    out.already = pass.already;
    out.applied = std::max(0, out.changes - pass.already - int(pass.omitted.size())) + pass.appendedrows;
    return out;
}

} // namespace

ApplyOutcome previewchanges(Database &db, const QByteArray &changeset)
{
    return runguarded(QStringLiteral("Die Änderungen lassen sich nicht prüfen"), [&] {
        // Everything inside a savepoint that is rolled back.
        Transaction tx(db);
        ApplyOutcome out = runpass(db, changeset, nullptr);
        out.result = Result::success();
        return out;
    });
}

ApplyOutcome applychanges(Database &db, const QByteArray &changeset, const ApplyChoices &choices)
{
    ApplyOutcome out = runpass(db, changeset, &choices);
    if (!out.conflicts.isEmpty()) {
        QStringList lines;
        for (const Conflict &c : out.conflicts)
            lines << c.text();
        out.result = Result::failure(QStringLiteral("%1 Konflikte ohne Entscheidung; es wurde nichts geändert:\n%2")
                                         .arg(out.conflicts.size())
                                         .arg(lines.join(QLatin1Char('\n'))));
        return out;
    }
    if (out.applied > 0)
        out.result = Result::success(QStringLiteral("%1 Zeilen geändert.").arg(out.applied));
    else if (out.already == out.changes)
        out.result = Result::success(QStringLiteral("Die Änderungen sind in dieser Welt schon enthalten; es wurde nichts geändert."));
    else
        out.result = Result::success(QStringLiteral("Es wurde nichts geändert: diese Welt behält ihre Zeilen."));
    return out;
}

ApplyOutcome applychangefile(World &world, const QString &path, const ChangeFile &file, const ApplyChoices &choices)
{
    const QString name = QFileInfo(path).fileName();
    return world.run([&](Database &db) { return applychanges(db, file.changeset, choices); },
                     QStringLiteral("„%1“ lässt sich nicht anwenden").arg(name),
                     Step(QStringLiteral("Änderungsdatei „%1“ angewendet").arg(name), QStringLiteral("Änderungen anwenden")));
}

Result takeoverchanges(World &world, const QString &otherPath, const QList<EntityChange> &chosen, const QString &from)
{
    if (!world.db())
        return Result::failure(QStringLiteral("Es ist keine Datenbank geöffnet."));
    if (chosen.isEmpty())
        return Result::failure(QStringLiteral("Es ist keine Änderung angehakt."));
    OtherWorld other(*world.db(), otherPath);
    if (!other.result())
        return other.result();
    return world.run([&](Database &db) { return takeover(db, chosen); },
                     QStringLiteral("Die Änderungen lassen sich nicht übernehmen"),
                     Step(QStringLiteral("%1 Änderungen aus „%2“ übernommen").arg(chosen.size()).arg(from)));
}

} // namespace zorbo
