#include "exchange/cfgfile.h"

#include "platform/codepage.h"
#include "platform/fileerror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <charconv>
#include <sqlite3.h>
#include <cstring>

namespace zorbo {

Result CfgFile::load(const QString &path, qint64 maxBytes)
{
    m_path = path;
    m_bytes.clear();
    m_starts.clear();
    m_ends.clear();
    const QString shownPath = QDir::toNativeSeparators(path);
    const QFileInfo info(path);
    if (!info.exists())
        return Result::failure(QStringLiteral("Die Datei %1 gibt es nicht.").arg(shownPath));
    if (!info.isFile())
        return Result::failure(QStringLiteral("%1 ist keine Datei.").arg(shownPath));
    if (info.size() > maxBytes)
        return Result::failure(QStringLiteral("Die Datei %1 ist mit %2 Bytes zu groß (höchstens %3).")
                                   .arg(shownPath)
                                   .arg(info.size())
                                   .arg(maxBytes));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Result::failure(QStringLiteral("Die Datei %1 lässt sich nicht lesen: %2").arg(shownPath, fileerrortext(file)));
    // Never more than the size seen above, even if the file grows meanwhile.
    m_bytes = file.read(info.size());
    if (file.error() != QFileDevice::NoError)
        return Result::failure(QStringLiteral("Die Datei %1 lässt sich nicht lesen: %2").arg(shownPath, fileerrortext(file)));

    const char *data = m_bytes.constData();
    const qsizetype n = m_bytes.size();
    m_starts.reserve(size_t(n / 24));
    m_ends.reserve(size_t(n / 24));
    qsizetype start = 0;
    for (qsizetype i = 0; i < n; ++i) {
        const char c = data[i];
        if (c != '\n' && c != '\r')
            continue;
        m_starts.push_back(start);
        m_ends.push_back(i);
        if (c == '\r' && i + 1 < n && data[i + 1] == '\n')
            ++i;
        start = i + 1;
    }
    if (start < n) {
        m_starts.push_back(start);
        m_ends.push_back(n);
    }
    if (const void *zero = std::memchr(data, 0, size_t(n))) {
        const qsizetype at = static_cast<const char *>(zero) - data;
        qsizetype line = 0;
        while (line + 1 < lineCount() && m_starts[size_t(line + 1)] <= at)
            ++line;
        return Result::failure(QStringLiteral("Die Datei %1 ist keine Textdatei (Nullbyte in Zeile %2).")
                                   .arg(shownPath)
                                   .arg(line + 1));
    }
    return Result::success();
}

QByteArrayView CfgFile::line(qsizetype i) const
{
    const qsizetype s = m_starts[size_t(i)];
    return QByteArrayView(m_bytes.constData() + s, m_ends[size_t(i)] - s);
}

qint64 CfgFile::offsetAfter(qsizetype i) const
{
    return i + 1 < lineCount() ? m_starts[size_t(i + 1)] : m_bytes.size();
}

QString CfgFile::where(qsizetype i) const
{
    return QStringLiteral("%1, Zeile %2").arg(QDir::toNativeSeparators(m_path)).arg(i + 1);
}

void CfgFile::fail(qsizetype i, const QString &what) const
{
    throw ExchangeError(where(i) + QStringLiteral(": ") + what);
}

QByteArrayView trimBlanks(QByteArrayView text)
{
    qsizetype b = 0;
    qsizetype e = text.size();
    while (b < e && text[b] == ' ')
        ++b;
    while (e > b && text[e - 1] == ' ')
        --e;
    return text.sliced(b, e - b);
}

std::optional<qint64> parseWhole(QByteArrayView text)
{
    const char *p = text.data();
    const char *end = p + text.size();
    if (p != end && *p == '+')
        ++p;
    if (p == end || (*p == '-' && p + 1 == end))
        return std::nullopt;
    qint64 value = 0;
    const auto res = std::from_chars(p, end, value);
    if (res.ec != std::errc() || res.ptr != end)
        return std::nullopt;
    return value;
}

std::optional<double> parseDecimal(QByteArrayView text, bool allowComma)
{
    // Checked by hand first: from_chars would also take exponents and "inf",
    // which no file of the game holds.
    QByteArray plain(text.data(), text.size());
    qsizetype i = 0;
    if (i < plain.size() && (plain[i] == '-' || plain[i] == '+'))
        ++i;
    const qsizetype signEnd = i;
    bool digits = false;
    bool point = false;
    for (; i < plain.size(); ++i) {
        char &c = plain[i];
        if (c >= '0' && c <= '9')
            digits = true;
        else if ((c == '.' || (allowComma && c == ',')) && !point) {
            c = '.';
            point = true;
        } else
            return std::nullopt;
    }
    if (!digits)
        return std::nullopt;
    double value = 0;
    const char *begin = plain.constData() + signEnd;
    const auto res = std::from_chars(begin, plain.constData() + plain.size(), value, std::chars_format::fixed);
    if (res.ec != std::errc())
        return std::nullopt;
    return signEnd > 0 && plain[0] == '-' ? -value : value;
}

bool fitsInt32(qint64 value)
{
    return value >= INT32_MIN && value <= INT32_MAX;
}

std::optional<QString> parseQuoted(QByteArrayView text)
{
    if (text.size() < 2 || text.front() != '"' || text.back() != '"')
        return std::nullopt;
    return textOf(text.sliced(1, text.size() - 2));
}

QString textOf(QByteArrayView bytes)
{
    return fromCp1252(QByteArray::fromRawData(bytes.data(), bytes.size()));
}

void bindText(Statement &st, int index, QByteArrayView cp1252)
{
    bool ascii = true;
    for (char c : cp1252)
        ascii = ascii && (static_cast<unsigned char>(c) < 0x80);
    const QByteArray utf8 = ascii ? QByteArray(cp1252.data(), cp1252.size()) : textOf(cp1252).toUtf8();
    if (sqlite3_bind_text(st.handle(), index, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT) != SQLITE_OK)
        throw DbError("Wert nicht gebunden");
}

QString shown(QByteArrayView bytes)
{
    QString t = textOf(bytes.size() > 60 ? bytes.first(60) : bytes);
    if (bytes.size() > 60)
        t += QStringLiteral("…");
    return QStringLiteral("»%1«").arg(t);
}

ExchangeResult importcfgfile(Database &db, const QString &path, const Progress &progress,
                             const std::function<QString(const CfgFile &, ExchangeResult &)> &read)
{
    ExchangeResult result;
    CfgFile file;
    result.result = file.load(path);
    if (!result.ok())
        return result;
    try {
        Transaction tx(db);
        const QString done = read(file, result);
        tx.commit();
        result.result.message = done;
    } catch (const ExchangeError &e) {
        return ExchangeResult::failure(e.message());
    } catch (const DbError &e) {
        return ExchangeResult::failure(QStringLiteral("Einlesen von %1 abgebrochen: %2").arg(path, e.text()));
    }
    report(progress, 100);
    return result;
}

} // namespace zorbo
