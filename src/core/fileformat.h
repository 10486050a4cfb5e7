#pragma once

#include "core/world.h"
#include "platform/operation.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

namespace zorbo {

// What a run of a file format gets besides the world.
struct FormatRequest {
    QString path{};
    bool utf8 = false;      // read the file as UTF-8, as the user said
    qint64 team = -1;       // the club a team file is written from, or read over
    QString country{};      // the country a club read from a team file joins as a new club
    bool addToList = false; // crests: name the crests wa.lst lacks there
    bool nearest = false;   // game files: text outside code page 1252 in its nearest letters
};

// Where a run of a file format works: the program folder's settings, and
// the open world for the formats that need one (null for the others).
struct FormatPlace {
    const Settings &settings;
    World *world = nullptr;
};

// The outcome of a run of a file format.
struct FormatRun {
    Result result;
    QList<Finding> findings;
    bool looksUtf8 = false; // the read stopped before the world: the file reads as UTF-8
    qint64 team = -1;       // the club a read created or replaced
    int count = 0;          // crests read or packed
    QStringList unlisted;   // crests read that wa.lst does not name

    bool ok() const { return result.ok; }
};

// One of the game's file formats as the file menu and the command line know
// it: the name and pattern the file dialogs show, the commands, and the runs
// that read a file into the world and write one from it. Each subsystem
// lists its own formats; a window's filter list and a command both come from
// that list.
struct FileFormat {
    QString key;     // "vereine"
    QString name;    // "Zorbo Vereine (1_tm.cfg)"
    QString pattern; // "*.cfg"
    // Commands of zorbo-cli with their arguments and German one-line help;
    // empty when the command line has none for that direction.
    QString readcommand, readusage, readhelp;
    QString writecommand, writeusage, writehelp;
    // Status bar texts while a run goes.
    QString reading, writing;
    // False for files that come and go beside the database (the crests):
    // their runs get no world, and the command line opens none for them.
    bool needsworld = true;
    // One of the game's own files: the world remembers it at each import and
    // export, and an export over it asks first when it changed since.
    bool gamefile = false;
    using Run = std::function<FormatRun(const FormatPlace &, const FormatRequest &, const Progress &)>;
    Run read;
    Run write;

    // The file dialogs' filter entry: "Zorbo Vereine (1_tm.cfg) (*.cfg)".
    QString filter() const { return name + QStringLiteral(" (") + pattern + QLatin1Char(')'); }
};

// Runs the format's read or write; after a run that went through, the world
// (when place has one) remembers a game file as it now lies on disk.
FormatRun runformat(const FileFormat &format, bool read, const FormatPlace &place, const FormatRequest &request,
                    const Progress &progress);

// The format with the key among formats; null when none has it.
const FileFormat *findformat(const QList<FileFormat> &formats, const QString &key);

// The filter entries of formats, in their order.
QStringList formatfilters(const QList<const FileFormat *> &formats);

} // namespace zorbo
