#pragma once

#include <QString>

namespace zorbo {

// The number at the start of a text: leading blanks (spaces and tabs) skipped, optional sign,
// digits with at most one '.' as decimal sign; stops at the first character
// that does not fit; no number gives 0.
double valtext(const QString &text);

// Whole number from a floating value, ties to even (2.5 -> 2, 3.5 -> 4).
long long roundHalfEven(double value);

// Display format "#0.0": at least one integer digit, one decimal, rounded
// half away from zero, with the given decimal sign.
QString formatOneDecimal(double value, QChar decimalSign);

// The system's decimal sign (',' on a German system).
QChar systemDecimalSign();

// Strength in list form: strength / 2000 as "#0.0" and " Sterne".
QString sternetext(long long strength, QChar decimalSign = systemDecimalSign());

// Plain decimal form of the game's files: no thousands separator, a period,
// no leading zero below 1 (".5"), no trailing zeros.
QString plainDecimal(double value);

// A number as a system with the given decimal sign turns it into text: the
// shortest digits that read back the same, a zero before the sign below 1
// ("0,5", "-1,25"), whole numbers without a sign ("6").
QString formatDecimal(double value, QChar decimalSign);

// Display formats "##00" and "###000": at least 2 or 3 digits.
QString formatMinDigits(long long value, int digits);

// The text without the blanks (U+0020) around it; tabs and other white
// space stay, as the readers of the game's files trim.
QString trimspaces(const QString &text);

} // namespace zorbo
