#include "exchange/teamconfigwriter.h"

#include "exchange/cfgfile.h"
#include "exchange/cfgwriter.h"

#include <charconv>
#include <unordered_map>

namespace zorbo {

namespace {

constexpr int nameWidth = 25;
constexpr int squadColumn = 6; // SPIELER, the seventh column of both team tables

// The squad numbers of the teams, read in one pass over the squad rows in
// their order (or of one team only).
class SquadLookup {
public:
    explicit SquadLookup(Database &db, std::optional<qint64> team = {})
    {
        Statement st = db.prepare(QStringLiteral("SELECT verein, spieler FROM kaderzeilen WHERE %1 ORDER BY rowid")
                                      .arg(team ? QStringLiteral("verein = ?1") : QStringLiteral("verein IS NOT NULL")));
        if (team)
            st.bind(1, *team);
        while (st.step()) {
            QByteArray &numbers = m_numbers[st.integer(0)];
            if (!numbers.isEmpty())
                numbers += ',';
            char digits[24];
            numbers.append(digits, std::to_chars(digits, digits + sizeof digits, st.integer(1)).ptr - digits);
        }
    }

    QByteArray line(qint64 team) const
    {
        QByteArray out("        SPIELER");
        if (const auto it = m_numbers.find(team); it != m_numbers.end())
            out += QByteArray(nameWidth - 7, ' ') + '"' + it->second + '"';
        return out;
    }

private:
    std::unordered_map<qint64, QByteArray> m_numbers;
};

struct ColumnForm {
    QByteArray prefix; // eight blanks, the name in capitals, the padding
    QString name;
    bool text = false;
    bool bare = false; // KLIMA: text without quotes
};

// Writes the rows of one table; returns the number of rows.
int writeTable(Database &db, CfgWriter &out, const QString &table, const QString &kind, const SquadLookup &squads,
               QList<Finding> &findings, const std::function<void()> &rowDone)
{
    const QList<ColumnInfo> columns = db.columns(table);
    std::vector<ColumnForm> forms;
    for (const ColumnInfo &c : columns) {
        ColumnForm f;
        f.name = c.name.toUpper();
        f.prefix = QByteArray(8, ' ') + f.name.toLatin1() + QByteArray(std::max<int>(0, nameWidth - int(f.name.size())), ' ');
        f.text = c.isText();
        f.bare = f.name == QLatin1String("KLIMA");
        forms.push_back(f);
    }
    const int readable = table == QLatin1String("vereine") ? 28 : 32;
    Statement st = db.prepare(QStringLiteral("SELECT * FROM %1 ORDER BY NUMMER").arg(table));
    int rows = 0;
    while (st.step()) {
        const qint64 number = st.integer(0);
        out.endLine(); // the empty line before each record
        out.bytes("NEUES_TEAM\r\n");
        int lines = 0;
        QStringList empty;
        for (int c = 0; c < int(forms.size()); ++c) {
            const ColumnForm &f = forms[size_t(c)];
            ++lines;
            if (c == squadColumn) {
                out.bytes(squads.line(number));
            } else if (st.isNull(c)) {
                --lines;
                empty << f.name;
                continue;
            } else if (f.text) {
                out.bytes(f.prefix);
                if (!f.bare)
                    out.bytes("\"");
                if (QString problem; !out.columnText(st, c, &problem, Finding{.field = f.name, .team = number}))
                    throw Fault(QStringLiteral("%1 %2, Feld %3: %4").arg(kind).arg(number).arg(f.name, problem),
                                Finding{.text = problem, .field = f.name, .team = number});
                if (!f.bare)
                    out.bytes("\"");
            } else {
                out.bytes(f.prefix);
                out.number(st, c);
            }
            out.endLine();
        }
        if (lines != readable && !(lines == 4 && table == QLatin1String("vereine")))
            findings << Finding{.text = QStringLiteral("der Datensatz hat leere Felder (%1) und geht mit %2 Zeilen "
                                                       "hinaus; so lässt er sich nicht wieder einlesen.")
                                            .arg(empty.join(QStringLiteral(", ")))
                                            .arg(lines),
                                .team = number};
        ++rows;
        rowDone();
    }
    return rows;
}

} // namespace

QString tm_header(Database &db, const QDateTime &now)
{
    const QVariant last = db.scalar(QStringLiteral("SELECT max(maxnr) FROM maxteamnr"));
    const QString crlf = QStringLiteral("\r\n");
    return cfghead(now) + QStringLiteral("        BASE_NATION \"Deutschland\"")
        + crlf + crlf + QStringLiteral("        LETZTES_TEAM ") + (last.isNull() ? QString() : QString::number(last.toLongLong()))
        + crlf;
}

QString tm_player(Database &db, qint64 team)
{
    return QString::fromLatin1(SquadLookup(db, team).line(team));
}

ExchangeResult exportvereine(Database &db, const QString &path, const Progress &progress, const QDateTime &now, bool nearest)
{
    return runtransaction(db, QStringLiteral("Export nach %1 abgebrochen").arg(path), [&] {
        ExchangeResult result;
        CfgWriter out(path);
        out.setnearest(nearest);
        out.head(tm_header(db, now));
        const qint64 total = db.scalar(QStringLiteral("SELECT (SELECT count(*) FROM vereine) + "
                                                      "(SELECT count(*) FROM vereine_national)"))
                                 .toLongLong();
        // About what a record takes: 32 lines of a padded name and a value.
        out.reserve(total * 32 * (8 + nameWidth + 14));
        qint64 done = 0;
        int lastPercent = -1;
        // Every percent once; the file is replaced only after the last.
        const auto rowDone = [&] {
            if (const int percent = int(++done * 100 / std::max<qint64>(total, 1)); percent != lastPercent) {
                lastPercent = percent;
                report(progress, done, total);
            }
        };
        SquadLookup squads(db);
        result.teams = writeTable(db, out, QStringLiteral("vereine"), QStringLiteral("Verein"), squads, result.findings, rowDone);
        result.nationalTeams = writeTable(db, out, QStringLiteral("vereine_national"), QStringLiteral("Nationalteam"), squads,
                                          result.findings, rowDone);
        result.result = out.save();
        result.findings << out.replacements();
        if (result.ok())
            result.result.message = QStringLiteral("%1 Vereine und %2 Nationalteams nach %3 geschrieben.")
                                        .arg(result.teams)
                                        .arg(result.nationalTeams)
                                        .arg(path);
        return result;
    });
}

} // namespace zorbo
