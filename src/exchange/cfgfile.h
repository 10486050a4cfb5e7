#pragma once

#include "core/columnrules.h"
#include "core/textfile.h"
#include "exchange/exchangeresult.h"
#include "platform/codepage.h"
#include "platform/database.h"
#include "platform/operation.h"
#include "platform/runner.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <functional>
#include <optional>

namespace zorbo {

// The largest game file taken: a world of the game is a few megabytes, and
// the bound keeps a hostile file from taking the machine's memory.
constexpr qint64 maxCfgBytes = qint64(256) << 20;

// One of the game's text files, held whole in memory in code page 1252 and
// walked line by line; nothing is kept per line, so memory stays at the
// file's size whatever its lines look like. CR LF, LF and CR all end a line,
// so files edited on Linux read too.
class CfgFile {
public:
    // Reads the file; fails with a German message when it is missing,
    // unreadable, larger than maxBytes or not text (a zero byte). Detect
    // refuses a file that reads as UTF-8 and sets looksUtf8(); Utf8 turns
    // the file into code page 1252 first.
    Result load(const QString &path, FileEncoding encoding = FileEncoding::Cp1252, qint64 maxBytes = maxCfgBytes);
    bool looksUtf8() const { return m_looksUtf8; }

    const QString &path() const { return m_path; }
    const QByteArray &bytes() const { return m_bytes; }
    qint64 size() const { return m_bytes.size(); }
    bool contains(QByteArrayView text) const { return m_bytes.contains(text); }

    // "<file>, Zeile <n>" for line i (0-based).
    QString where(qsizetype i) const;
    // Stops the reading with a Fault "<file>, Zeile <n>: <what>" whose
    // finding holds file, line and what.
    [[noreturn]] void fail(qsizetype i, const QString &what) const;
    // The same for a field's value: "… Zeile <n>: im Feld <field> steht
    // <value>", the finding's field set and its text the value's words.
    [[noreturn]] void failfield(qsizetype i, const QString &field, const QString &value) const;

    // Counts a value that is kept though the windows don't show it; the
    // run's closing message tells how many.
    void kept() const { ++m_kept; }
    int keptvalues() const { return m_kept; }

    // The lines one after the other, each without its line end.
    class Lines {
    public:
        explicit Lines(const CfgFile &file) : m_bytes(file.m_bytes) {}
        bool next();
        QByteArrayView text() const { return m_text; }
        qsizetype number() const { return m_number; } // 0-based
        qint64 offset() const { return m_next; }     // bytes up to the next line
        bool last() const { return m_next >= m_bytes.size(); }

    private:
        const QByteArray &m_bytes;
        QByteArrayView m_text;
        qsizetype m_number = -1;
        qsizetype m_next = 0;
    };

private:
    QString m_path;
    QByteArray m_bytes;
    bool m_looksUtf8 = false;
    mutable int m_kept = 0;
};

// Blanks (not tabs) cut from both ends, as the game's readers do with lines.
QByteArrayView trimBlanks(QByteArrayView text);
// Blanks and tabs cut from both ends: the white space around a value, which
// the old database engine skipped in its statements.
QByteArrayView trimValue(QByteArrayView text);

// Whole number with optional sign, nothing else; empty on failure or overflow.
std::optional<qint64> parseWhole(QByteArrayView text);
// Number in the plain decimal form (".5", "-3.25", "12"); a comma counts as
// the decimal sign when allowComma is set.
std::optional<double> parseDecimal(QByteArrayView text, bool allowComma = false);
// A whole number, or a decimal rounded half to even as the old database
// engine did when it stored one in a whole-number column.
std::optional<qint64> parseRounded(QByteArrayView text, bool allowComma = false);

// Text between the first and the last double quote; empty when the value
// does not start and end with one.
std::optional<QString> parseQuoted(QByteArrayView text);
QString textOf(QByteArrayView bytes);
// Value shown in a message: quoted, shortened to a readable length.
QString shown(QByteArrayView bytes);

// The value of a field line turned into its column's form and checked
// against what the world stores; a value that can't be stored fails the file
// at the line, naming the field. A value beyond what the windows show is
// kept and counted.
// A field is named as its column; its rules are looked up once per reader,
// not once per value.
struct CfgField {
    explicit CfgField(const QString &column);
    QString name;
    const ColumnRule *store;
    const ColumnRule *window;
};
qint64 wholefield(const CfgFile &file, qsizetype line, const CfgField &field, QByteArrayView value);
double decimalfield(const CfgFile &file, qsizetype line, const CfgField &field, QByteArrayView value);
void checktextfield(const CfgFile &file, qsizetype line, const CfgField &field, QByteArrayView text);

// Loads a game file and reads it inside one transaction (runtransaction):
// all or nothing. read fills the result and returns the message of success.
ExchangeResult importcfgfile(Database &db, const QString &path, FileEncoding encoding,
                             const std::function<QString(const CfgFile &, ExchangeResult &)> &read);

} // namespace zorbo
