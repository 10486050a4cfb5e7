#include "exchange/teamfileopen.h"

#include "core/gamedb.h"
#include "exchange/cfgfile.h"
#include "core/columnrules.h"
#include "core/teamrules.h"
#include "exchange/teamfile.h"
#include "platform/numbers.h"
#include "platform/profilefile.h"

#include <QDir>
#include <cmath>
#include <limits>

namespace zorbo {

namespace {

constexpr int squadSize = 20;
// A team file of the editor holds one club and its squad, a few kilobytes;
// even a national team of a hundred players stays far below this.
constexpr qint64 maxTeamFileBytes = qint64(1) << 20;

// The integer at the start of a value, as the profile functions read the
// strengths: optional sign, digits, the rest dropped, no digits giving 0.
// Empty when the digits run beyond 64 bits, which no column's range takes.
std::optional<qint64> leadingInteger(const QString &text)
{
    qsizetype i = 0;
    while (i < text.size() && (text[i] == QLatin1Char(' ') || text[i] == QLatin1Char('\t')))
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == QLatin1Char('-') || text[i] == QLatin1Char('+')))
        negative = text[i++] == QLatin1Char('-');
    qint64 number = 0;
    for (; i < text.size() && text[i] >= QLatin1Char('0') && text[i] <= QLatin1Char('9'); ++i) {
        if (number > (std::numeric_limits<qint64>::max() - 9) / 10)
            return std::nullopt;
        number = number * 10 + (text[i].unicode() - '0');
    }
    return negative ? -number : number;
}

// The values of one team file, turned into the types of the columns, with
// the defaults of the file format for keys that are missing. The file is
// read and parsed once; every value is looked up in that one parse.
class TeamFileValues {
public:
    TeamFileValues(Database &db, const QString &path) : m_path(path)
    {
        m_teamColumns = db.columns(QStringLiteral("vereine"));
        m_playerColumns = db.columns(QStringLiteral("spieler"));
    }

    Result check(FileEncoding encoding)
    {
        CfgFile probe; // size bound, text check, UTF-8
        const Result loaded = probe.load(m_path, encoding, maxTeamFileBytes);
        m_looksUtf8 = probe.looksUtf8();
        if (!loaded)
            return loaded;
        m_profile.parse(probe.bytes());
        if (m_profile.findSection(QStringLiteral("Team")) < 0)
            return Result::failure(QStringLiteral("Die Datei %1 ist keine Teamdatei: ihr fehlt der Abschnitt [Team].")
                                       .arg(QDir::toNativeSeparators(m_path)));
        return Result::success();
    }

    bool looksUtf8() const { return m_looksUtf8; }
    // Values kept though the windows don't show them.
    int kept() const { return m_kept; }
    const QList<ColumnInfo> &teamColumns() const { return m_teamColumns; }
    const QList<ColumnInfo> &playerColumns() const { return m_playerColumns; }

    QVariant team(int column) { return value(QStringLiteral("Team"), m_teamColumns[column], false); }

