#include "platform/numbers.h"

#include <QLocale>

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace zorbo {

namespace {

bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

// Shortest decimal text that reads back as the same double, never in
// exponent form: the digits a user would have typed, so that rounding on
// them treats 0.35 as 0.35 and not as 0.34999999999999997.
std::string shortestFixed(double value)
{
    // Enough for the longest fixed form of a double (about 330 characters).
    char buf[400];
    const auto res = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::fixed);
    return std::string(buf, res.ptr);
}

// Magnitude of value rounded half away from zero to `decimals` places, as
// integer digits and fraction digits of exactly that length.
void roundDecimal(double value, int decimals, std::string &intPart, std::string &fracPart)
{
    std::string text = shortestFixed(std::fabs(value));
    const auto dot = text.find('.');
    intPart = text.substr(0, dot);
    std::string frac = dot == std::string::npos ? std::string() : text.substr(dot + 1);
    const bool up = frac.size() > size_t(decimals) && frac[decimals] >= '5';
    frac.resize(decimals, '0');
    std::string digits = intPart + frac;
    if (up) {
        int i = int(digits.size()) - 1;
        while (i >= 0 && digits[i] == '9')
            digits[i--] = '0';
        if (i >= 0)
            ++digits[i];
        else
            digits.insert(digits.begin(), '1');
    }
    intPart = digits.substr(0, digits.size() - decimals);
    fracPart = digits.substr(digits.size() - decimals);
}

} // namespace

double valtext(const QString &text)
{
    // Spaces and tabs both count as leading blanks, as in the reader of the
    // game's own tools; blanks inside the number end it.
    qsizetype i = 0;
    const qsizetype n = text.size();
    while (i < n && isBlank(text[i]))
        ++i;
    QByteArray number;
    if (i < n && (text[i] == QLatin1Char('-') || text[i] == QLatin1Char('+')))
        number += char(text[i++].unicode());
    bool digits = false;
    bool point = false;
    for (; i < n; ++i) {
        const QChar c = text[i];
        if (c >= QLatin1Char('0') && c <= QLatin1Char('9')) {
            number += char(c.unicode());
            digits = true;
        } else if (c == QLatin1Char('.') && !point) {
            number += '.';
            point = true;
        } else {
            break;
        }
    }
    if (!digits)
        return 0.0;
    // Qt's reader refuses a bare trailing point ("7.") that the rule accepts.
    if (number.endsWith('.'))
        number.chop(1);
    const double v = number.toDouble();
    return v == 0.0 ? 0.0 : v;
}

long long roundHalfEven(double value)
{
    if (std::isnan(value))
        return 0;
    const double r = std::nearbyint(value);
    if (r >= 9.2233720368547758e18)
        return std::numeric_limits<long long>::max();
    if (r <= -9.2233720368547758e18)
        return std::numeric_limits<long long>::min();
    return static_cast<long long>(r);
}

QString formatOneDecimal(double value, QChar decimalSign)
{
    if (!std::isfinite(value))
        return QString::number(value);
    std::string intPart, fracPart;
    roundDecimal(value, 1, intPart, fracPart);
    const bool zero = intPart.find_first_not_of('0') == std::string::npos
        && fracPart.find_first_not_of('0') == std::string::npos;
    QString out;
    // A value that rounds to zero shows without a sign.
    if (value < 0 && !zero)
        out += QLatin1Char('-');
    out += QString::fromLatin1(intPart) + decimalSign + QString::fromLatin1(fracPart);
    return out;
}

QChar systemDecimalSign()
{
    const QString point = QLocale::system().decimalPoint();
    return point.isEmpty() ? QLatin1Char('.') : point.front();
}

QString sternetext(long long strength, QChar decimalSign)
{
    return formatOneDecimal(double(strength) / 2000.0, decimalSign) + QLatin1String(" Sterne");
}

QString plainDecimal(double value)
{
    // The game's files hold no infinities; a broken value is written as 0
    // rather than as text the game cannot read.
    if (!std::isfinite(value) || value == 0.0)
        return QStringLiteral("0");
    std::string text = shortestFixed(value);
    if (text.find('.') != std::string::npos) {
        while (text.back() == '0')
            text.pop_back();
        if (text.back() == '.')
            text.pop_back();
    }
    const bool negative = text.front() == '-';
    const size_t start = negative ? 1 : 0;
    if (text.compare(start, 2, "0.") == 0)
        text.erase(start, 1);
    return QString::fromLatin1(text);
}

QString formatDecimal(double value, QChar decimalSign)
{
    QString text = plainDecimal(value);
    const qsizetype point = text.indexOf(QLatin1Char('.'));
    if (point < 0)
        return text;
    text[point] = decimalSign;
    if (point == 0 || text[point - 1] == QLatin1Char('-'))
        text.insert(point, QLatin1Char('0'));
    return text;
}

QString formatMinDigits(long long value, int digits)
{
    // The sign stands before the padded digits: -7 with two digits is "-07".
    const unsigned long long magnitude = value < 0 ? 0ULL - static_cast<unsigned long long>(value)
                                                   : static_cast<unsigned long long>(value);
    QString text = QString::number(magnitude).rightJustified(digits, QLatin1Char('0'));
    return value < 0 ? QLatin1Char('-') + text : text;
}

QString trimspaces(const QString &text)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && text[begin] == QLatin1Char(' '))
        ++begin;
    while (end > begin && text[end - 1] == QLatin1Char(' '))
        --end;
    return text.mid(begin, end - begin);
}

} // namespace zorbo
