#include "editor/playercsv.h"

#include "editor/bulkedit.h"
#include "editor/playerlist.h"
#include "platform/fileerror.h"
#include "platform/safefile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QStringDecoder>

namespace zorbo {

namespace {

const QString vereinHeading = QStringLiteral("Verein");
constexpr int vereinColumn = 3; // after Vorname

QString quotedfield(const QString &text)
{
    if (!text.contains(QLatin1Char(';')) && !text.contains(QLatin1Char('"')) && !text.contains(QLatin1Char('\n'))
        && !text.contains(QLatin1Char('\r')))
        return text;
    return QLatin1Char('"') + QString(text).replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

QString decoded(const QByteArray &bytes, FileEncoding encoding, const QString &file)
{
    if (bytes.startsWith("\xEF\xBB\xBF"))
        encoding = FileEncoding::Utf8;
    if (encoding == FileEncoding::Cp1252)
        return fromCp1252(bytes);
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(bytes);
    if (utf8.hasError())
        throw Fault(QStringLiteral("%1: Die Datei ist kein UTF-8. Als Windows-1252 lesen (--cp1252)?").arg(file));
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    return text;
}

} // namespace

QByteArray playercsv(Database &db, const QList<qint64> &players)
{
    // One statement in the order of the numbers, each player with the name
    // of his first team, written as it comes.
    QStringList cols;
    for (const PlayerField &f : playerfields())
        cols << QStringLiteral("s.\"%1\"").arg(f.column);
    const qint64 all = db.scalar(QStringLiteral("SELECT count(*) FROM spieler")).toLongLong();
    const bool every = QSet<qint64>(players.begin(), players.end()).size() >= all;
    QStringList numbers;
    if (!every)
        for (qint64 p : players)
            numbers << QString::number(p);
    Statement st = db.prepare(
        QStringLiteral("SELECT ") + cols.join(QStringLiteral(", "))
        + QStringLiteral(", CASE WHEN k.verein IS NULL THEN 'vereinslos' WHEN k.verein = 0 THEN 'Transfermarkt' "
                         "ELSE coalesce(t.NAME, n.NAME, '') END FROM spieler s "
                         "LEFT JOIN (SELECT spieler, verein, min(zeile) FROM kaderzeilen GROUP BY spieler) k ON k.spieler = s.NUMMER "
                         "LEFT JOIN vereine t ON t.NUMMER = k.verein LEFT JOIN vereine_national n ON n.NUMMER = k.verein ")
        + (every ? QString() : QStringLiteral("WHERE s.NUMMER IN (SELECT value FROM json_each(?1)) "))
        + QStringLiteral("ORDER BY s.NUMMER"));
    if (!every)
        st.bind(1, QLatin1Char('[') + numbers.join(QLatin1Char(',')) + QLatin1Char(']'));
    QStringList header;
    for (const PlayerField &f : playerfields())
        header << f.heading;
    header.insert(vereinColumn, vereinHeading);
    QString out = header.join(QLatin1Char(';')) + QStringLiteral("\r\n");
    out.reserve(qsizetype(players.size()) * 110);
    const int count = int(playerfields().size());
    while (st.step()) {
        for (int i = 0; i < count; ++i) {
            if (i == vereinColumn)
                out += quotedfield(st.text(count)) + QLatin1Char(';');
            out += quotedfield(fieldtext(playerfields()[i], st.value(i)));
            out += i + 1 < count ? QLatin1Char(';') : QLatin1Char('\r');
        }
        out += QLatin1Char('\n');
    }
    return QByteArray("\xEF\xBB\xBF") + out.toUtf8();
}

Result exportplayercsv(Database &db, const QList<qint64> &players, const QString &path)
{
    const Result written = replacefile(path, playercsv(db, players));
    if (!written)
        return written;
    return Result::success(QStringLiteral("%1 Spieler nach %2 geschrieben.").arg(players.size()).arg(QFileInfo(path).fileName()));
}

QList<CsvRecord> splitcsv(const QString &text, QChar separator, const QString &file)
{
    QList<CsvRecord> records;
    CsvRecord record;
    QString field;
    int line = 1;
    bool quoted = false, wasQuoted = false;
    int quoteLine = 0;
    record.line = 1;
    const auto endfield = [&] {
        record.fields << field;
        field.clear();
        wasQuoted = false;
    };
    const auto endrecord = [&] {
        endfield();
        if (!(record.fields.size() == 1 && record.fields[0].isEmpty()))
            records << record;
        record = CsvRecord{line + 1, {}};
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (quoted) {
            if (c == QLatin1Char('"')) {
                if (i + 1 < text.size() && text[i + 1] == QLatin1Char('"')) {
                    field += c;
                    ++i;
                } else {
                    quoted = false;
                }
            } else {
                if (c == QLatin1Char('\n'))
                    ++line;
                if (c == QLatin1Char('\r') && i + 1 < text.size() && text[i + 1] == QLatin1Char('\n'))
                    continue; // a CR LF inside a field is a line break like LF
                field += c;
            }
            continue;
        }
        if (field.isEmpty() && !wasQuoted && c != QLatin1Char('"') && c != separator && c != QLatin1Char('\n') && c != QLatin1Char('\r')) {
            // An unquoted field runs to the next separator or line end.
            qsizetype end = i;
            while (end < text.size() && text[end] != separator && text[end] != QLatin1Char('\n') && text[end] != QLatin1Char('\r'))
                ++end;
            field = text.mid(i, end - i);
            i = end - 1;
            continue;
        }
        if (c == QLatin1Char('"') && field.isEmpty() && !wasQuoted) {
            quoted = wasQuoted = true;
            quoteLine = line;
        } else if (c == separator) {
            endfield();
        } else if (c == QLatin1Char('\n') || c == QLatin1Char('\r')) {
            if (c == QLatin1Char('\r') && i + 1 < text.size() && text[i + 1] == QLatin1Char('\n'))
                ++i;
            endrecord();
            ++line;
        } else {
            field += c;
        }
    }
    if (quoted) {
        Finding where{QStringLiteral("Anführungszeichen nicht geschlossen"), file, quoteLine};
        throw Fault(where.toString(), where);
    }
    if (!field.isEmpty() || !record.fields.isEmpty())
        endrecord();
    return records;
}

CsvImport importplayercsv(Database &db, const QString &path, const CsvOptions &options, bool apply)
{
    CsvImport out;
    const QString file = QFileInfo(path).fileName();
    const auto refuse = [&](int line, const QString &column, const QString &text) {
        Finding f{text, path, line, column};
        QString place = QStringLiteral("%1, Zeile %2").arg(QDir::toNativeSeparators(path)).arg(line);
        if (!column.isEmpty())
            place += QStringLiteral(", Spalte „%1“").arg(column);
        throw Fault(place + QStringLiteral(": ") + text + QStringLiteral(". Es wurde nichts geändert."), f);
    };
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        throw Fault(QStringLiteral("%1: %2").arg(file, fileerrortext(f)));
    const QString text = decoded(f.readAll(), options.encoding, file);
    const QString firstLine = text.left(text.indexOf(QLatin1Char('\n')));
    const QChar separator = firstLine.contains(QLatin1Char(';')) || !firstLine.contains(QLatin1Char(',')) ? QLatin1Char(';') : QLatin1Char(',');
    const QList<CsvRecord> records = splitcsv(text, separator, path);
    if (records.isEmpty())
        refuse(1, {}, QStringLiteral("Die Datei ist leer."));

    // Columns: the index of the field in playerfields(), -1 for Verein.
    QList<int> columns;
    QSet<int> seen;
    for (const QString &h : records[0].fields) {
        const PlayerField *field = playerfield(h);
        if (h.trimmed().compare(vereinHeading, Qt::CaseInsensitive) == 0) {
            columns << -1;
            continue;
        }
        if (!field)
            refuse(1, h, QStringLiteral("unbekannte Spalte; erlaubt sind die Spalten des Exports"));
        const int i = int(field - playerfields().constData());
        if (seen.contains(i))
            refuse(1, h, QStringLiteral("Spalte doppelt"));
        seen.insert(i);
        columns << i;
    }
    const int nummerColumn = int(columns.indexOf(0));
    if (nummerColumn < 0)
        refuse(1, QStringLiteral("Nummer"), QStringLiteral("die Spalte „Nummer“ fehlt"));
    const int vereinAt = int(columns.indexOf(-1));

    const QHash<qint64, QVariantList> stored = readplayers(db, nullptr);
    QSet<qint64> numbers;
    struct Planned {
        QVariantList before, after;
        QString verein;
    };
    QList<Planned> planned;
    for (qsizetype r = 1; r < records.size(); ++r) {
        const CsvRecord &rec = records[r];
        if (rec.fields.size() != columns.size())
            refuse(rec.line, {}, QStringLiteral("%1 Felder statt %2").arg(rec.fields.size()).arg(columns.size()));
        QString why;
        const std::optional<QVariant> nummer = parsefield(playerfields()[0], rec.fields[nummerColumn], &why);
        if (!nummer || nummer->isNull())
            refuse(rec.line, QStringLiteral("Nummer"), why.isEmpty() ? QStringLiteral("leer") : why);
        const qint64 n = nummer->toLongLong();
        if (numbers.contains(n))
            refuse(rec.line, QStringLiteral("Nummer"), QStringLiteral("Spieler %1 steht zweimal in der Datei").arg(n));
        numbers.insert(n);
        const auto was = stored.constFind(n);
        if (was == stored.constEnd() && !options.createPlayers)
            refuse(rec.line, QStringLiteral("Nummer"),
                   QStringLiteral("Spieler %1 gibt es nicht (neue Spieler anlegen ist nicht gewählt)").arg(n));
        Planned p;
        if (was != stored.constEnd()) {
            p.before = *was;
            p.after = *was;
        } else {
            for (const PlayerField &field : playerfields())
                p.after << (field.type == FieldType::Text ? QVariant(QString()) : QVariant(qint64(0)));
            p.after[0] = n;
        }
        for (int c = 0; c < columns.size(); ++c) {
            const int i = columns[c];
            if (i <= 0)
                continue;
            const PlayerField &field = playerfields()[i];
            // A field as it was exported stays as it is, also a value the
            // windows would not let the user type.
            if (!p.before.isEmpty() && fieldtext(field, p.before[i]) == rec.fields[c])
                continue;
            const std::optional<QVariant> v = parsefield(field, rec.fields[c], &why);
            if (!v)
                refuse(rec.line, field.heading, why);
            p.after[i] = *v;
        }
        static const int iStaerke = int(playerfield(QStringLiteral("Stärke")) - playerfields().constData());
        static const int iMax = int(playerfield(QStringLiteral("Maxstärke")) - playerfields().constData());
        const bool strengthChanged = p.before.isEmpty() || p.before[iStaerke] != p.after[iStaerke] || p.before[iMax] != p.after[iMax];
        if (strengthChanged && !p.after[iMax].isNull() && !p.after[iStaerke].isNull()
            && p.after[iMax].toLongLong() < p.after[iStaerke].toLongLong())
            refuse(rec.line, QStringLiteral("Maxstärke"), QStringLiteral("%1 Sterne, weniger als die Stärke von %2 Sternen")
                                                              .arg(starstext(p.after[iMax].toLongLong()), starstext(p.after[iStaerke].toLongLong())));
        if (vereinAt >= 0)
            p.verein = rec.fields[vereinAt].trimmed();
        planned.append(p);
    }

    PlayerWriter writer(db);
    Statement team = db.prepare(QStringLiteral(
        "SELECT NUMMER FROM vereine WHERE samename(NAME, ?1) UNION ALL SELECT NUMMER FROM vereine_national WHERE samename(NAME, ?1)"));
    for (const Planned &p : planned) {
        if (!differs(p.before, p.after))
            continue;
        ++out.changed;
        if (p.before.isEmpty())
            ++out.created;
        if (out.preview.size() < options.previewRows)
            out.preview.append(changeof(p.before, p.after));
        if (!apply)
            continue;
        if (!p.before.isEmpty()) {
            writer.update(p.before, p.after);
            continue;
        }
        writer.insert(p.after);
        // A new player joins the team the file names, when one team has that name.
        std::optional<qint64> club;
        if (p.verein.compare(QLatin1String(transfermarkt), Qt::CaseInsensitive) == 0) {
            club = 0;
        } else if (!p.verein.isEmpty()) {
            team.bind(1, p.verein);
            if (team.step())
                club = team.integer(0);
            if (team.step())
                club.reset();
            team.reset();
        }
        if (club)
            db.run(QStringLiteral("INSERT INTO kaderzeilen (verein, spieler) VALUES (?1, ?2)"), *club, p.after[0].toLongLong());
    }
    out.result = Result::success(out.changed == 0 ? QStringLiteral("%1: keine Änderung.").arg(file)
                                                  : QStringLiteral("%1: %2 Spieler geändert, davon %3 neu.")
                                                        .arg(file).arg(out.changed).arg(out.created));
    return out;
}

CsvImport runplayercsvimport(World &world, const QString &path, const CsvOptions &options)
{
    // A restore point for a file of many rows; the world keeps none when
    // the file changes no row.
    QFile f(path);
    const qint64 lines = f.open(QIODevice::ReadOnly) ? f.readAll().count('\n') : 0;
    const Step step(QStringLiteral("CSV „%1“ importiert").arg(QFileInfo(path).fileName()),
                    lines > bulkRestoreRows ? QStringLiteral("CSV-Import") : QString());
    return world.run([&](Database &db) { return importplayercsv(db, path, options, true); }, QStringLiteral("CSV-Import"), step);
}

} // namespace zorbo
