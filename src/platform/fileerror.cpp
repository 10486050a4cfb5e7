#include "platform/fileerror.h"

#include <QFileDevice>
#include <cerrno>

namespace zorbo {

namespace {

struct SystemError {
    int number;
    const char *german;
};

// Qt keeps only the system's text of a failure, so the cause is found by
// comparing that text with the system's text of each known error number.
constexpr SystemError systemErrors[] = {
    {ENOSPC, "Der Datenträger ist voll."},
#ifdef EDQUOT
    {EDQUOT, "Der Speicherplatz des Benutzers ist erschöpft."},
#endif
    {EROFS, "Der Datenträger ist schreibgeschützt."},
    {EACCES, "Der Zugriff ist nicht erlaubt (die Datei oder der Ordner ist schreibgeschützt)."},
    {EPERM, "Der Zugriff ist nicht erlaubt (die Datei oder der Ordner ist schreibgeschützt)."},
    {ENOENT, "Die Datei oder ihr Ordner fehlt."},
    {ENOTDIR, "Ein Teil des Pfades ist kein Ordner."},
    {EISDIR, "Der Name gehört zu einem Ordner, nicht zu einer Datei."},
    {ENAMETOOLONG, "Der Pfad ist zu lang."},
    {EMFILE, "Es sind zu viele Dateien geöffnet."},
    {ENFILE, "Es sind zu viele Dateien geöffnet."},
    {EBUSY, "Die Datei wird gerade von einem anderen Programm benutzt."},
    {ETXTBSY, "Die Datei wird gerade von einem anderen Programm benutzt."},
    {EIO, "Der Datenträger meldet einen Fehler beim Lesen oder Schreiben."},
    {EFBIG, "Die Datei wird zu groß."},
};

} // namespace

QString fileerrortext(const QFileDevice &file)
{
    const QString system = file.errorString();
    for (const SystemError &e : systemErrors) {
        if (system == qt_error_string(e.number))
            return QString::fromUtf8(e.german);
    }
    switch (file.error()) {
    case QFileDevice::ReadError:
        return QStringLiteral("Die Datei lässt sich nicht lesen.");
    case QFileDevice::WriteError:
        return QStringLiteral("Die Datei lässt sich nicht schreiben.");
    case QFileDevice::ResourceError:
        return QStringLiteral("Dem System fehlen Mittel dafür (Speicherplatz oder Arbeitsspeicher).");
    case QFileDevice::PermissionsError:
        return QStringLiteral("Der Zugriff ist nicht erlaubt.");
    case QFileDevice::OpenError:
        return QStringLiteral("Die Datei lässt sich nicht öffnen.");
    case QFileDevice::RenameError:
    case QFileDevice::CopyError:
        return QStringLiteral("Die Datei lässt sich nicht an ihren Platz bringen.");
    case QFileDevice::RemoveError:
        return QStringLiteral("Die Datei lässt sich nicht löschen.");
    default:
        return QStringLiteral("Die Datei lässt sich nicht bearbeiten.");
    }
}

} // namespace zorbo
