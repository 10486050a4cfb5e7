#pragma once

#include <QString>

#include <ostream>

// Lets failing expectations show texts readably instead of as UTF-16 units.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}
