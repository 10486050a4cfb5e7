#include "core/settings.h"

#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/profile.h"

#include <QFileInfo>

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
        const QString value = readinistring(ordner, QLatin1String(folderKeys[i].key), file,
                                            defaultFolder(programFolder, i));
        s.verzeichnisse[size_t(i)] = folderpath(value);
    }
    const long long kitSet = roundHalfEven(valtext(readinistring(trikot, satz, file, QStringLiteral("0"))));
    s.trikotsatz = kitSet == 1 ? 1 : 0;
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
    if (value.isEmpty())
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
    bool ok = true;
    ok &= writeini(ordner, QStringLiteral("zorboconfig"), base + (game.isEmpty() ? "/" : "/config/"), file);
    ok &= writeini(ordner, QStringLiteral("zorbores"), base + (game.isEmpty() ? "/" : "/resfile/"), file);
    ok &= writeini(ordner, QStringLiteral("zorbospieler"), base + (game.isEmpty() ? "/" : "/spielerbilder/"), file);
    for (int i = 0; i < 7; ++i)
        ok &= writeini(ordner, QLatin1String(folderKeys[i].key), defaultFolder(defaults.programFolder, i), file);
    ok &= writeini(trikot, satz, QStringLiteral("0"), file);
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

} // namespace zorbo
