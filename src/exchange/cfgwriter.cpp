#include "exchange/cfgwriter.h"

#include "exchange/cfgfile.h"
#include "generated/version.h"
#include "platform/codepage.h"
#include "platform/fileerror.h"
#include "platform/nearestletter.h"
#include "platform/numbers.h"
#include "platform/safefile.h"

#include <sqlite3.h>

namespace zorbo {

bool CfgWriter::encode(const QString &text, QString *problem, const Finding &place)
{
    QByteArray &out = m_bytes;
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
    out.append(*encoded);
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
    bool plain = true; // printable ASCII is the same in UTF-8 and code page 1252
    for (int i = 0; i < size && plain; ++i)
        plain = static_cast<unsigned char>(data[i]) >= 0x20 && static_cast<unsigned char>(data[i]) < 0x80;
    if (plain) {
        m_bytes.append(data, size);
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
    m_bytes.append(toCp1252(text).value_or(text.toLatin1()));
    endLine();
}

Result CfgWriter::save()
{
    return replacefile(m_path, m_bytes);
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
