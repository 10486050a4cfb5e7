#include "exchange/teamconfigreader.h"

#include "exchange/cfgfile.h"
#include "core/columnrules.h"
#include "exchange/replacerows.h"

#include <QSet>
#include <array>

#include <map>

namespace zorbo {

namespace {

enum class Kind { Whole, Decimal, Quoted, Bare, Squad, Ignored };

constexpr int maxNotes = 20;

struct Keyword {
    QByteArray word;
    Kind kind = Kind::Quoted;
    CfgField field{QString::fromLatin1(word)};
};

struct Form {
    QString table;
    QString kind; // "Der Verein" or "Das Nationalteam", for messages
    std::vector<Keyword> keywords;
    Statement insert;
};

// The three keyword lists of the file; a record's line n holds keyword n.
const QStringList &shortList()
{
    static const QStringList l = QStringLiteral("NUMMER NAME GRAFIK_NR SPIELER").split(' ');
    return l;
}

const QStringList &fullList()
{
    static const QStringList l = QStringLiteral(
        "NUMMER NAME KURZNAME GRAFIK_NR STAERKE STARTPLATZ SPIELER STADION_NAME STADT NATION STADION_SITZPL "
        "STADION_STEHPL TRIKOT_ART TW_TRIKOT_ART AUSWEICH_TRIKOT_ART AUSWEICH_TW_TRIKOT_ART F_TRIKOT_SPIELER "
        "F_AUSW_TRIKOT_SPIELER F_ALTERN_TRIKOT_SPIELER F_HOSE_SPIELER F_AUSW_HOSE_SPIELER F_ALTERN_HOSE_SPIELER "
        "F_TRIKOT_WERBUNG F_HOSE_STREIFEN F_TRIKOT_TORWART F_HOSE_TORWART F_TRIKOT_TRAINER F_HOSE_TRAINER").split(' ');
    return l;
}

const QStringList &nationalList()
{
    static const QStringList l = [] {
        QStringList n = fullList();
        n.insert(9, QStringLiteral("KLIMA"));
        n.insert(11, QStringLiteral("KONTINENT"));
        n << QStringLiteral("NATIONALTEAM") << QStringLiteral("LANDNAME");
        return n;
    }();
    return l;
}

class TeamRecordReader {
public:
    TeamRecordReader(Database &db, const CfgFile &file, ExchangeResult &result)
        : m_db(db), m_file(file), m_result(result), m_short(makeForm(QStringLiteral("vereine"), shortList())),
          m_full(makeForm(QStringLiteral("vereine"), fullList())),
          m_national(makeForm(QStringLiteral("vereine_national"), nationalList()))
    {
    }

    void importvereine(const Progress &progress);

private:
    struct Line {
        QByteArrayView text; // trimmed of blanks
        qsizetype number = 0;
    };

    Form makeForm(const QString &table, const QStringList &words);
    void splitsteam(qsizetype header, int last);
    void splitsspieler(qint64 team, QByteArrayView value, qsizetype line);
    // A hostile file could drop or repeat millions of records; only the
    // first few are named.
    bool roomForNote() { return ++m_repeats <= maxNotes; }

    Database &m_db;
    const CfgFile &m_file;
    ExchangeResult &m_result;
    // The tables end up as if they had been emptied and the file's records
    // written one after the other; rows that stay as they were are not
    // written, so that reading a file again changes only what it changes
    // (and the history records only that).
    void replacerows();

