#include "exchange/playerconfig.h"

#include "exchange/cfgfile.h"
#include "exchange/cfgwriter.h"
#include "exchange/replacerows.h"
#include "platform/codepage.h"
#include "platform/numbers.h"

#include <cstring>


namespace zorbo {

namespace {

constexpr int playerColumns = 17;
constexpr int nameWidth = 16;

// ERLERNT and GESPERRT, the last two columns, stand in the file without quotes.
bool bareColumn(int column)
{
    return column >= playerColumns - 2;
}

QList<ColumnInfo> playerColumnsOf(Database &db)
{
    const QList<ColumnInfo> columns = db.columns(QStringLiteral("spieler"));
    if (columns.size() != playerColumns)
        throw DbError("Die Tabelle spieler hat nicht die 17 Spalten der Spielerdatei.");
    return columns;
}

// Only the first duplicates are named: a hostile file could repeat one
// number millions of times.
constexpr qsizetype namedDuplicates = 20;

// Where a field line's value starts: behind the keyword followed by a blank
// or a tab, or, when the line lacks that, from one before the keyword's
// length, as the game's own reader took it.
qsizetype valueStart(QByteArrayView line, QByteArrayView keyword)
{
    // The usual line: blanks, the keyword, a blank.
    qsizetype lead = 0;
    while (lead < line.size() && (line[lead] == ' ' || line[lead] == '\t'))
        ++lead;
    if (const qsizetype behind = lead + keyword.size(); behind < line.size()
        && std::memcmp(line.data() + lead, keyword.data(), size_t(keyword.size())) == 0
        && (line[behind] == ' ' || line[behind] == '\t'))
        return behind;
    for (qsizetype pos = line.indexOf(keyword); pos >= 0; pos = line.indexOf(keyword, pos + 1)) {
        const qsizetype behind = pos + keyword.size();
        if (behind < line.size() && (line[behind] == ' ' || line[behind] == '\t'))
            return behind;
    }
    return keyword.size() - 1;
}

void readPlayers(Database &db, const CfgFile &file, ExchangeResult &result, const Progress &progress)
{
    const QList<ColumnInfo> columns = playerColumnsOf(db);
    enum class Kind { Whole, Decimal, Quoted, Bare };
    std::vector<QByteArray> keywords;
    std::vector<Kind> kinds;
    std::vector<CfgField> fields;
    for (int c = 0; c < playerColumns; ++c) {
        const ColumnInfo &col = columns[c];
        fields.emplace_back(col.name.toUpper());
        keywords.push_back(*toCp1252(fields.back().name));
        kinds.push_back(bareColumn(c) ? Kind::Bare : col.isText() ? Kind::Quoted : col.isInteger() ? Kind::Whole : Kind::Decimal);
    }
    // A player as the world holds him already is left alone.
    RowBatch insert(db, QStringLiteral("INSERT INTO spieler"), playerColumns,
                    updatechanged(db, QStringLiteral("spieler"), QStringLiteral("NUMMER")));
    KeySet seen;
    qsizetype droppedCount = 0;
    int lastPercent = -1;
    const qint64 size = file.size();
    CfgFile::Lines lines(file);
    while (lines.next()) {
        if (lines.text().contains(QByteArrayView("NEUER_SPIELER"))) {
            const qsizetype header = lines.number();
            qint64 number = 0;
            for (int c = 0; c < playerColumns; ++c) {
                if (!lines.next())
                    file.fail(header, QStringLiteral("die Datei endet mitten im Spieler: %1 von 17 Zeilen sind da.").arg(c));
                const qsizetype i = lines.number();
                const QByteArrayView line = lines.text();
                const QByteArray &k = keywords[size_t(c)];
                const qsizetype start = std::min(line.size(), valueStart(line, k));
                const QByteArrayView value = trimValue(line.sliced(start));
                const CfgField &field = fields[size_t(c)];
                switch (kinds[size_t(c)]) {
                case Kind::Whole: {
                    const qint64 n = wholefield(file, i, field, value);
                    if (c == 0)
                        number = n;
                    insert.integer(n);
                    break;
                }
                case Kind::Decimal:
                    insert.real(decimalfield(file, i, field, value));
                    break;
                case Kind::Quoted: {
                    if (value.size() < 2 || value.front() != '"' || value.back() != '"')
                        file.failfield(i, field.name, shown(value) + QStringLiteral(", kein Text in Anführungszeichen."));
                    checktextfield(file, i, field, value.sliced(1, value.size() - 2));
                    insert.cp1252(value.sliced(1, value.size() - 2));
                    break;
                }
                case Kind::Bare:
                    checktextfield(file, i, field, value);
                    insert.cp1252(value);
                    break;
                }
            }
            if (seen.insert(number)) {
                insert.endrow();
                ++result.players;
            } else {
                insert.droprow();
                if (++droppedCount <= namedDuplicates)
                    result.findings << Finding{.text = QStringLiteral("die Spielernummer stand schon weiter oben in der "
                                                                      "Datei; der erste Datensatz bleibt, dieser wird "
                                                                      "übergangen."),
                                               .file = file.path(),
                                               .line = int(header + 1),
                                               .player = number};
            }
        }
        // Every percent once: a file has many more lines than a bar has steps.
        if (const int percent = int(lines.offset() * 100 / std::max<qint64>(size, 1)); percent != lastPercent) {
            lastPercent = percent;
            report(progress, lines.offset(), size);
        }
    }
    if (result.players == 0) {
        const QString why = QStringLiteral("enthält keinen Spieler (keine Zeile NEUER_SPIELER)%1.")
                                .arg(file.contains(QByteArrayView("NEUES_TEAM"))
                                         ? QStringLiteral("; sie sieht aus wie eine Vereinsdatei (1_tm.cfg)")
                                         : QString());
        throw Fault(QStringLiteral("Die Datei %1 %2").arg(file.path(), why), Finding{.text = QStringLiteral("Die Datei ") + why, .file = file.path()});
    }
    if (droppedCount > namedDuplicates)
        result.findings << Finding{.text = QStringLiteral("… und %1 weitere doppelte Spielernummern.")
                                               .arg(droppedCount - namedDuplicates),
                                   .file = file.path()};
    insert.finish();
    // The players the file doesn't hold leave the world.
    dropunread(db, QStringLiteral("spieler"), QStringLiteral("NUMMER"), [&](qint64 n) { return seen.contains(n); });
}

} // namespace

QString sp_header(Database &db, const QDateTime &now)
{
    const QVariant last = db.scalar(QStringLiteral("SELECT max(NUMMER) FROM spieler"));
    const QString crlf = QStringLiteral("\r\n");
    return cfghead(now) + QStringLiteral("        LETZTER_SPIELER ")
        + (last.isNull() ? QString() : QString::number(last.toLongLong())) + crlf;
}

ExchangeResult exportspieler(Database &db, const QString &path, const Progress &progress, const QDateTime &now, bool nearest)
{
    return runtransaction(db, QStringLiteral("Export nach %1 abgebrochen").arg(path), [&] {
        ExchangeResult result;
        // What each column needs, worked out once: the record's rows are many.
        struct Column {
            QByteArray prefix;
            QString field;
            bool text = false;
            bool bare = false;
        };
        const QList<ColumnInfo> infos = playerColumnsOf(db);
        std::vector<Column> columns;
        qsizetype recordBytes = 32;
        for (int c = 0; c < playerColumns; ++c) {
            const ColumnInfo &info = infos[c];
            const QString field = info.name.toUpper();
            const QByteArray prefix =
                QByteArray(8, ' ') + *toCp1252(field) + QByteArray(std::max<int>(0, nameWidth - int(field.size())), ' ');
            recordBytes += prefix.size() + 12;
            columns.push_back(Column{.prefix = prefix, .field = field, .text = info.isText(), .bare = bareColumn(c)});
        }
        CfgWriter out(path);
        out.setnearest(nearest);
        out.head(sp_header(db, now));
        const qint64 total = db.scalar(QStringLiteral("SELECT count(*) FROM spieler")).toLongLong();
        out.reserve(total * recordBytes);
        Statement st = db.prepare(QStringLiteral("SELECT * FROM spieler ORDER BY NUMMER"));
        int lastPercent = -1;
        const auto fail = [](qint64 number, const QString &field, const QString &problem) {
            throw Fault(QStringLiteral("Spieler %1, Feld %2: %3").arg(number).arg(field, problem),
                        Finding{.text = problem, .field = field, .player = number});
        };
        while (st.step()) {
            const qint64 number = st.integer(0);
            out.bytes("\r\nNEUER_SPIELER\r\n");
            for (int c = 0; c < playerColumns; ++c) {
                const Column &col = columns[size_t(c)];
                out.bytes(col.prefix);
                if (col.text) {
                    // A Null text goes out as empty text: the file has no form for it.
                    QString problem;
                    if (!col.bare)
                        out.bytes("\"");
                    if (!out.columnText(st, c, &problem, Finding{.field = col.field, .player = number}))
                        fail(number, col.field, problem);
                    if (!col.bare)
                        out.bytes("\"");
                } else if (!out.number(st, c)) {
                    fail(number, col.field, QStringLiteral("das Feld ist leer, die Spielerdatei verlangt dort eine Zahl."));
                }
                out.endLine();
            }
            ++result.players;
            // Every percent once; the file is replaced only after the last.
            if (const int percent = int(result.players * 100 / std::max<qint64>(total, 1)); percent != lastPercent) {
                lastPercent = percent;
                report(progress, result.players, total);
            }
        }
        result.result = out.save();
        result.findings << out.replacements();
        if (result.ok())
            result.result.message = QStringLiteral("%1 Spieler nach %2 geschrieben.").arg(result.players).arg(path);
        return result;
    });
}

ExchangeResult importspieler(Database &db, const QString &path, const Progress &progress, FileEncoding encoding)
{
    return importcfgfile(db, path, encoding, [&](const CfgFile &file, ExchangeResult &result) {
        readPlayers(db, file, result, progress);
        return QStringLiteral("%1 Spieler aus %2 eingelesen.").arg(result.players).arg(path);
    });
}

} // namespace zorbo
