#pragma once

#include <QString>
#include <optional>

namespace zorbo {

enum class RegRoot { LocalMachine, CurrentUser };

// Reads a text or 32-bit value of the registry. On Linux the registry is that
// of the default Wine prefix ($WINEPREFIX, else ~/.wine): system.reg for the
// local machine (also under Software\Wow6432Node in a 64-bit prefix) and
// user.reg for the current user. Returns 0 and sets value on success, or a
// non-zero error number with value untouched. A number comes back as decimal
// text; a value of another type is found (0) but leaves value alone. A text
// holding a line break is refused (ERROR_INVALID_DATA, 13), value untouched.
int getregvalue(RegRoot root, const QString &keyPath, const QString &valueName, QString &value);

// True when the text holds a CR or LF: such a value never goes into a
// settings or profile file, where it would add lines of its own.
bool haslinebreak(const QString &text);

// Folder of the Wine prefix that registry look-ups use.
QString wineprefix();

// Maps a Windows path such as "C:\Games\Zorbo" into the Wine prefix, matching
// each part without regard to case when the exact name does not exist.
QString winepath(const QString &windowsPath, const QString &prefix = wineprefix());

} // namespace zorbo
