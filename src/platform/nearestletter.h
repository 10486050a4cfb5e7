#pragma once

#include <QString>

namespace zorbo {

// The text with every character that code page 1252 can't hold put as the
// nearest letter it has, as a German reader would write it: a letter
// without its accent (ć as c, ř as r), ő and ű as ö and ü, Ł as L, ð as d;
// what has no letter near it as "?". Characters the code page holds stay.
QString nearestcp1252(const QString &text);

} // namespace zorbo
