// Change files: the changes of one world written down, read back and
// applied to another world with its conflicts.
#include "exchange/changefile.h"

#include "core/history.h"
#include "exchange/valuetexts.h"
#include "platform/print.h"
#include "platform/runner.h"
#include "platform/safefile.h"

#include <generated/version.h>

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <bit>
#include <cstring>
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

// Walks the changeset's bytes as the session extension lays them out,
// before the engine sees them: the engine of Debian 12 does not come back
// from a table that claims more columns than the bytes hold. Each table must
// be one of the world's with its number of columns, each value within the
// bytes. False with *why when not.
bool wellformed(const QByteArray &bytes, QString *why)
{
    const auto *p = reinterpret_cast<const unsigned char *>(bytes.constData());
    const qsizetype end = bytes.size();
    qsizetype at = 0;
    const auto varint = [&](qint64 *value) {
        quint64 v = 0;
        for (int i = 0; i < 9; ++i) {
            if (at >= end)
                return false;
            const unsigned char b = p[at++];
            if (i == 8) {
                v = (v << 8) | b;
                break;
            }
            v = (v << 7) | (b & 0x7f);
            if (!(b & 0x80))
                break;
        }
        *value = qint64(v);
        return v <= quint64(end);
    };
    const auto broken = [&] {
        *why = QStringLiteral("die gespeicherten Änderungen sind an Byte %1 nicht lesbar").arg(at);
        return false;
    };
    int columns = -1;
    while (at < end) {
        if (p[at] == 'T') {
            ++at;
            qint64 n = 0;
            if (!varint(&n) || n < 1 || n > 64 || at + n > end)
                return broken();
            at += n; // which columns are the key
            const qsizetype name = at;
            while (at < end && p[at])
                ++at;
            if (at >= end)
                return broken();
            const QString table = QString::fromUtf8(reinterpret_cast<const char *>(p + name), at - name);
            ++at;
            if (columncount(table) != n) {
                *why = QStringLiteral("die Änderungen betreffen die Tabelle „%1“ mit %2 Spalten, die keine Welt so hat").arg(table).arg(n);
                return false;
            }
            columns = int(n);
            continue;
        }
        const unsigned char op = p[at];
        if (columns < 0 || (op != SQLITE_INSERT && op != SQLITE_UPDATE && op != SQLITE_DELETE) || at + 2 > end)
            return broken();
        at += 2; // the operation and the mark of an indirect change
        bool ok = true;
        for (int record = 0; ok && record < (op == SQLITE_UPDATE ? 2 : 1); ++record) {
            for (int c = 0; ok && c < columns; ++c) {
                if (at >= end) {
                    ok = false;
                    break;
                }
                const unsigned char type = p[at++];
                qint64 n = 0;
                if (type == SQLITE_INTEGER || type == SQLITE_FLOAT)
                    n = 8;
                else if (type == SQLITE_TEXT || type == SQLITE_BLOB)
                    ok = varint(&n);
                else if (type != 0 && type != SQLITE_NULL)
                    ok = false;
                if (ok && at + n > end)
                    ok = false;
                at += n;
            }
        }
        if (!ok)
            return broken();
    }
    return true;
}

