#include "exchange/cfgwriter.h"

#include "exchange/cfgfile.h"
#include "generated/version.h"
#include "platform/codepage.h"
#include "platform/numbers.h"

#include <QDir>
#include <QSaveFile>

namespace zorbo {

void CfgWriter::text(const QString &text, const QString &what)
{
    int bad = -1;
    const std::optional<QByteArray> encoded = toCp1252(text, &bad);
    if (!encoded)
        throw ExchangeError(QStringLiteral("%1: das Zeichen »%2« gibt es in der Zeichentabelle der Spieldateien "
                                           "(Windows-1252) nicht.")
                                .arg(what, text.mid(bad, text.at(bad).isHighSurrogate() ? 2 : 1)));
    if (encoded->contains('\n') || encoded->contains('\r'))
        throw ExchangeError(QStringLiteral("%1: ein Zeilenumbruch im Text lässt sich in der Datei nicht schreiben.").arg(what));
    m_bytes.append(*encoded);
}

void CfgWriter::line(const QString &text, const QString &what)
{
    this->text(text, what);
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
    QSaveFile file(m_path);
    const QString shownPath = QDir::toNativeSeparators(m_path);
    if (!file.open(QIODevice::WriteOnly))
        return Result::failure(QStringLiteral("Die Datei %1 lässt sich nicht schreiben: %2").arg(shownPath, file.errorString()));
    if (file.write(m_bytes) != m_bytes.size() || !file.commit())
        return Result::failure(QStringLiteral("Die Datei %1 lässt sich nicht schreiben: %2").arg(shownPath, file.errorString()));
    return Result::success();
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
