#pragma once

#include "platform/database.h"
#include "exchange/exchangeresult.h"
#include "platform/result.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <functional>
#include <optional>
#include <stdexcept>
#include <vector>

namespace zorbo {

// A fault in a file being read or written: the German text names file, line
// (or record) and field.
// It never leaves the exchange code; the readers turn it into a Result.
class ExchangeError : public std::runtime_error {
public:
    explicit ExchangeError(const QString &message) : std::runtime_error("read error"), m_message(message) {}
    const QString &message() const { return m_message; }

private:
    QString m_message;
};

// One of the game's text files, held whole in memory and cut into lines.
// CR LF, LF and CR all end a line, so files edited on Linux read too.
class CfgFile {
public:
    // Reads the file; fails with a German message when it is missing,
    // unreadable, larger than maxBytes or not text (a zero byte).
    Result load(const QString &path, qint64 maxBytes = qint64(1) << 30);

    const QString &path() const { return m_path; }
    qsizetype lineCount() const { return qsizetype(m_starts.size()); }
    // Line i (0-based) without its line end, in code page 1252.
    QByteArrayView line(qsizetype i) const;
    // Bytes up to the end of line i, for progress.
    qint64 offsetAfter(qsizetype i) const;
    qint64 size() const { return m_bytes.size(); }
    bool contains(QByteArrayView text) const { return m_bytes.contains(text); }

    // "<file>, Zeile <n>: <what>" for line i (0-based).
    QString where(qsizetype i) const;
    [[noreturn]] void fail(qsizetype i, const QString &what) const;

private:
    QString m_path;
    QByteArray m_bytes;
    std::vector<qsizetype> m_starts;
    std::vector<qsizetype> m_ends;
};

// Blanks (not tabs) cut from both ends, as the game's readers do.
QByteArrayView trimBlanks(QByteArrayView text);

// Whole number with optional sign, nothing else; empty on failure or overflow.
std::optional<qint64> parseWhole(QByteArrayView text);
// Number in the plain decimal form (".5", "-3.25", "12"); a comma counts as
// the decimal sign when allowComma is set.
std::optional<double> parseDecimal(QByteArrayView text, bool allowComma = false);
bool fitsInt32(qint64 value);

// Text between the first and the last double quote; empty when the value
// does not start and end with one.
std::optional<QString> parseQuoted(QByteArrayView text);
QString textOf(QByteArrayView bytes);
// Binds text of the file as the database's UTF-8, without a detour through
// QString; the hot path of the player import.
void bindText(Statement &st, int index, QByteArrayView cp1252);

// Value shown in a message: quoted, shortened to a readable length.
QString shown(QByteArrayView bytes);

// Loads a game file and reads it inside one transaction: all or nothing.
// read fills the result and returns the message of success.
ExchangeResult importcfgfile(Database &db, const QString &path, const Progress &progress,
                             const std::function<QString(const CfgFile &, ExchangeResult &)> &read);

} // namespace zorbo
