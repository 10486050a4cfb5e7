#pragma once

#include "platform/operation.h"

#include <QByteArray>
#include <QString>

namespace zorbo {

// Reads a whole file of at most maxSize bytes; a larger file is refused with
// a German message naming it, so no reader allocates from a file's claim.
Result readfilebytes(const QString &path, qint64 maxSize, QByteArray &bytes);

// Replaces a file atomically, so a failed write never leaves half a crest;
// see replacefile.
Result writefilebytes(const QString &path, QByteArrayView bytes);

// The file name of a path, for messages.
QString shortname(const QString &path);

} // namespace zorbo
