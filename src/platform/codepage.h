#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace zorbo {

// Code page 1252, the encoding of every game and profile file. All 256 bytes
// map to a character, so reading never fails and every byte round-trips.
QString fromCp1252(const QByteArray &bytes);

// Empty when the text holds a character the code page cannot hold; then
// *badIndex (if given) is the index of the first such character.
std::optional<QByteArray> toCp1252(const QString &text, int *badIndex = nullptr);

bool fitsCp1252(const QString &text);

} // namespace zorbo
