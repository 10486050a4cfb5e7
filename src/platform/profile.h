#pragma once

#include <QString>
#include <QStringList>

namespace zorbo {

// Profile (INI) files with the semantics of the Windows profile functions:
// code page 1252 on disk, section and key names compared without regard to
// case, first section and first key win, ';' lines are comments, the first
// '=' splits key and value. CR LF, LF and CR line ends are all read.

// Value of key in section, trimmed of blanks; def when the file, section or
// key is missing. A present empty key gives the empty text.
QString readinistring(const QString &section, const QString &key, const QString &file,
                      const QString &def = {});

// Integer at the start of the value (optional sign, digits); 0 when missing.
int readiniint(const QString &section, const QString &key, const QString &file);

// Section names in file order.
QStringList readinisections(const QString &file);

// Non-comment, non-blank lines of a section, in file order.
QStringList readinisection(const QString &section, const QString &file);

// Writes key=value into section: an existing key is replaced in place, a new
// key goes after the last key line of its section, a new section at the end
// of the file. Lines end in CR LF. Returns false when the file cannot be
// written or the value cannot be held by code page 1252.
bool writeini(const QString &section, const QString &key, const QString &value,
              const QString &file);

} // namespace zorbo
