#include "exchange/cfgfile.h"

#include "core/columnrules.h"
#include "platform/codepage.h"
#include "platform/numbers.h"

#include <QDir>
#include <charconv>
#include <cstring>
#include <sqlite3.h>

namespace zorbo {

Result CfgFile::load(const QString &path, FileEncoding encoding, qint64 maxBytes)
{
    m_path = path;
    m_kept = 0;
    return loadtextfile(path, encoding, maxBytes, m_bytes, m_looksUtf8);
}

bool CfgFile::Lines::next()
{
    const qsizetype n = m_bytes.size();
    if (m_next >= n)
        return false;
    const char *data = m_bytes.constData();
    const qsizetype start = m_next;
    // The line ends at the first LF or CR; memchr looks at many bytes at once.
    const auto *lf = static_cast<const char *>(std::memchr(data + start, '\n', size_t(n - start)));
    const qsizetype limit = lf ? lf - data : n;
    const auto *cr = static_cast<const char *>(std::memchr(data + start, '\r', size_t(limit - start)));
    const qsizetype end = cr ? cr - data : limit;
    m_text = QByteArrayView(data + start, end - start);
    m_next = end < n && data[end] == '\r' && end + 1 < n && data[end + 1] == '\n' ? end + 2 : end + 1;
    ++m_number;
    return true;
}

QString CfgFile::where(qsizetype i) const
{
    return QStringLiteral("%1, Zeile %2").arg(QDir::toNativeSeparators(m_path)).arg(i + 1);
}

void CfgFile::fail(qsizetype i, const QString &what) const
{
    throw Fault(where(i) + QStringLiteral(": ") + what, Finding{.text = what, .file = m_path, .line = int(i + 1)});
}

void CfgFile::failfield(qsizetype i, const QString &field, const QString &value) const
{
    throw Fault(where(i) + QStringLiteral(": im Feld %1 steht %2").arg(field, value),
                Finding{.text = value, .file = m_path, .line = int(i + 1), .field = field});
}

QByteArrayView trimBlanks(QByteArrayView text)
{
    const char *b = text.data();
    const char *e = b + text.size();
    while (b < e && *b == ' ')
        ++b;
    while (e > b && e[-1] == ' ')
        --e;
    return QByteArrayView(b, e - b);
}

QByteArrayView trimValue(QByteArrayView text)
{
    const char *b = text.data();
    const char *e = b + text.size();
    while (b < e && (*b == ' ' || *b == '\t'))
        ++b;
    while (e > b && (e[-1] == ' ' || e[-1] == '\t'))
        --e;
    return QByteArrayView(b, e - b);
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
    const char *p = text.data();
    const qsizetype n = text.size();
    qsizetype i = 0;
    if (i < n && (p[i] == '-' || p[i] == '+'))
        ++i;
    const qsizetype signEnd = i;
    bool digits = false;
    qsizetype point = -1;
    for (; i < n; ++i) {
        const char c = p[i];
        if (c >= '0' && c <= '9')
            digits = true;
        else if ((c == '.' || (allowComma && c == ',')) && point < 0)
            point = i;
        else
            return std::nullopt;
    }
    if (!digits)
        return std::nullopt;
    double value = 0;
    std::from_chars_result res;
    if (point >= 0 && p[point] == ',') {
        QByteArray plain(p + signEnd, n - signEnd);
        plain[point - signEnd] = '.';
        res = std::from_chars(plain.constData(), plain.constData() + plain.size(), value, std::chars_format::fixed);
    } else {
        res = std::from_chars(p + signEnd, p + n, value, std::chars_format::fixed);
    }
    if (res.ec != std::errc())
        return std::nullopt;
    return signEnd > 0 && p[0] == '-' ? -value : value;
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

QString shown(QByteArrayView bytes)
{
    QString t = textOf(bytes.size() > 60 ? bytes.first(60) : bytes);
    if (bytes.size() > 60)
        t += QStringLiteral("…");
    return QStringLiteral("»%1«").arg(t);
}

std::optional<qint64> parseRounded(QByteArrayView text, bool allowComma)
{
    if (const std::optional<qint64> n = parseWhole(text))
        return n;
    // Beyond 64 bits the rounding saturates, which no column's range takes.
    if (const std::optional<double> d = parseDecimal(text, allowComma))
        return roundHalfEven(*d);
    return std::nullopt;
}

CfgField::CfgField(const QString &column) : name(column), store(&storerule(column)), window(&windowrule(column)) {}

namespace {

// Whether the world can store the number in the field, and whether the
// windows show it.
bool stored(const CfgField &field, double value)
{
    return value >= double(field.store->min) && value <= double(field.store->max);
}

bool outside(const CfgField &field, double value)
{
    return field.window->maxLength == 0 && (value < double(field.window->min) || value > double(field.window->max));
}

} // namespace

qint64 wholefield(const CfgFile &file, qsizetype line, const CfgField &field, QByteArrayView value)
{
    const std::optional<qint64> n = parseRounded(value);
    if (!n)
        file.failfield(line, field.name, shown(value) + QStringLiteral(", keine ganze Zahl."));
    if (!stored(field, double(*n)))
        file.failfield(line, field.name, QStringLiteral("%1; %2.").arg(shown(value), rangeproblem(field.name, double(*n))));
    if (outside(field, double(*n)))
        file.kept();
    return *n;
}

double decimalfield(const CfgFile &file, qsizetype line, const CfgField &field, QByteArrayView value)
{
    const std::optional<double> d = parseDecimal(value);
    if (!d)
        file.failfield(line, field.name, shown(value) + QStringLiteral(", keine Zahl."));
    if (!stored(field, *d))
        file.failfield(line, field.name, QStringLiteral("%1; %2.").arg(shown(value), rangeproblem(field.name, *d)));
    if (outside(field, *d))
        file.kept();
    return *d;
}

void checktextfield(const CfgFile &file, qsizetype line, const CfgField &field, QByteArrayView text)
{
    // One byte is one character in code page 1252.
    if (text.size() > field.store->maxLength)
        file.failfield(line, field.name, lengthproblem(field.name, text.size()) + QLatin1Char('.'));
    if (field.window->maxLength > 0 && text.size() > field.window->maxLength)
        file.kept();
}

ExchangeResult importcfgfile(Database &db, const QString &path, FileEncoding encoding,
                             const std::function<QString(const CfgFile &, ExchangeResult &)> &read)
{
    ExchangeResult result;
    CfgFile file;
    result.result = file.load(path, encoding);
    result.looksUtf8 = file.looksUtf8();
    if (!result.ok())
        return result;
    return runtransaction(db, QStringLiteral("Einlesen von %1 abgebrochen").arg(path), [&] {
        const QString done = read(file, result);
        result.result.message = withkept(done, file.keptvalues());
        return result;
    });
}

} // namespace zorbo
