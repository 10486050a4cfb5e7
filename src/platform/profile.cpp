#include "platform/profile.h"

#include "platform/codepage.h"
#include "platform/numbers.h"
#include "platform/profilefile.h"

#include <QFileInfo>

#include <optional>

namespace zorbo {

namespace {

// The value as the profile functions return it; empty optional when the
// file, the section or the key is missing.
std::optional<QString> rawValue(const QString &section, const QString &key, const QString &file)
{
    ProfileFile profile;
    if (!profile.load(file))
        return std::nullopt;
    return profile.value(section, key);
}

} // namespace

QString readinistring(const QString &section, const QString &key, const QString &file,
                      const QString &def)
{
    const std::optional<QString> value = rawValue(section, key, file);
    // The callers trim again, spaces only: that also strips the blanks that
    // a quoted value kept and those of the default.
    return trimspaces(value ? *value : def.left(32766));
}

int readiniint(const QString &section, const QString &key, const QString &file)
{
    const std::optional<QString> value = rawValue(section, key, file);
    if (!value)
        return 0;
    const QString &text = *value;
    qsizetype i = 0;
    while (i < text.size() && (text[i] == QLatin1Char(' ') || text[i] == QLatin1Char('\t')))
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == QLatin1Char('-') || text[i] == QLatin1Char('+')))
        negative = text[i++] == QLatin1Char('-');
    // Beyond the range of int the number wraps as a 32-bit value does.
    quint32 number = 0;
    for (; i < text.size() && text[i] >= QLatin1Char('0') && text[i] <= QLatin1Char('9'); ++i)
        number = number * 10u + quint32(text[i].unicode() - '0');
    return int(negative ? 0u - number : number);
}

QStringList readinisections(const QString &file)
{
    ProfileFile profile;
    profile.load(file);
    QStringList names;
    for (const ProfileFile::Line &line : profile.lines()) {
        if (line.kind == ProfileFile::Kind::Section)
            names.append(line.name);
    }
    return names;
}

QStringList readinisection(const QString &section, const QString &file)
{
    ProfileFile profile;
    if (!profile.load(file))
        return {};
    const int header = profile.findSection(section);
    if (header < 0)
        return {};
    QStringList lines;
    const int end = profile.sectionEnd(header);
    for (int i = header + 1; i < end; ++i) {
        const ProfileFile::Line &line = profile.lines()[size_t(i)];
        if (line.kind == ProfileFile::Kind::Entry)
            lines.append(ProfileFile::trimBlanks(line.text));
    }
    return lines;
}

bool writeini(const QString &section, const QString &key, const QString &value,
              const QString &file)
{
    if (!fitsCp1252(section) || !fitsCp1252(key) || !fitsCp1252(value))
        return false;
    ProfileFile profile;
    // A file that exists but cannot be read must not be replaced by the one
    // line we would write.
    if (!profile.load(file) && QFileInfo::exists(file))
        return false;

    auto &lines = profile.lines();
    const int entry = profile.findEntry(section, key);
    if (entry >= 0) {
        ProfileFile::Line &line = lines[size_t(entry)];
        line = ProfileFile::parseLine(line.name + QLatin1Char('=') + value);
        return profile.save(file);
    }

    const ProfileFile::Line newLine = ProfileFile::parseLine(key + QLatin1Char('=') + value);
    const int header = profile.findSection(section);
    if (header < 0) {
        lines.push_back(ProfileFile::parseLine(QLatin1Char('[') + section + QLatin1Char(']')));
        lines.push_back(newLine);
        return profile.save(file);
    }
    // After the last entry, so that comments and blank lines that close the
    // section stay below it.
    int insertAt = header + 1;
    const int end = profile.sectionEnd(header);
    for (int i = header + 1; i < end; ++i) {
        if (lines[size_t(i)].kind == ProfileFile::Kind::Entry)
            insertAt = i + 1;
    }
    lines.insert(lines.begin() + insertAt, newLine);
    return profile.save(file);
}

} // namespace zorbo
