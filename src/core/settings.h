#pragma once

#include "platform/registry.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <array>
#include <functional>

namespace zorbo {

// Indices into Settings::verzeichnisse.
enum Folder {
    AttributeFolder = 0,
    GesichtFolder = 1,
    Trikot0Folder = 2,
    Trikot1Folder = 3,
    WappenFolder = 4,
    ZorbodatenFolder = 5,
    A4datenFolder = 6,
    ZorboconfigFolder = 7,
    ZorboresFolder = 8,
    ZorbospielerFolder = 9,
};

// The kinds of files whose dialogs remember the folder last used: the
// game's own files (config files, crest archives), team files and the
// exporter's files.
enum class FileKind { Game = 0, Team = 1, Exporter = 2 };

// The settings file's ten folders and the kit set. Each folder ends in '/'
// and is absolute: an empty value stands for its default, a relative one
// lies below the program folder.
struct Settings {
    QString programFolder; // without trailing separator
    std::array<QString, 10> verzeichnisse;
    int trikotsatz = 0;
    // How many restore points are kept ("punkte" in section "sicherungen").
    int restorepoints = 10;
    // The folder of the last file chosen, per FileKind (section "zuletzt");
    // empty until one was chosen.
    std::array<QString, 3> lastfolders;
    // The files opened or imported last, newest first (keys "datei1" …
    // "datei8" of section "zuletzt").
    QStringList recentfiles;
    // How a file of recentfiles came in when an import brought it, by the
    // key of its format ("vereine"; key "art1" … beside "datei1" …); a file
    // opened by its ending has none.
    QHash<QString, QString> recentkinds;

    QString file() const { return programFolder + QStringLiteral("/zorboeditor.ini"); }
    QString dbpfad() const { return programFolder + QStringLiteral("/zorbo.mdb"); }
    QString folder(Folder f) const { return verzeichnisse[size_t(f)]; }
    // The folder of the current kit set.
    QString kitFolder() const { return verzeichnisse[size_t(trikotsatz + 2)]; }
};

// Looks up a registry value; the default is getregvalue.
using RegistryReader = std::function<int(RegRoot, const QString &, const QString &, QString &)>;

// Reads zorboeditor.ini in the program folder, creating it on the first run
// with the game's folders from the registry. When the file cannot be written,
// the defaults are used and *message says why.
Settings loadsettings(const QString &programFolder, QString *message = nullptr,
                      const RegistryReader &registry = getregvalue);

// Writes the kit set into the settings file ("satz" in section "trikot").
bool writetrikotsatz(const Settings &settings);

// Remembers the folder of a file the user chose, in settings and in the
// settings file; false when the file can't be written.
bool writelastfolder(Settings &settings, FileKind kind, const QString &file);

// Puts a file opened or imported at the top of the files opened last, in
// settings and in the settings file, with the format an import read it in
// (empty for a file opened by its ending); false when the file can't be written.
bool writerecentfile(Settings &settings, const QString &file, const QString &kind = {});
inline constexpr int recentfilecount = 8;

// The game's registry key and value.
inline constexpr const char *gameRegistryKey = "Software\\Quenda\\Zorbo Manager\\a_value";
inline constexpr const char *gameRegistryValue = "Work_Dir";

} // namespace zorbo
