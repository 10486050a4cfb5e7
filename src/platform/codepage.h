#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <optional>

namespace zorbo {

// Code page 1252, the encoding of every game and profile file. All 256 bytes
// map to a character, so reading never fails and every byte round-trips.
QString fromCp1252(const QByteArray &bytes);

// The same text as UTF-8, appended to out: what fromCp1252(…).toUtf8()
// gives, without the text in between.
void appendCp1252AsUtf8(QByteArray &out, QByteArrayView cp1252);

// Empty when the text holds a character the code page cannot hold; then
// *badIndex (if given) is the index of the first such character.
std::optional<QByteArray> toCp1252(const QString &text, int *badIndex = nullptr);

// Writes UTF-8 text of printable characters the code page holds to out (at
// most utf8.size() bytes) and gives the number written; -1 for anything else
// (control characters, characters the code page lacks, bytes that are no
// UTF-8), which toCp1252 then tells apart. The same bytes as toCp1252 gives,
// without the text in between.
qsizetype plainUtf8ToCp1252(QByteArrayView utf8, char *out);

bool fitsCp1252(const QString &text);

// How a file from outside is to be read: Detect takes code page 1252 but
// stops at a file that reads as UTF-8, so that the user can be asked.
enum class FileEncoding { Detect, Cp1252, Utf8 };

// True when the bytes start with a UTF-8 mark, or are valid UTF-8 holding at
// least one character of more than one byte.
bool looksutf8(QByteArrayView bytes);

} // namespace zorbo