    // The rules of every team save: a club needs a name and a country. The
    // country comes from the file, or is the one given (a new club).
    void checkrow(const std::optional<QString> &country = {}) const
    {
        const QString team = QStringLiteral("Team");
        const auto text = [&](const char *column) {
            for (const ColumnInfo &c : m_teamColumns) {
                if (c.name.compare(QLatin1String(column), Qt::CaseInsensitive) == 0)
                    return std::pair{c.name, trimspaces(m_profile.value(team, c.name).value_or(QString()))};
            }
            return std::pair{QString::fromLatin1(column), QString()};
        };
        const auto [nameKey, name] = text("NAME");
        const auto [nationKey, nation] = text("NATION");
        const Result row = checkteamrow(TeamTable::Vereine, name, country.value_or(nation));
        if (row)
            return;
        const QString key = blankname(name) ? nameKey : nationKey;
        throw Fault(QStringLiteral("%1: [%2] %3: %4").arg(where(team, key), team, key, row.message),
                    place(team, key, row.message));
    }
    QVariant player(int n, int column) { return value(QStringLiteral("Spieler%1").arg(n), m_playerColumns[column], true); }

private:
    QVariant value(const QString &section, const ColumnInfo &column, bool player)
    {
        const QString key = teamfilekey(column.name);
        const std::optional<QString> raw = m_profile.value(section, key);
        if (key != column.name) { // the strengths: integers, anything behind the digits dropped
            const std::optional<qint64> n = raw ? leadingInteger(*raw) : std::optional<qint64>(0);
            if (const QString problem = rangeproblem(column.name, n ? double(*n) : HUGE_VAL); !problem.isEmpty())
                fail(section, key, trimspaces(*raw), problem);
            count(column.name, double(*n));
            return *n;
        }
        const QString upper = column.name.toUpper();
        QString def;
        if (!column.isText())
            def = player && upper == QLatin1String("RUECKENNUMMER") ? QStringLiteral("1") : QStringLiteral("0");
        else if (upper.startsWith(QLatin1String("F_")))
            def = QStringLiteral("0,0,0");
        if (column.isText()) {
            // The profile functions trim a value and take off one pair of
            // quotes around it, which is how blanks at either end are written.
            const QString text = raw ? *raw : def;
            if (const QString problem = lengthproblem(column.name, text.size()); !problem.isEmpty())
                throw Fault(QStringLiteral("%1: [%2] %3: %4.").arg(where(section, key), section, key, problem),
                            place(section, key, problem + QLatin1Char('.')));
            if (outsidewindow(column.name, text.size()))
                ++m_kept;
            return text;
        }
        const QString text = trimspaces(raw ? *raw : def);
        if (text.isEmpty())
            return QVariant(); // an empty value is how a Null went out
        // Both decimal signs: files of German systems write a comma.
        const QByteArray bytes = text.toLatin1();
        QVariant number;
        if (column.isInteger()) {
            if (const std::optional<qint64> n = parseRounded(bytes, true))
                number = *n;
        } else if (const std::optional<double> d = parseDecimal(bytes, true)) {
            number = *d;
        }
        if (!number.isValid())
            throw Fault(QStringLiteral("%1: [%2] %3 = »%4« ist keine Zahl.").arg(where(section, key), section, key, text),
                        place(section, key, QStringLiteral("»%1« ist keine Zahl.").arg(text)));
        if (const QString problem = rangeproblem(column.name, number.toDouble()); !problem.isEmpty())
            fail(section, key, text, problem);
        count(column.name, number.toDouble());
        return number;
    }

    void count(const QString &column, double value)
    {
        if (outsidewindow(column, value))
            ++m_kept;
    }

    QString where(const QString &section, const QString &key) const
    {
        return QStringLiteral("%1, Zeile %2").arg(QDir::toNativeSeparators(m_path)).arg(m_profile.findEntry(section, key) + 1);
    }

    // The finding of a fault at a key: file, line, field "[section] key".
    Finding place(const QString &section, const QString &key, const QString &text) const
    {
        return Finding{.text = text,
                       .file = m_path,
                       .line = m_profile.findEntry(section, key) + 1,
                       .field = QStringLiteral("[%1] %2").arg(section, key)};
    }

    [[noreturn]] void fail(const QString &section, const QString &key, const QString &text, const QString &problem) const
    {
        throw Fault(QStringLiteral("%1: [%2] %3 = »%4«; %5.").arg(where(section, key), section, key, text, problem),
                    place(section, key, QStringLiteral("»%1«; %2.").arg(text, problem)));
    }

    QString m_path;
    ProfileFile m_profile;
    bool m_looksUtf8 = false;
    int m_kept = 0;
    QList<ColumnInfo> m_teamColumns, m_playerColumns;
};

template <typename Body>
ExchangeResult guarded(Database &db, const QString &path, FileEncoding encoding, const Body &body)
{
    return runtransaction(db, QStringLiteral("Die Teamdatei %1 ließ sich nicht übernehmen").arg(path), [&] {
        TeamFileValues file(db, path);
        if (const Result checked = file.check(encoding); !checked) {
            ExchangeResult refused = ExchangeResult::failure(checked.message);
            refused.looksUtf8 = file.looksUtf8();
            return refused;
        }
        ExchangeResult done = body(file);
        if (done.ok())
            done.result.message = withkept(done.result.message, file.kept());
        return done;
    });
}

QString marks(int count)
{
    QStringList m;
    for (int i = 1; i <= count; ++i)
        m << QStringLiteral("?%1").arg(i);
    return m.join(QStringLiteral(", "));
}

