#include "exchange/cfgcheck.h"

#include "core/columnrules.h"
#include "core/schema.h"
#include "exchange/cfgfile.h"
#include "exchange/configruns.h"
#include "exchange/playerconfig.h"
#include "exchange/teamconfigwriter.h"
#include "platform/codepage.h"
#include "platform/nearestletter.h"

#include <QFile>
#include <cmath>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

namespace zorbo {

namespace {

struct Line {
    QByteArray text; // without its line end
    bool crlf = false;
};

QList<Line> splitlines(const QByteArray &bytes)
{
    QList<Line> lines;
    qsizetype start = 0;
    while (start < bytes.size()) {
        qsizetype end = bytes.indexOf('\n', start);
        const bool last = end < 0;
        if (last)
            end = bytes.size();
        Line l{bytes.mid(start, end - start), false};
        if (l.text.endsWith('\r')) {
            l.text.chop(1);
            l.crlf = true;
        }
        lines << l;
        start = end + 1;
    }
    return lines;
}

// Line ranges (0-based, inclusive) of the team records of one to four lines,
// which the reader takes in its short form.
QList<std::pair<int, int>> shortrecords(const QList<Line> &lines)
{
    QList<std::pair<int, int>> ranges;
    for (int i = 0; i < lines.size(); ++i) {
        if (!lines[i].text.contains("NEUES_TEAM"))
            continue;
        int n = 0;
        while (i + 1 + n < lines.size() && !trimBlanks(lines[i + 1 + n].text).isEmpty()
               && !lines[i + 1 + n].text.contains("NEUES_TEAM"))
            ++n;
        if (n >= 1 && n <= 4)
            ranges.append({i, i + n + 1});
        i += n;
    }
    return ranges;
}

bool nonascii(QByteArrayView text)
{
    for (char c : text) {
        const auto b = static_cast<unsigned char>(c);
        if (b >= 0x80)
            return true;
    }
    return false;
}

std::pair<QByteArray, QByteArray> keyvalue(QByteArrayView line)
{
    const QByteArrayView t = trimValue(line);
    qsizetype i = 0;
    while (i < t.size() && t[i] != ' ' && t[i] != '\t')
        ++i;
    return {t.first(i).toByteArray(), trimValue(t.sliced(i)).toByteArray()};
}

class Comparison {
public:
    Comparison(const QString &file, const QByteArray &game, const QByteArray &ours, bool utf8)
        : m_file(file), m_game(splitlines(game)), m_ours(splitlines(ours)), m_short(shortrecords(m_game)), m_utf8(utf8)
    {
    }

    QList<FileDifference> run()
    {
        int i = 0, j = 0;
        while (i < m_game.size() || j < m_ours.size()) {
            if (i < m_game.size() && j < m_ours.size() && same(i, j)) {
                if (m_game[i].crlf != m_ours[j].crlf)
                    add(i, j, m_game[i].crlf ? QStringLiteral("die Datei endet hier mit CR LF, der Editor ohne Zeilenende")
                                             : QStringLiteral("Zeilenende: die Datei hat hier LF oder keines, der "
                                                              "Editor schreibt CR LF"));
                ++i, ++j;
                continue;
            }
            const auto [a, b] = resync(i, j);
            const int paired = std::min(a, b);
            for (int k = 0; k < paired; ++k)
                add(i + k, j + k, reason(i + k, j + k));
            for (int k = paired; k < a; ++k)
                add(i + k, -1, reason(i + k, -1));
            for (int k = paired; k < b; ++k)
                add(-1, j + k, reason(std::min<int>(i + a, int(m_game.size()) - 1), j + k));
            i += a;
            j += b;
        }
        return m_out;
    }

private:
    bool same(int i, int j) const { return m_game[i].text == m_ours[j].text; }

    // How many lines of each side to step over until both run alike again
    // (two lines equal, or both ends reached); the nearest such point.
    std::pair<int, int> resync(int i, int j) const
    {
        const int gameLeft = int(m_game.size()) - i, oursLeft = int(m_ours.size()) - j;
        constexpr int window = 80;
        for (int d = 1; d <= window; ++d) {
            for (int a = 0; a <= d; ++a) {
                const int b = d - a;
                if (a > gameLeft || b > oursLeft)
                    continue;
                if (a == gameLeft && b == oursLeft)
                    return {a, b};
                if (a < gameLeft && b < oursLeft && same(i + a, j + b)
                    && (i + a + 1 >= m_game.size() || j + b + 1 >= m_ours.size() || same(i + a + 1, j + b + 1)))
                    return {a, b};
            }
        }
        // Nothing alike nearby: the rest differs line by line.
        return {std::min(gameLeft, 1), std::min(oursLeft, 1)};
    }

