#include "platform/registry.h"

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#endif

namespace zorbo {

bool haslinebreak(const QString &text)
{
    return text.contains(QLatin1Char('\n')) || text.contains(QLatin1Char('\r'));
}

#ifdef Q_OS_WIN

int getregvalue(RegRoot root, const QString &keyPath, const QString &valueName, QString &value)
{
    HKEY key = nullptr;
    const HKEY rootKey = root == RegRoot::LocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
    LONG rc = RegOpenKeyExA(rootKey, keyPath.toLocal8Bit().constData(), 0, KEY_READ, &key);
    if (rc != ERROR_SUCCESS)
        return int(rc);
    const QByteArray name = valueName.toLocal8Bit();
    DWORD type = 0;
    DWORD size = 0;
    rc = RegQueryValueExA(key, name.constData(), nullptr, &type, nullptr, &size);
    if (rc == ERROR_SUCCESS) {
        QByteArray data(qsizetype(size), '\0');
        rc = RegQueryValueExA(key, name.constData(), nullptr, &type,
                              reinterpret_cast<BYTE *>(data.data()), &size);
        // A text keeps its stored length, terminating zero included. One
        // holding a line break names nothing we could use and would carry
        // lines into the files it is written to.
        if (rc == ERROR_SUCCESS && type == REG_SZ) {
            const QString text = QString::fromLocal8Bit(data.left(qsizetype(size)));
            if (haslinebreak(text))
                rc = ERROR_INVALID_DATA;
            else
                value = text;
        }
        else if (rc == ERROR_SUCCESS && type == REG_DWORD && size >= 4)
            value = QString::number(*reinterpret_cast<const qint32 *>(data.constData()));
    }
    RegCloseKey(key);
    return int(rc);
}

#else

namespace {

constexpr int errorNotFound = 2;     // ERROR_FILE_NOT_FOUND, as Windows answers
constexpr int errorInvalidData = 13; // ERROR_INVALID_DATA

int hexDigit(QChar c)
{
    const char16_t u = c.unicode();
    if (u >= '0' && u <= '9')
        return u - '0';
    if (u >= 'a' && u <= 'f')
        return u - 'a' + 10;
    if (u >= 'A' && u <= 'F')
        return u - 'A' + 10;
    return -1;
}

// Reads an escaped text from pos up to the unescaped character `end` and
// leaves pos just after it. Wine writes "\\", "\"", C escapes, octal escapes
// for control characters and "\x" with up to four hex digits (one UTF-16
// unit) for everything above 127.
QString unescape(const QString &line, qsizetype &pos, QChar end)
{
    QString out;
    const qsizetype n = line.size();
    while (pos < n && line[pos] != end) {
        QChar c = line[pos++];
        if (c != QLatin1Char('\\') || pos >= n) {
            out += c;
            continue;
        }
        c = line[pos++];
        switch (c.unicode()) {
        case 'a': out += QChar(7); break;
        case 'b': out += QChar(8); break;
        case 't': out += QChar(9); break;
        case 'n': out += QChar(10); break;
        case 'v': out += QChar(11); break;
        case 'f': out += QChar(12); break;
        case 'r': out += QChar(13); break;
        case 'e': out += QChar(27); break;
        case 'x': {
            char16_t unit = 0;
            for (int k = 0; k < 4 && pos < n && hexDigit(line[pos]) >= 0; ++k)
                unit = char16_t(unit * 16 + hexDigit(line[pos++]));
            out += QChar(unit);
            break;
        }
        default:
            if (c >= QLatin1Char('0') && c <= QLatin1Char('7')) {
                char16_t unit = char16_t(c.unicode() - '0');
                for (int k = 1; k < 3 && pos < n && line[pos] >= QLatin1Char('0')
                     && line[pos] <= QLatin1Char('7'); ++k)
                    unit = char16_t(unit * 8 + (line[pos++].unicode() - '0'));
                out += QChar(unit);
            } else {
                out += c;
            }
        }
    }
    if (pos < n)
        ++pos;
    return out;
}

QString normalizeKey(const QString &path)
{
    QString key = path;
    while (key.startsWith(QLatin1Char('\\')))
        key.remove(0, 1);
    while (key.endsWith(QLatin1Char('\\')))
        key.chop(1);
    return key;
}

enum class Lookup { NotFound, Text, Dword, OtherType };

// Looks for the value in the first block of the key in one hive file.
Lookup lookupValue(const QStringList &lines, const QString &keyPath, const QString &valueName,
                   QString &text)
{
    bool inKey = false;
    for (const QString &line : lines) {
        if (line.startsWith(QLatin1Char('['))) {
            if (inKey)
                return Lookup::NotFound;
            qsizetype pos = 1;
            inKey = unescape(line, pos, QLatin1Char(']')).compare(keyPath, Qt::CaseInsensitive) == 0;
            continue;
        }
        if (!inKey)
            continue;
        qsizetype pos = 0;
        QString name;
        if (line.startsWith(QLatin1Char('@'))) {
            pos = 1;
        } else if (line.startsWith(QLatin1Char('"'))) {
            pos = 1;
            name = unescape(line, pos, QLatin1Char('"'));
        } else {
            continue;
        }
        if (pos >= line.size() || line[pos] != QLatin1Char('=')
            || name.compare(valueName, Qt::CaseInsensitive) != 0)
            continue;
        const QString data = line.mid(pos + 1);
        if (data.startsWith(QLatin1Char('"'))) {
            qsizetype at = 1;
            text = unescape(data, at, QLatin1Char('"'));
            return Lookup::Text;
        }
        if (data.startsWith(QLatin1String("dword:"))) {
            bool ok = false;
            const quint32 number = data.mid(6, 8).toUInt(&ok, 16);
            if (!ok)
                return Lookup::OtherType;
            text = QString::number(qint32(number));
            return Lookup::Dword;
        }
        return Lookup::OtherType;
    }
    return Lookup::NotFound;
}

QStringList readHive(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.read(file.size());
    // Everything above 127 is escaped, so the bytes are plain ASCII.
    return QString::fromLatin1(bytes).split(QRegularExpression(QStringLiteral("\r\n|\n|\r")));
}

} // namespace

int getregvalue(RegRoot root, const QString &keyPath, const QString &valueName, QString &value)
{
    const bool machine = root == RegRoot::LocalMachine;
    const QStringList lines = readHive(wineprefix() + (machine ? QLatin1String("/system.reg")
                                                               : QLatin1String("/user.reg")));
    const QString key = normalizeKey(keyPath);
    QStringList candidates;
    // In a 64-bit prefix the game, a 32-bit program, keeps its machine keys
    // under Wow6432Node; that is the value it sees, so it is asked first.
    const QString software = QStringLiteral("Software\\");
    if (machine && key.startsWith(software, Qt::CaseInsensitive)
        && !key.startsWith(software + QLatin1String("Wow6432Node"), Qt::CaseInsensitive))
        candidates.append(software + QLatin1String("Wow6432Node\\") + key.mid(software.size()));
    candidates.append(key);

    for (const QString &candidate : candidates) {
        QString text;
        switch (lookupValue(lines, candidate, valueName, text)) {
        case Lookup::NotFound:
            continue;
        case Lookup::Text:
            // A line break would carry lines into the files the value goes to.
            if (haslinebreak(text))
                return errorInvalidData;
            value = text;
            return 0;
        case Lookup::Dword:
            value = text;
            return 0;
        case Lookup::OtherType:
            // Found, but neither text nor number: success with value unchanged.
            return 0;
        }
    }
    return errorNotFound;
}

#endif

} // namespace zorbo
