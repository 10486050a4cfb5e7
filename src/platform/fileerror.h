#pragma once

#include <QString>

class QFileDevice;

namespace zorbo {

// Why a file operation failed, in German words for the user ("Der
// Datenträger ist voll.", "Die Datei ist schreibgeschützt …"), in place of
// the system's English errorString().
QString fileerrortext(const QFileDevice &file);

} // namespace zorbo