// "A = ?2, B = ?3, …" for every column but the first, the number.
QString assignments(const QList<ColumnInfo> &columns)
{
    QStringList a;
    for (int c = 1; c < columns.size(); ++c)
        a << QStringLiteral("\"%1\" = ?%2").arg(columns[c].name).arg(c + 1);
    return a.join(QStringLiteral(", "));
}

} // namespace

ExchangeResult openteamnew(Database &db, const QString &path, const QString &country, const Progress &progress,
                           FileEncoding encoding)
{
    return guarded(db, path, encoding, [&](TeamFileValues &file) {
        if (db.scalar(QStringLiteral("SELECT NUMMER FROM vereine_national WHERE samename(NAME, ?1)"), country).isNull())
            return ExchangeResult::failure(QStringLiteral("Das Land »%1« gibt es nicht.").arg(country));
        file.checkrow(country);
        ExchangeResult result;
        result.team = newteamnumber(db);
        const QList<ColumnInfo> &tc = file.teamColumns();
        Statement club = db.prepare(QStringLiteral("INSERT INTO vereine VALUES (%1)").arg(marks(int(tc.size()))));
        for (int c = 0; c < tc.size(); ++c) {
            const QString upper = tc[c].name.toUpper();
            club.bind(c + 1, c == 0 ? QVariant(result.team) : upper == QLatin1String("NATION") ? QVariant(country) : file.team(c));
        }
        club.exec();
        result.teams = 1;
        const QList<qint64> numbers = newplayernumbers(db, squadSize);
        const QList<ColumnInfo> &pc = file.playerColumns();
        Statement player = db.prepare(QStringLiteral("INSERT INTO spieler VALUES (%1)").arg(marks(int(pc.size()))));
        Statement member = db.prepare(QStringLiteral("INSERT INTO kaderzeilen (verein, spieler) VALUES (?1, ?2)"));
        for (int n = 0; n < squadSize; ++n) {
            player.bind(1, numbers[n]);
            for (int c = 1; c < pc.size(); ++c)
                player.bind(c + 1, file.player(n + 1, c));
            player.exec();
            member.bindAll(result.team, numbers[n]);
            member.exec();
            ++result.players;
            report(progress, n + 1, squadSize);
        }
        result.result = Result::success(QStringLiteral("Verein %1 mit %2 Spielern in %3 angelegt.").arg(result.team).arg(squadSize).arg(country));
        return result;
    });
}

ExchangeResult openteamreplace(Database &db, const QString &path, qint64 clubNumber, const Progress &progress,
                               FileEncoding encoding)
{
    return guarded(db, path, encoding, [&](TeamFileValues &file) {
        if (db.scalar(QStringLiteral("SELECT NUMMER FROM vereine WHERE NUMMER = ?1"), clubNumber).isNull())
            return ExchangeResult::failure(QStringLiteral("Einen Verein %1 gibt es nicht; nur Vereine, keine Nationalteams, "
                                                          "lassen sich ersetzen.")
                                               .arg(clubNumber));
        file.checkrow();
        ExchangeResult result;
        result.team = clubNumber;
        const QList<ColumnInfo> &tc = file.teamColumns();
        Statement club = db.prepare(QStringLiteral("UPDATE vereine SET %1 WHERE NUMMER = ?1").arg(assignments(tc)));
        club.bind(1, clubNumber);
        for (int c = 1; c < tc.size(); ++c)
            club.bind(c + 1, file.team(c));
        club.exec();
        result.teams = 1;
        const QList<ColumnInfo> &pc = file.playerColumns();
        Statement player = db.prepare(QStringLiteral("UPDATE spieler SET %1 WHERE NUMMER = ?1").arg(assignments(pc)));
        Statement squad = db.prepare(QStringLiteral("SELECT spieler FROM kaderzeilen WHERE verein = ?1 ORDER BY rowid"));
        squad.bind(1, clubNumber);
        std::vector<qint64> numbers;
        while (squad.step())
            numbers.push_back(squad.integer(0));
        for (size_t n = 0; n < numbers.size(); ++n) {
            player.bind(1, numbers[n]);
            for (int c = 1; c < pc.size(); ++c)
                player.bind(c + 1, file.player(int(n) + 1, c));
            player.exec();
            ++result.players;
            report(progress, qint64(n + 1), qint64(numbers.size()));
        }
        result.result = Result::success(QStringLiteral("Verein %1 mit %2 Spielern ersetzt.").arg(clubNumber).arg(numbers.size()));
        return result;
    });
}

} // namespace zorbo