    bool inShortRecord(int i) const
    {
        for (const auto &[from, to] : m_short) {
            if (i >= from && i <= to)
                return true;
        }
        return false;
    }

    QString reason(int i, int j) const
    {
        const QByteArray game = i >= 0 && i < m_game.size() ? m_game[i].text : QByteArray();
        const QByteArray ours = j >= 0 ? m_ours[j].text : QByteArray();
        if (i == 0 && j == 0 && game.startsWith(";") && ours.startsWith(";Datenexport vom"))
            return QStringLiteral("Kopfzeile: Datum des Exports");
        if (i == 1 && j == 1 && game.startsWith(";") && ours.startsWith(";"))
            return QStringLiteral("Kopfzeile: das Programm, das die Datei schrieb");
        if (m_utf8 && nonascii(game)) {
            const QString text = QString::fromUtf8(game);
            int bad = -1;
            if (!toCp1252(text, &bad))
                return QStringLiteral("das Zeichen »%1« liegt außerhalb der Zeichentabelle 1252 (Windows-1252); "
                                      "der Editor schreibt „%2“")
                    .arg(text.mid(bad, text.at(bad).isHighSurrogate() ? 2 : 1), nearestcp1252(text.mid(bad, 1)));
            return QStringLiteral("die Datei ist in UTF-8 geschrieben, der Editor schreibt Windows-1252");
        }
        if (i >= 0 && inShortRecord(i))
            return QStringLiteral("ein Datensatz von 1 bis 4 Zeilen, den der Leser in seiner Kurzform nahm");
        if ((i < 0 || game.trimmed().isEmpty()) && (j < 0 || ours.trimmed().isEmpty()))
            return QStringLiteral("eine Leerzeile mehr oder weniger");
        if (j < 0)
            return QStringLiteral("die Zeile fehlt in dem, was der Editor schreibt (er schreibt die Datensätze nach "
                                  "Nummern, die Vereine vor den Nationalteams)");
        if (i < 0 || game.trimmed().isEmpty() || ours.trimmed().isEmpty()) {
            if (ours.trimmed().isEmpty() || game.trimmed().isEmpty())
                return QStringLiteral("eine Leerzeile mehr oder weniger");
            return QStringLiteral("die Zeile steht nur in dem, was der Editor schreibt (er schreibt die Datensätze "
                                  "nach Nummern, die Vereine vor den Nationalteams)");
        }
        const auto [gameKey, gameValue] = keyvalue(game);
        const auto [oursKey, oursValue] = keyvalue(ours);
        if (trimValue(game) == trimValue(ours) || (gameKey == oursKey && gameValue == oursValue))
            return QStringLiteral("Leerzeichen oder Tabulatoren um den Wert; der Editor schreibt seine eigene Einrückung");
        if (gameKey == oursKey && !gameKey.isEmpty()) {
            const QString field = QString::fromLatin1(gameKey);
            if (gameKey == "BASE_NATION")
                return QStringLiteral("der Editor schreibt immer BASE_NATION \"Deutschland\"");
            if (gameKey == "LETZTES_TEAM" || gameKey == "LETZTER_SPIELER")
                return QStringLiteral("der Editor schreibt hier die höchste Nummer der Datensätze");
            const std::optional<double> g = parseDecimal(gameValue, true), o = parseDecimal(oursValue);
            if (g && o) {
                if (outsidewindow(field, *g))
                    return QStringLiteral("ein Wert außerhalb dessen, was die Fenster zeigen (%1)").arg(windowwords(field));
                if (*g == *o)
                    return QStringLiteral("dieselbe Zahl in anderer Schreibweise");
                if (std::floor(*g) != *g && std::floor(*o) == *o)
                    return QStringLiteral("eine Zahl mit Nachkommastellen in einer Spalte ganzer Zahlen, gerundet");
            }
            if (const std::optional<QString> text = parseQuoted(gameValue);
                text && outsidewindow(field, qsizetype(text->size())))
                return QStringLiteral("ein Wert außerhalb dessen, was die Fenster zeigen (%1)").arg(windowwords(field));
            if (gameKey == "SPIELER")
                return QStringLiteral("die Spielerliste des Kaders in anderer Schreibweise");
        }
        return {};
    }

    void add(int i, int j, const QString &why)
    {
        FileDifference d;
        d.file = m_file;
        d.line = i >= 0 ? i + 1 : std::min<int>(int(m_game.size()), j) + 1;
        d.game = i >= 0 ? (m_utf8 ? QString::fromUtf8(m_game[i].text) : fromCp1252(m_game[i].text))
                        : QStringLiteral("(keine Zeile)");
        d.ours = j >= 0 ? fromCp1252(m_ours[j].text) : QStringLiteral("(keine Zeile)");
        d.reason = why;
        m_out << d;
    }

