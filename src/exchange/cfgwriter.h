#pragma once

#include "platform/database.h"
#include "platform/operation.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <cstring>

namespace zorbo {

// A game file being written: code page 1252, every line ending in CR LF.
// Nothing reaches the disk until save(), which replaces the file at once, so
// a failed export never leaves half a file behind.
class CfgWriter {
public:
    explicit CfgWriter(const QString &path) : m_path(path) {}

    // Appends a line; throws a Fault "<what>: <problem>" when the text holds
    // a character that code page 1252 cannot hold or a line break; place is
    // the fault's finding, its text the problem.
    void line(const QString &text, const QString &what = {}, const Finding &place = {});
    // A head of several lines, then one line end of its own.
    void head(const QString &text);
    void bytes(QByteArrayView raw)
    {
        if (raw.isEmpty())
            return;
        std::memcpy(room(raw.size()), raw.data(), size_t(raw.size()));
        m_used += raw.size();
    }
    void endLine() { bytes(QByteArrayView("\r\n", 2)); }
    // A number column as numbertext() gives it; false (and nothing
    // written) when it is Null.
    bool number(const Statement &row, int column);
    // Room for about so many bytes in all, so that a large file is not
    // copied while it grows.
    void reserve(qsizetype total);
    // Appends text without a line end, checked as in line().
    void text(const QString &text, const QString &what, const Finding &place = {});
    // The text of a column, checked as in line(); false with the reason in
    // *problem, so that callers build their message only when it is needed.
    bool columnText(const Statement &row, int column, QString *problem, const Finding &place = {});

    // Writes text outside code page 1252 with the nearest letters of the
    // code page instead of refusing it; each text so written is told in
    // replacements(), at its place.
    void setnearest(bool on) { m_nearest = on; }
    const QList<Finding> &replacements() const { return m_replaced; }

    Result save();
    QByteArrayView data() const { return {m_bytes.constData(), m_used}; }

private:
    bool encode(const QString &text, QString *problem, const Finding &place);
    // Where the next n bytes go.
    char *room(qsizetype n)
    {
        if (m_bytes.size() - m_used < n)
            grow(n);
        return m_bytes.data() + m_used;
    }
    void grow(qsizetype n);

    QString m_path;
    QByteArray m_bytes; // written up to m_used
    qsizetype m_used = 0;
    bool m_nearest = false;
    QList<Finding> m_replaced;
};

// ";Datenexport vom " and the date and time in the German general form.
QString exportdateline(const QDateTime &now);
// ";Zorbo Editor v" major.minor and the legal notice.
QString versionline();
// The head both game files share, from the date line to the blank line after
// "DATA_VERSION", each line ending in CR LF.
QString cfghead(const QDateTime &now);

// A number column in the plain decimal form of the game's files: whole
// numbers as digits, others with a period and no zero before it below 1.
QByteArray numbertext(const Statement &row, int column);

} // namespace zorbo
