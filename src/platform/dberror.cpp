#include "platform/dberror.h"

#include <QDir>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <sqlite3.h>

namespace zorbo {

namespace {

// Off by default: the user never reads English engine texts or statements.
Q_LOGGING_CATEGORY(databaseLog, "zorbo.database", QtWarningMsg)

} // namespace

QString dberrortext(int code)
{
    switch (code) {
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_ROWID:
        return QStringLiteral("Ein Eintrag mit dieser Nummer besteht schon.");
    case SQLITE_CONSTRAINT_DATATYPE:
        return QStringLiteral("Ein Wert passt nicht zu seinem Feld (zum Beispiel Buchstaben in einem Zahlenfeld).");
    case SQLITE_CONSTRAINT_NOTNULL:
        return QStringLiteral("Ein notwendiger Wert fehlt.");
    default:
        break;
    }
    switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
        return QStringLiteral("Die Datenbank wird gerade von einem anderen Programm benutzt. Schließen Sie das "
                              "andere Programm und versuchen Sie es noch einmal.");
    case SQLITE_FULL:
        return QStringLiteral("Der Datenträger ist voll.");
    case SQLITE_READONLY:
        return QStringLiteral("Die Datenbank ist schreibgeschützt; Änderungen lassen sich nicht speichern.");
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return QStringLiteral("Die Datenbank ist beschädigt. Stellen Sie einen Wiederherstellungspunkt aus dem "
                              "Ordner »sicherungen« im Programmordner wieder her.");
    case SQLITE_CANTOPEN:
        return QStringLiteral("Die Datenbankdatei lässt sich nicht öffnen (der Ordner fehlt, oder es fehlt das "
                              "Recht dazu).");
    case SQLITE_IOERR:
        return QStringLiteral("Der Datenträger meldet einen Fehler beim Lesen oder Schreiben der Datenbank.");
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return QStringLiteral("Der Zugriff auf die Datenbank ist nicht erlaubt.");
    case SQLITE_CONSTRAINT:
        return QStringLiteral("Ein Wert verletzt eine Regel der Datenbank.");
    case SQLITE_MISMATCH:
        return QStringLiteral("Ein Wert passt nicht zu seinem Feld (zum Beispiel Buchstaben in einem Zahlenfeld).");
    case SQLITE_TOOBIG:
        return QStringLiteral("Ein Wert ist zu groß für die Datenbank.");
    case SQLITE_NOMEM:
        return QStringLiteral("Der Arbeitsspeicher reicht nicht aus.");
    case SQLITE_INTERRUPT:
    case SQLITE_ABORT:
        return QStringLiteral("Der Vorgang wurde abgebrochen.");
    case SQLITE_SCHEMA:
        return QStringLiteral("Der Aufbau der Datenbank hat sich während des Vorgangs geändert.");
    case SQLITE_ERROR:
        return QStringLiteral("Die Datenbank hat nicht den erwarteten Aufbau (eine Tabelle oder Spalte fehlt).");
    default:
        return QStringLiteral("Interner Fehler beim Zugriff auf die Datenbank.");
    }
}

DbError::DbError(const QString &message) : std::runtime_error(message.toStdString()) {}

namespace {

// The engine names a missing table or column in its own words; the German
// text names it too.
QString describe(int code, const QString &detail, const QString &file)
{
    if (!file.isEmpty() && (code & 0xff) == SQLITE_FULL)
        return QStringLiteral("Der Datenträger ist voll; %1 lässt sich nicht schreiben.").arg(QDir::toNativeSeparators(file));
    if (!file.isEmpty() && (code & 0xff) == SQLITE_IOERR)
        return QStringLiteral("Der Datenträger meldet einen Fehler beim Lesen oder Schreiben von %1.")
            .arg(QDir::toNativeSeparators(file));
    if ((code & 0xff) == SQLITE_ERROR) {
        static const QRegularExpression missing(
            QStringLiteral("(?:no such (table|column): |table \\S+ has no (column) named )([^\\s,;:]+)"));
        if (const QRegularExpressionMatch m = missing.match(detail); m.hasMatch()) {
            const bool table = !m.captured(1).isEmpty() ? m.captured(1) == QLatin1String("table") : false;
            return QStringLiteral("Die Datenbank hat nicht den erwarteten Aufbau: %1 %2 fehlt.")
                .arg(table ? QStringLiteral("die Tabelle") : QStringLiteral("die Spalte"), m.captured(3));
        }
    }
    return dberrortext(code);
}

} // namespace

DbError::DbError(int code, const QString &detail, const QString &file)
    : std::runtime_error(describe(code, detail, file).toStdString()), m_code(code), m_detail(detail)
{
    qCInfo(databaseLog).noquote() << "SQLite" << code << detail;
}

bool DbError::damaged() const
{
    const int primary = m_code & 0xff;
    return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB;
}

} // namespace zorbo
