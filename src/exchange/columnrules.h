#pragma once

#include <QString>
#include <QtGlobal>

namespace zorbo {

// What one column of the game's tables can hold: whole or decimal numbers
// within a range, or text up to a number of characters. The readers of
// outside files check every value against it, so that nothing reaches the
// database that the game could not take back.
struct ColumnRule {
    qint64 min = 0;
    qint64 max = 0;
    int maxLength = 0; // text columns: most characters; 0 for numbers
};

// The rule of a column by its name in any case ("Stärke", "GRAFIK_NR"); a
// column that no table names gets the widest rule, 32-bit numbers and text
// of a profile value.
const ColumnRule &columnrule(const QString &column);

// Empty when the value fits the column; otherwise the German reason, as
// "erlaubt sind 0 bis 999".
QString rangeproblem(const QString &column, double value);
QString lengthproblem(const QString &column, qsizetype length);

} // namespace zorbo
