#include "platform/profilefile.h"

#include "platform/codepage.h"
#include "platform/safefile.h"

#include <QFile>
#include <QFileInfo>

namespace zorbo {

namespace {

bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

// Splits at CR LF, LF and CR alike; a line end at the very end of the file
// does not start another line.
QStringList splitLines(const QString &text)
{
    QStringList lines;
    qsizetype start = 0;
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = text[i];
        if (c != QLatin1Char('\r') && c != QLatin1Char('\n'))
            continue;
        lines.append(text.mid(start, i - start));
        if (c == QLatin1Char('\r') && i + 1 < n && text[i + 1] == QLatin1Char('\n'))
            ++i;
        start = i + 1;
    }
    if (start < n)
        lines.append(text.mid(start));
    return lines;
}

} // namespace

QString ProfileFile::trimBlanks(const QString &text)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isBlank(text[begin]))
        ++begin;
    while (end > begin && isBlank(text[end - 1]))
        --end;
    return text.mid(begin, end - begin);
}

bool ProfileFile::sameName(const QString &a, const QString &b)
{
    // Unicode case folding covers ASCII and the letters of code page 1252
    // (ä/Ä, š/Š, œ/Œ, ÿ/Ÿ) alike; the index folds the same way.
    return a.toCaseFolded() == b.toCaseFolded();
}

ProfileFile::Line ProfileFile::parseLine(const QString &text)
{
    Line line;
    line.text = text;
    const QString trimmed = trimBlanks(text);
    if (trimmed.isEmpty())
        return line;
    if (trimmed.front() == QLatin1Char(';')) {
        line.kind = Kind::Comment;
        return line;
    }
    if (trimmed.front() == QLatin1Char('[')) {
        line.kind = Kind::Section;
        qsizetype close = trimmed.indexOf(QLatin1Char(']'), 1);
        if (close < 0)
            close = trimmed.size();
        line.name = trimBlanks(trimmed.mid(1, close - 1));
        return line;
    }
    line.kind = Kind::Entry;
    const qsizetype eq = trimmed.indexOf(QLatin1Char('='));
    if (eq < 0) {
        line.name = trimmed;
        return line;
    }
    line.hasValue = true;
    line.name = trimBlanks(trimmed.left(eq));
    line.value = trimBlanks(trimmed.mid(eq + 1));
    return line;
}

bool ProfileFile::load(const QString &path)
{
    m_lines.clear();
    m_indexed = false;
    // Only a plain file: a pipe would block the open, a device never end.
    if (!QFileInfo(path).isFile())
        return false;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    // Read no more than the file holds, whatever the device claims later.
    const qint64 size = file.size();
    if (size > maxBytes)
        return false;
    const QByteArray bytes = file.read(size);
    if (bytes.size() != size)
        return false;
    parse(bytes);
    return true;
}

void ProfileFile::parse(const QByteArray &bytes)
{
    m_lines.clear();
    m_indexed = false;
    const QStringList texts = splitLines(fromCp1252(bytes));
    m_lines.reserve(size_t(texts.size()));
    for (const QString &t : texts)
        m_lines.push_back(parseLine(t));
}

bool ProfileFile::save(const QString &path) const
{
    QString text;
    for (const Line &line : m_lines) {
        text += line.text;
        text += QLatin1String("\r\n");
    }
    const auto bytes = toCp1252(text);
    if (!bytes)
        return false;
    return replacefile(path, *bytes).ok;
}

void ProfileFile::buildIndex() const
{
    m_sections.clear();
    m_entries.clear();
    QString current; // folded name of the section the lines belong to
    bool searched = false; // only the first section of a name is searched
    for (size_t i = 0; i < m_lines.size(); ++i) {
        const Line &line = m_lines[i];
        if (line.kind == Kind::Section) {
            current = line.name.toCaseFolded();
            searched = !m_sections.contains(current);
            if (searched)
                m_sections.insert(current, int(i));
        } else if (searched && line.kind == Kind::Entry && line.hasValue) {
            const QString key = current + QLatin1Char('\n') + line.name.toCaseFolded();
            if (!m_entries.contains(key))
                m_entries.insert(key, int(i));
        }
    }
    m_indexed = true;
}

int ProfileFile::findSection(const QString &section) const
{
    if (!m_indexed)
        buildIndex();
    return m_sections.value(section.toCaseFolded(), -1);
}

int ProfileFile::sectionEnd(int header) const
{
    size_t i = size_t(header) + 1;
    while (i < m_lines.size() && m_lines[i].kind != Kind::Section)
        ++i;
    return int(i);
}

int ProfileFile::findEntry(const QString &section, const QString &key) const
{
    if (!m_indexed)
        buildIndex();
    return m_entries.value(section.toCaseFolded() + QLatin1Char('\n') + key.toCaseFolded(), -1);
}

std::optional<QString> ProfileFile::value(const QString &section, const QString &key) const
{
    // The profile functions fill a buffer of 32,767 characters, one of which
    // is the terminating zero.
    constexpr qsizetype valueLimit = 32766;
    const int entry = findEntry(section, key);
    if (entry < 0)
        return std::nullopt;
    const QString &v = m_lines[size_t(entry)].value;
    const bool quoted = v.size() >= 2 && (v.front() == QLatin1Char('"') || v.front() == QLatin1Char('\'')) && v.back() == v.front();
    return (quoted ? v.mid(1, v.size() - 2) : v).left(valueLimit);
}

QString ProfileFile::writtenvalue(const QString &text)
{
    if (text.isEmpty())
        return text;
    const auto blank = [](QChar c) { return c == QLatin1Char(' ') || c == QLatin1Char('\t'); };
    const bool quoted = text.size() >= 2 && (text.front() == QLatin1Char('"') || text.front() == QLatin1Char('\''))
                        && text.back() == text.front();
    if (!blank(text.front()) && !blank(text.back()) && !quoted)
        return text;
    return QLatin1Char('"') + text + QLatin1Char('"');
}

} // namespace zorbo
