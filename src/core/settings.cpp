#include "core/settings.h"

#include "platform/codepage.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/profile.h"

#include <QFileInfo>
#include <algorithm>

namespace zorbo {

namespace {

struct FolderKey {
    const char *key;
    const char *defaultSub; // below the program folder
};

// Keys of section "ordner" in the order of Settings::verzeichnisse.
constexpr FolderKey folderKeys[10] = {
    {"attribute", "/attribute/"},   {"gesicht", "/gesicht/"}, {"trikot0", "/trikot/original/"},
    {"trikot1", "/trikot/zorbode/"}, {"wappen", "/wappen/"},   {"zorbodaten", "/"},
    {"a4daten", "/"},               {"zorboconfig", "/"},     {"zorbores", "/"},
    {"zorbospieler", "/"},
};

const QString ordner = QStringLiteral("ordner");
const QString zuletzt = QStringLiteral("zuletzt");
// Keys of section "zuletzt" in the order of FileKind.
constexpr const char *lastKeys[3] = {"spieldateien", "teamdateien", "exporterdateien"};
const QString trikot = QStringLiteral("trikot");
const QString satz = QStringLiteral("satz");

QString defaultFolder(const QString &programFolder, int i)
{
    return programFolder + QLatin1String(folderKeys[i].defaultSub);
}

Settings readSettings(const QString &programFolder)
{
    Settings s;
    s.programFolder = programFolder;
    const QString file = s.file();
    for (int i = 0; i < 10; ++i) {
        const QString fallback = defaultFolder(programFolder, i);
        const QString value = readinistring(ordner, QLatin1String(folderKeys[i].key), file, fallback);
        // An empty value means the default; an empty folder would put files
        // into whatever folder the program happened to be started from.
        s.verzeichnisse[size_t(i)] = folderbelow(value.isEmpty() ? fallback : value, programFolder);
    }
    const long long kitSet = roundHalfEven(valtext(readinistring(trikot, satz, file, QStringLiteral("0"))));
    s.trikotsatz = kitSet == 1 ? 1 : 0;
    const long long points = roundHalfEven(valtext(readinistring(QStringLiteral("sicherungen"), QStringLiteral("punkte"), file,
                                                                 QStringLiteral("10"))));
    s.restorepoints = int(std::clamp(points, 1LL, 1000LL));
    for (size_t k = 0; k < s.lastfolders.size(); ++k)
        s.lastfolders[k] = readinistring(zuletzt, QLatin1String(lastKeys[k]), file, QString());
    for (int i = 1; i <= recentfilecount; ++i) {
        const QString recent = readinistring(zuletzt, QStringLiteral("datei%1").arg(i), file, QString());
        if (recent.isEmpty())
            continue;
        s.recentfiles << recent;
        // Lists written before imports were kept have no kinds.
        if (const QString kind = readinistring(zuletzt, QStringLiteral("art%1").arg(i), file, QString()); !kind.isEmpty())
            s.recentkinds.insert(recent, kind);
    }
    return s;
}

// The game's folder from the registry: the current user's value wins over the
// machine's. Empty when the game is not installed.
QString gameFolder(const RegistryReader &registry)
{
    const QString key = QLatin1String(gameRegistryKey);
    const QString name = QLatin1String(gameRegistryValue);
    QString value;
    if (registry(RegRoot::LocalMachine, key, name, value) != 0 && registry(RegRoot::CurrentUser, key, name, value) != 0)
        return {};
    registry(RegRoot::CurrentUser, key, name, value);
    value.remove(QChar(0));
    value = value.trimmed();
    // No Windows path holds a control character; such a value names no
    // folder, and a line break in it would add lines to the settings file.
    const bool control = std::any_of(value.cbegin(), value.cend(), [](QChar c) { return c.unicode() < 0x20; });
    if (value.isEmpty() || control)
        return {};
#ifdef Q_OS_WIN
    return folderpath(value).chopped(1);
#else
    return winepath(value);
#endif
}

bool createSettingsFile(const Settings &defaults, const RegistryReader &registry)
{
    const QString file = defaults.file();
    const QString game = gameFolder(registry);
    const QString base = game.isEmpty() ? defaults.programFolder : game;
    struct Entry {
        QString section, key, value;
    };
    QList<Entry> entries = {
        {ordner, QStringLiteral("zorboconfig"), base + (game.isEmpty() ? "/" : "/config/")},
        {ordner, QStringLiteral("zorbores"), base + (game.isEmpty() ? "/" : "/resfile/")},
        {ordner, QStringLiteral("zorbospieler"), base + (game.isEmpty() ? "/" : "/spielerbilder/")},
    };
    for (int i = 0; i < 7; ++i)
        entries.append({ordner, QLatin1String(folderKeys[i].key), defaultFolder(defaults.programFolder, i)});
    entries.append({trikot, satz, QStringLiteral("0")});
    // A value with a line break would add lines of its own: then no file at
    // all rather than half a file.
    for (const Entry &e : entries) {
        if (haslinebreak(e.value))
            return false;
    }
    bool ok = true;
    for (const Entry &e : entries)
        ok &= writeini(e.section, e.key, e.value, file);
    return ok;
}

} // namespace

Settings loadsettings(const QString &programFolder, QString *message, const RegistryReader &registry)
{
    Settings s;
    s.programFolder = programFolder;
    if (!QFileInfo::exists(s.file())) {
        // Created once; when it cannot be written we go on with the defaults
        // instead of trying again.
        if (!createSettingsFile(s, registry) && message) {
            *message = QStringLiteral("Die Einstellungsdatei %1 lässt sich nicht schreiben. "
                                      "Der Editor arbeitet mit den Standardordnern.")
                           .arg(s.file());
        }
    }
    return readSettings(programFolder);
}

bool writetrikotsatz(const Settings &settings)
{
    return writeini(trikot, satz, QString::number(settings.trikotsatz), settings.file());
}

bool writerecentfile(Settings &settings, const QString &file, const QString &kind)
{
    const QString path = QFileInfo(file).absoluteFilePath();
    // The settings file holds code page 1252 only; a path beyond it would
    // come back as another file.
    if (haslinebreak(path) || !fitsCp1252(path))
        return false;
    if (!settings.recentfiles.isEmpty() && settings.recentfiles.first() == path
        && settings.recentkinds.value(path) == kind)
        return true;
    settings.recentfiles.removeAll(path);
    settings.recentfiles.prepend(path);
    while (settings.recentfiles.size() > recentfilecount)
        settings.recentkinds.remove(settings.recentfiles.takeLast());
    if (kind.isEmpty())
        settings.recentkinds.remove(path);
    else
        settings.recentkinds.insert(path, kind);
    bool written = true;
    for (int i = 0; i < recentfilecount; ++i) {
        const QString recent = settings.recentfiles.value(i);
        written = writeini(zuletzt, QStringLiteral("datei%1").arg(i + 1), recent, settings.file()) && written;
        written = writeini(zuletzt, QStringLiteral("art%1").arg(i + 1), settings.recentkinds.value(recent), settings.file())
                  && written;
    }
    return written;
}

bool writelastfolder(Settings &settings, FileKind kind, const QString &file)
{
    const QString folder = QFileInfo(file).absolutePath();
    QString &last = settings.lastfolders[size_t(kind)];
    if (folder == last)
        return true;
    last = folder;
    return !haslinebreak(folder) && writeini(zuletzt, QLatin1String(lastKeys[int(kind)]), folder, settings.file());
}

} // namespace zorbo
