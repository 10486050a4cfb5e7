#pragma once

#include <QString>
#include <QVariant>
#include <QtGlobal>

namespace zorbo {

// What one column of the game's tables takes: whole or decimal numbers
// within a range, or text up to a number of characters.
struct ColumnRule {
    qint64 min = 0;
    qint64 max = 0;
    int maxLength = 0; // text columns: most characters; 0 for numbers
};

// What the world stores faithfully and the game's files carry: numbers of
// 32 bits (team and player numbers from 0), texts up to 255 characters, the
// width of the old engine's text columns. A reader or a save refuses only a
// value beyond this rule.
const ColumnRule &storerule(const QString &column);

// What the windows show and let the user type, by column name in any case
// ("Stärke", "GRAFIK_NR"): names of 32 characters, strengths up to six stars.
// A value beyond it is kept as it came; the problem check lists it.
const ColumnRule &windowrule(const QString &column);

// Empty when the value can be stored; otherwise the German reason, as
// "erlaubt sind 0 bis 2147483647".
QString rangeproblem(const QString &column, double value);
QString lengthproblem(const QString &column, qsizetype length);

// Whether a stored value lies beyond what the windows show of its column;
// Null never does.
bool outsidewindow(const QString &column, double value);
bool outsidewindow(const QString &column, qsizetype length);
bool outsidewindow(const QString &column, const QVariant &value);
// The words of the window's range, as "die Fenster zeigen 0 bis 12000".
QString windowwords(const QString &column);

// The closing words of a run that kept such values, as "3 Werte außerhalb
// der Fensterbereiche behalten, siehe Probleme"; empty for none. withkept
// puts them behind a run's message.
QString keptnote(int values);
QString withkept(const QString &message, int values);

} // namespace zorbo
