#include "exchange/cfgwriter.h"

#include "exchange/cfgfile.h"
#include "generated/version.h"
#include "platform/codepage.h"
#include "platform/fileerror.h"
#include "platform/nearestletter.h"
#include "platform/numbers.h"
#include "platform/safefile.h"

#include <charconv>
#include <sqlite3.h>

namespace zorbo {

void CfgWriter::grow(qsizetype n)
{
    reserve(std::max(m_used + n, 2 * m_bytes.size()));
}

void CfgWriter::reserve(qsizetype total)
{
    if (total > m_bytes.size())
        m_bytes.resize(std::max<qsizetype>(total, 4096));
}

bool CfgWriter::encode(const QString &text, QString *problem, const Finding &place)
{
    int bad = -1;
    std::optional<QByteArray> encoded = toCp1252(text, &bad);
    if (!encoded && m_nearest) {
        const QString nearest = nearestcp1252(text);
        encoded = toCp1252(nearest);
        Finding replaced = place;
        replaced.text = QStringLiteral("„%1“ als „%2“ geschrieben").arg(text, nearest);
        m_replaced << replaced;
    }
    if (!encoded) {
        *problem = QStringLiteral("das Zeichen »%1« gibt es in der Zeichentabelle der Spieldateien (Windows-1252) nicht.")
                       .arg(text.mid(bad, text.at(bad).isHighSurrogate() ? 2 : 1));
        return false;
    }
    if (encoded->contains('\n') || encoded->contains('\r')) {
        *problem = QStringLiteral("ein Zeilenumbruch im Text lässt sich in der Datei nicht schreiben.");
        return false;
    }
    bytes(*encoded);
    return true;
}

void CfgWriter::text(const QString &text, const QString &what, const Finding &place)
{
    QString problem;
    if (!encode(text, &problem, place)) {
        Finding where = place;
        where.text = problem;
        throw Fault(what + QStringLiteral(": ") + problem, where);
    }
}

bool CfgWriter::columnText(const Statement &row, int column, QString *problem, const Finding &place)
{
    const auto *data = reinterpret_cast<const char *>(sqlite3_column_text(row.handle(), column));
    const int size = sqlite3_column_bytes(row.handle(), column);
    // Straight from the stored bytes; a text with anything unusual goes the
    // long way, which tells what is wrong or finds the nearest letters.
    if (const qsizetype written = plainUtf8ToCp1252(QByteArrayView(data, size), room(size)); written >= 0) {
        m_used += written;
        return true;
    }
    return encode(QString::fromUtf8(data, size), problem, place);
}

void CfgWriter::line(const QString &text, const QString &what, const Finding &place)
{
    this->text(text, what, place);
    endLine();
}

void CfgWriter::head(const QString &text)
{
    // The heads are built by the program from ASCII and the version text.
    bytes(toCp1252(text).value_or(text.toLatin1()));
    endLine();
}

Result CfgWriter::save()
{
    return replacefile(m_path, data());
}

QString exportdateline(const QDateTime &now)
{
    // The general date of a German system, whatever locale the program runs in.
    return QStringLiteral(";Datenexport vom ") + now.toString(QStringLiteral("dd.MM.yyyy hh:mm:ss"));
}

QString versionline()
{
    return QStringLiteral(";Zorbo Editor v%1.%2 %3").arg(versionMajor).arg(versionMinor).arg(QString::fromUtf8(legalNotice));
}

QString cfghead(const QDateTime &now)
{
    const QString crlf = QStringLiteral("\r\n");
    return exportdateline(now) + crlf + versionline() + crlf + crlf + crlf + QStringLiteral("INFOTEXT \"test01\"") + crlf
        + crlf + QStringLiteral("        DATA_VERSION 1") + crlf + crlf;
}

bool CfgWriter::number(const Statement &row, int column)
{
    sqlite3_stmt *st = row.handle();
    switch (sqlite3_column_type(st, column)) {
    case SQLITE_INTEGER: {
        constexpr int digits = 20; // the longest is "-9223372036854775808"
        char *at = room(digits);
        m_used += std::to_chars(at, at + digits, qint64(sqlite3_column_int64(st, column))).ptr - at;
        break;
    }
    case SQLITE_FLOAT: {
        const QString text = plainDecimal(sqlite3_column_double(st, column)); // digits, sign and point
        char *at = room(text.size());
        for (const QChar c : text)
            *at++ = char(c.unicode());
        m_used += text.size();
        break;
    }
    case SQLITE_NULL:
        return false;
    default:
        bytes(numbertext(row, column));
    }
    return true;
}

QByteArray numbertext(const Statement &row, int column)
{
    const QVariant v = row.value(column);
    if (v.typeId() == QMetaType::Double)
        return plainDecimal(v.toDouble()).toLatin1();
    if (v.typeId() == QMetaType::LongLong)
        return QByteArray::number(v.toLongLong());
    // A number column holds nothing else in a strict table; text passes as is.
    return v.toString().toLatin1();
}

} // namespace zorbo