    Form m_short, m_full, m_national;
    // The squad rows by their place zeile, as the file's records leave
    // them: a record's squad replaces the rows of its team and takes the
    // places after the highest one left, as new rows of a table do.
    std::map<qint64, std::pair<qint64, qint64>> m_squadRows;
    QHash<qint64, QList<qint64>> m_squadPlaces; // team -> its places
    std::array<Line, 33> m_lines{}; // the lines of the open record
    QSet<qint64> m_seenClubs, m_seenNational;
    int m_records = 0;
    int m_repeats = 0;
};

Form TeamRecordReader::makeForm(const QString &table, const QStringList &words)
{
    QHash<QString, ColumnInfo> types;
    for (const ColumnInfo &c : m_db.columns(table))
        types.insert(c.name.toUpper(), c);
    std::vector<Keyword> keywords;
    QStringList marks;
    for (const QString &w : words) {
        const ColumnInfo c = types.value(w);
        Kind kind = c.isInteger() ? Kind::Whole : c.isText() ? Kind::Quoted : Kind::Decimal;
        if (w == QLatin1String("SPIELER"))
            kind = Kind::Squad;
        else if (w == QLatin1String("KLIMA"))
            kind = Kind::Bare;
        else if (w == QLatin1String("NATIONALTEAM") || w == QLatin1String("LANDNAME"))
            kind = Kind::Ignored;
        keywords.push_back({w.toLatin1(), kind});
        marks << QStringLiteral("?");
    }
    // Column names come from the fixed lists above and the table, never
    // from the file. The columns the record lacks become Null, as in a new row.
    const QString insert = QStringLiteral("INSERT INTO %1 (%2) VALUES (%3) ")
                               .arg(table, words.join(QLatin1Char(',')), marks.join(QLatin1Char(',')))
                           + updatechanged(m_db, table, QStringLiteral("NUMMER"));
    return Form{table, table == QLatin1String("vereine") ? QStringLiteral("Der Verein") : QStringLiteral("Das Nationalteam"),
                std::move(keywords), m_db.prepare(insert)};
}

void TeamRecordReader::importvereine(const Progress &progress)
{
    bool open = false;
    int index = -1;
    qsizetype header = -1;
    int lastPercent = -1;
    const qint64 size = m_file.size();
    CfgFile::Lines lines(m_file);
    while (lines.next()) {
        const qsizetype i = lines.number();
        const QByteArrayView line = trimBlanks(lines.text());
        if (open) {
            if (++index > 32)
                m_file.fail(header, QStringLiteral("der Datensatz ab hier hat mehr als 32 Zeilen; ein Verein hat 28, ein "
                                                   "Nationalteam 32 und die Kurzform 1 bis 4. Fehlt eine Leerzeile?"));
            m_lines[size_t(index)] = {line, i};
        }
        if (line.contains(QByteArrayView("NEUES_TEAM"))) {
            if (open && roomForNote())
                m_result.findings << Finding{.text = QStringLiteral("der Datensatz endet ohne Leerzeile vor dem "
                                                                    "nächsten NEUES_TEAM (Zeile %1) und wird übergangen.")
                                                         .arg(i + 1),
                                             .file = m_file.path(),
                                             .line = int(header + 1)};
            open = true;
            index = -1;
            header = i;
        }
        if (open && !line.isEmpty() && lines.last()) {
            open = false;
            splitsteam(header, index);
        } else if (open && line.isEmpty()) {
            open = false;
            splitsteam(header, index - 1);
        }
        // Every percent once: a file has many more lines than a bar has steps.
        if (const int percent = int(lines.offset() * 100 / std::max<qint64>(size, 1)); percent != lastPercent) {
            lastPercent = percent;
            report(progress, lines.offset(), size);
        }
    }
    if (m_repeats > maxNotes)
        m_result.findings << Finding{
            .text = QStringLiteral("… und %1 weitere übergangene oder doppelte Datensätze.").arg(m_repeats - maxNotes),
            .file = m_file.path()};
    replacerows();
    if (m_records == 0) {
        const QString why = QStringLiteral("enthält keinen Verein (keine Zeile NEUES_TEAM)%1.")
                                .arg(m_file.contains(QByteArrayView("NEUER_SPIELER"))
                                         ? QStringLiteral("; sie sieht aus wie eine Spielerdatei (1_sp.cfg)")
                                         : QString());
        throw Fault(QStringLiteral("Die Datei %1 %2").arg(m_file.path(), why), Finding{.text = QStringLiteral("Die Datei ") + why, .file = m_file.path()});
    }
}

void TeamRecordReader::splitsteam(qsizetype header, int last)
{
    if (last >= 0 && m_lines[size_t(last)].text.isEmpty())
        --last;
    // Records of one to three lines take the short list as far as they reach;
    // the columns behind them stay empty.
    Form *form = last >= 0 && last <= 3 ? &m_short : last == 27 ? &m_full : last == 31 ? &m_national : nullptr;
    if (!form)
        m_file.fail(header, QStringLiteral("der Datensatz hat %1 Zeilen und passt zu keiner Form: ein Verein hat 28, ein "
                                           "Nationalteam 32 und die Kurzform 1 bis 4 Zeilen.")
                                .arg(last + 1));
    qint64 team = 0;
    qsizetype squadLine = -1;
    QByteArrayView squad;
    for (int i = 0; i <= last; ++i) {
        const Keyword &k = form->keywords[size_t(i)];
        const qsizetype lineNo = m_lines[size_t(i)].number;
        const QByteArrayView line = m_lines[size_t(i)].text;
        // One character after the keyword is skipped, whatever it is; a line
        // without the keyword gives its text from the keyword's length on.
        // Blanks and tabs around the value are white space.
        const qsizetype pos = line.indexOf(k.word);
        const qsizetype start = std::min(line.size(), (pos >= 0 ? pos + 1 : 0) + k.word.size());
        const QByteArrayView value = trimValue(line.sliced(start));
        const CfgField &field = k.field;
        QVariant bound;
        switch (k.kind) {
        case Kind::Whole:
            bound = wholefield(m_file, lineNo, field, value);
            break;
        case Kind::Decimal:
            bound = decimalfield(m_file, lineNo, field, value);
            break;
        case Kind::Quoted: {
            if (value.size() < 2 || value.front() != '"' || value.back() != '"')
                m_file.failfield(lineNo, field.name, shown(value) + QStringLiteral(", kein Text in Anführungszeichen."));
            checktextfield(m_file, lineNo, field, value.sliced(1, value.size() - 2));
            bound = *parseQuoted(value);
            break;
        }
        case Kind::Bare:
            checktextfield(m_file, lineNo, field, value);
            bound = textOf(value);
            break;
        case Kind::Squad:
            squad = value;
            squadLine = lineNo;
            bound = QString(QLatin1String(""));
            break;
        case Kind::Ignored:
            bound = QString(QLatin1String(""));
            break;
        }
        if (i == 0)
            team = bound.toLongLong();
        form->insert.bind(i + 1, bound);
    }
    if (squadLine >= 0)
        splitsspieler(team, squad, squadLine);
    QSet<qint64> &seen = form == &m_national ? m_seenNational : m_seenClubs;
    if (seen.contains(team) && roomForNote())
        m_result.findings << Finding{.text = QStringLiteral("%1 stand schon weiter oben in der Datei; es gilt dieser "
                                                            "Datensatz.")
                                                 .arg(form->kind),
                                     .file = m_file.path(),
                                     .line = int(header + 1),
                                     .team = team};
    seen.insert(team);
    form->insert.exec();
    form->insert.reset();
    ++(form == &m_national ? m_result.nationalTeams : m_result.teams);
    ++m_records;
}

void TeamRecordReader::splitsspieler(qint64 team, QByteArrayView value, qsizetype line)
{
    QByteArray list(value.data(), value.size());
    list.replace('"', QByteArray());
    if (list.isEmpty())
        return; // the squad stays as it is
    std::vector<qint64> players;
    for (const QByteArray &piece : list.split(',')) {
        const std::optional<qint64> n = parseRounded(trimValue(piece));
        if (!n || !rangeproblem(QStringLiteral("NUMMER"), double(*n)).isEmpty())
            m_file.fail(line, QStringLiteral("in der Spielerliste steht %1, keine Spielernummer (ganze Zahl von 0 bis %2).")
                                  .arg(shown(piece))
                                  .arg(storerule(QStringLiteral("NUMMER")).max));
        players.push_back(*n);
    }
    QList<qint64> &places = m_squadPlaces[team];
    for (qint64 place : std::as_const(places))
        m_squadRows.erase(place);
    places.clear();
    qint64 next = m_squadRows.empty() ? 1 : m_squadRows.rbegin()->first + 1;
    for (qint64 p : players) {
        m_squadRows[next] = {team, p};
        places << next++;
    }
    m_result.squadRows += int(players.size());
}

void TeamRecordReader::replacerows()
{
    const QString nummer = QStringLiteral("NUMMER");
    dropunread(m_db, QStringLiteral("vereine"), nummer, [this](qint64 n) { return m_seenClubs.contains(n); });
    dropunread(m_db, QStringLiteral("vereine_national"), nummer, [this](qint64 n) { return m_seenNational.contains(n); });
    const QString squads = QStringLiteral("kaderzeilen"), place = QStringLiteral("zeile");
    RowBatch put(m_db, QStringLiteral("INSERT INTO kaderzeilen (zeile, verein, spieler)"), 3,
                 updatechanged(m_db, squads, place), 256);
    for (const auto &[zeile, row] : m_squadRows) {
        put.integer(zeile);
        put.integer(row.first);
        put.integer(row.second);
        put.endrow();
    }
    put.finish();
    dropunread(m_db, squads, place, [this](qint64 z) { return m_squadRows.contains(z); });
}

} // namespace

ExchangeResult importvereine(Database &db, const QString &path, const Progress &progress, FileEncoding encoding)
{
    return importcfgfile(db, path, encoding, [&](const CfgFile &file, ExchangeResult &result) {
        TeamRecordReader reader(db, file, result);
        reader.importvereine(progress);
        return QStringLiteral("%1 Vereine, %2 Nationalteams und %3 Kaderplätze aus %4 eingelesen.")
            .arg(result.teams)
            .arg(result.nationalTeams)
            .arg(result.squadRows)
            .arg(path);
    });
}

} // namespace zorbo
