#pragma once

#include <QString>

namespace zorbo {

// A folder as the settings hold it, with '/' as separator and ending in '/'.
// Values written on Windows with backslashes read with them turned into '/'.
QString folderpath(const QString &value);

// A folder of the settings as an absolute path: a relative value lies below
// base (the program folder), never below the working folder of the moment.
// Absolute values, also Windows ones with a drive letter, stay as they are.
QString folderbelow(const QString &value, const QString &base);

// Joins a folder with a file name by plain concatenation, as the settings
// promise a trailing separator.
inline QString joinpath(const QString &folder, const QString &name) { return folder + name; }

} // namespace zorbo