// The rows of the changeset's tables; a table that is none of the world's
// is named in *why.
bool checkchangeset(const QByteArray &changeset, QString *why)
{
    if (!wellformed(changeset, why))
        return false;
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

constexpr const char *printPointer = "zorbo_print";

// printrow(print, values...): folds one row into the print given as a
// pointer. Inside the engine, so the values are read where they lie,
// numbers unconverted and texts as their stored bytes.
void printrowSql(sqlite3_context *context, int argc, sqlite3_value **argv)
{
    auto *print = static_cast<Print *>(sqlite3_value_pointer(argv[0], printPointer));
    if (!print) {
        sqlite3_result_error(context, "printrow: no print", -1);
        return;
    }
    // The number of values, then their types three bits each (21 to a
    // word), then the values that are not missing.
    print->word(quint64(argc - 1));
    quint64 types = 0;
    for (int i = 1; i < argc; ++i) {
        types = types << 3 | quint64(sqlite3_value_type(argv[i]));
        if (i % 21 == 0 || i == argc - 1) {
            print->word(types);
            types = 0;
        }
    }
    for (int i = 1; i < argc; ++i) {
        sqlite3_value *v = argv[i];
        switch (sqlite3_value_type(v)) {
        case SQLITE_INTEGER:
            print->word(quint64(sqlite3_value_int64(v)));
            break;
        case SQLITE_FLOAT:
            print->word(std::bit_cast<quint64>(sqlite3_value_double(v)));
            break;
        case SQLITE_TEXT: {
            const unsigned char *text = sqlite3_value_text(v);
            print->bytes(text, sqlite3_value_bytes(v));
            break;
        }
        case SQLITE_BLOB: {
            const void *blob = sqlite3_value_blob(v);
            print->bytes(blob, sqlite3_value_bytes(v));
            break;
        }
        default:
            break;
        }
    }
    sqlite3_result_null(context);
}

void registerprintrow(Database &db)
{
    if (db.scalar(QStringLiteral("SELECT count(*) FROM pragma_function_list WHERE name = 'printrow'")).toInt() > 0)
        return;
    if (const int rc = sqlite3_create_function_v2(db.handle(), "printrow", -1, SQLITE_UTF8 | SQLITE_DIRECTONLY, nullptr,
                                                  printrowSql, nullptr, nullptr, nullptr);
        rc != SQLITE_OK)
        throw DbError(rc, QStringLiteral("printrow"));
}

} // namespace

QByteArray worldfingerprint(Database &db, const QString &schema)
{
    registerprintrow(db);
    Print print;
    Transaction reading(db);
    for (const QString &table : worldtables()) {
        const QByteArray name = table.toUtf8();
        print.bytes(name.constData(), name.size());
        QStringList columns;
        Statement names = db.prepare(QStringLiteral("SELECT name FROM %1.pragma_table_info(?1) ORDER BY cid").arg(schema));
        names.bind(1, table);
        while (names.step())
            columns << QLatin1Char('"') + names.text(0) + QLatin1Char('"');
        // Row by row in the order of the key, each with its number of values.
        Statement st = db.prepare(QStringLiteral("SELECT printrow(?1, %3) FROM %1.%2 ORDER BY rowid")
                                      .arg(schema, table, columns.join(QStringLiteral(", "))));
        sqlite3_bind_pointer(st.handle(), 1, &print, printPointer, nullptr);
        while (st.step()) {
        }
    }
    return print.result();
}

Result writechangefile(const QString &path, const ChangeFile &file)
{
    // Made in memory, then written as the program replaces any file: whole
    // or not at all, never over a device or a folder.
    QByteArray bytes;
    try {
        Database out(QStringLiteral(":memory:"));
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
            line.bindAll(nr, int(c.kind), int(c.entity), c.number, c.name, c.country, c.club, c.fromClub, c.toClub, c.table, c.text())
                .exec();
            for (const FieldChange &f : c.fields)
                field.bindAll(nr, f.column, f.field, f.before, f.after).exec();
        }
        tx.commit();
        sqlite3_int64 size = 0;
        unsigned char *data = sqlite3_serialize(out.handle(), "main", &size, 0);
        if (!data)
            throw DbError(SQLITE_NOMEM, QStringLiteral("serialize"));
        bytes = QByteArray(reinterpret_cast<const char *>(data), qsizetype(size));
        sqlite3_free(data);
    } catch (const DbError &e) {
        return Result::failure(QStringLiteral("„%1“ lässt sich nicht schreiben: %2").arg(path, e.text()));
    }
    if (const Result written = replacefile(path, bytes); !written)
        return written;
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
        Transaction reading(db); // one read of the world for all that follows
        Statement st = db.prepare(QStringLiteral("SELECT schritt, text, aenderungen, pruefsumme FROM verlauf "
                                                 "WHERE schritt >= ?1 AND zurueck = 0 ORDER BY schritt"));
        st.bind(1, step);
        int steps = 0;
        while (st.step()) {
            const QByteArray changes = st.blob(2);
            if (changes.isEmpty() || !stepchecksumholds(st.integer(0), changes, st.blob(3))) {
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
        Transaction reading(db); // one read of both worlds for all that follows
        out.file = newfile(db, description);
        out.file.changeset = tablediff(db, QStringLiteral("main"), OtherWorld::schema);
        out.file.summary = summarize(db, out.file.changeset, OtherWorld::schema, QStringLiteral("main"));
        out.result = Result::success();
        return out;
    });
}

} // namespace zorbo
