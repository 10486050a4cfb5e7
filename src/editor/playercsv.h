#pragma once

#include "core/world.h"
#include "editor/playerfields.h"
#include "platform/codepage.h"
#include "platform/operation.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace zorbo {

// The player file for spreadsheets as a German LibreOffice Calc or Excel
// opens it: UTF-8 with a byte order mark, ";" between fields, CR LF after
// each row, fields with ";", quotes or line breaks between quotes. The first
// row names the columns: those of playerfields(), with "Verein" (the first
// team, shown only) after "Vorname". Strengths are stars with a decimal
// comma, exact to the unit.
QByteArray playercsv(Database &db, const QList<qint64> &players);
// Writes it to path (the whole file or nothing).
Result exportplayercsv(Database &db, const QList<qint64> &players, const QString &path);

// A record of a CSV text: its fields and the line it starts on.
struct CsvRecord {
    int line = 0;
    QStringList fields;
};
// Splits the text into records at separator; a quote left open throws a
// Fault that names file and line.
QList<CsvRecord> splitcsv(const QString &text, QChar separator, const QString &file);

struct CsvOptions {
    FileEncoding encoding = FileEncoding::Detect; // Detect: UTF-8, else the user is asked for code page 1252
    bool createPlayers = false;                   // "neue Spieler anlegen": unknown numbers become new players
    int previewRows = 50;
};

struct CsvImport {
    Result result;
    QList<Finding> findings;
    int changed = 0;             // players whose rows change
    int created = 0;             // of them new
    QList<PlayerChange> preview; // the first of them
};

// Reads the file and matches its rows to the players by number; only the
// fields that differ are written, and only when apply. A value that doesn't
// fit refuses the whole file, naming file, line and column.
CsvImport importplayercsv(Database &db, const QString &path, const CsvOptions &options, bool apply);
// The import as one step of the history (after a restore point when many
// rows change); a file that changes nothing leaves no step.
CsvImport runplayercsvimport(World &world, const QString &path, const CsvOptions &options);

} // namespace zorbo