    QString m_file;
    QList<Line> m_game, m_ours;
    QList<std::pair<int, int>> m_short;
    bool m_utf8 = false;
    QList<FileDifference> m_out;
};

QDateTime exportdate(const QByteArray &bytes)
{
    static const QRegularExpression dateLine(QStringLiteral("^;Datenexport vom (\\d\\d\\.\\d\\d\\.\\d{4} \\d\\d:\\d\\d:\\d\\d)"));
    const QRegularExpressionMatch m = dateLine.match(QString::fromLatin1(bytes.left(64)));
    const QDateTime t = m.hasMatch() ? QDateTime::fromString(m.captured(1), QStringLiteral("dd.MM.yyyy hh:mm:ss")) : QDateTime();
    return t.isValid() ? t : QDateTime::currentDateTime();
}

// Reads the game's file into a fresh world in scratch and writes it back
// there; ours receives the bytes written. A file in UTF-8 is read as UTF-8,
// its characters beyond code page 1252 in their nearest letters.
Result roundtrip(ConfigKind kind, const QString &path, const QString &scratch, const QByteArray &game,
                 const Progress &progress, QByteArray &ours, bool &utf8)
{
    const Progress reading = [&](qint64 done, qint64 total) {
        return !progress || progress(total > 0 ? done * 500 / total : 0, 1000);
    };
    const Progress writing = [&](qint64 done, qint64 total) {
        return !progress || progress(500 + (total > 0 ? done * 500 / total : 0), 1000);
    };
    OpenedDb opened = opendb(scratch + QStringLiteral("/pruefung.mdb"));
    if (!opened.db)
        return Result::failure(opened.message);
    Database &db = *opened.db;
    // The scratch world goes when the check ends: nothing need reach the disk.
    db.exec(QStringLiteral("PRAGMA synchronous = OFF; PRAGMA journal_mode = MEMORY"));
    utf8 = looksutf8(game);
    QString input = path;
    if (utf8) {
        QString text = QString::fromUtf8(game);
        if (!fitsCp1252(text)) {
            text = nearestcp1252(text);
            input = scratch + QStringLiteral("/eingabe.cfg");
            QFile f(input);
            if (!f.open(QIODevice::WriteOnly) || f.write(text.toUtf8()) < 0)
                return Result::failure(QStringLiteral("Die Kopie für die Prüfung ließ sich nicht schreiben."));
        }
    }
    const FileEncoding encoding = utf8 ? FileEncoding::Utf8 : FileEncoding::Cp1252;
    // The players come in as the reader takes them; the run of the menu would
    // also make a transfer market for the scratch world, which has no teams.
    const ExchangeResult in = kind == ConfigKind::Teams ? importconfig(db, input, kind, reading, encoding)
                                                        : importspieler(db, input, reading, encoding);
    if (!in.ok())
        return in.result;
    const QString out = scratch + (kind == ConfigKind::Teams ? QStringLiteral("/1_tm.cfg") : QStringLiteral("/1_sp.cfg"));
    const QDateTime when = exportdate(game);
    const ExchangeResult written = kind == ConfigKind::Teams ? exportvereine(db, out, writing, when, true)
                                                             : exportspieler(db, out, writing, when, true);
    if (!written.ok())
        return written.result;
    QFile f(out);
    if (!f.open(QIODevice::ReadOnly))
        return Result::failure(QStringLiteral("Die geschriebene Datei ließ sich nicht wieder lesen."));
    ours = f.readAll();
    return Result::success();
}

GameFileCheck configcheck(ConfigKind kind)
{
    GameFileCheck c;
    c.name = kind == ConfigKind::Teams ? QStringLiteral("1_tm.cfg") : QStringLiteral("1_sp.cfg");
    c.folder = ZorboconfigFolder;
    c.run = [kind](const Settings &, const QString &path, const QString &scratch, const Progress &progress,
                   QList<FileDifference> &differences) {
        QFile f(path);
        if (QFileInfo(path).size() > maxCfgBytes || !f.open(QIODevice::ReadOnly))
            return Result::failure(QStringLiteral("Die Datei ließ sich nicht lesen."));
        const QByteArray game = f.readAll();
        QByteArray ours;
        bool utf8 = false;
        const Result r = roundtrip(kind, path, scratch, game, progress, ours, utf8);
        if (!r.ok)
            return r;
        if (game != ours)
            differences = comparecfg(QFileInfo(path).fileName(), game, ours, utf8);
        return Result::success();
    };
    return c;
}

} // namespace

QList<FileDifference> comparecfg(const QString &file, const QByteArray &game, const QByteArray &ours, bool gameInUtf8)
{
    return Comparison(file, game, ours, gameInUtf8).run();
}

QList<GameFileCheck> configchecks()
{
    return {configcheck(ConfigKind::Teams), configcheck(ConfigKind::Players)};
}

} // namespace zorbo
