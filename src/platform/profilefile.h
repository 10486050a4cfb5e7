#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace zorbo {

// One profile file in memory, line by line, as the profile functions see it.
// Kept apart from profile.cpp so that reading and writing share one parser.
class ProfileFile {
public:
    enum class Kind { Blank, Comment, Section, Entry };

    struct Line {
        QString text; // as in the file, without the line end
        Kind kind = Kind::Blank;
        QString name; // section name, or the key of an entry (trimmed)
        QString value; // entry value, trimmed of blanks; quotes still on
        bool hasValue = false; // the entry holds an '='
    };

    // No settings, team, crest list or exporter file comes near this; a
    // line in memory takes many times its bytes, so larger files are not read.
    static constexpr qint64 maxBytes = qint64(8) << 20;

    // False when the file is missing, cannot be read or is larger than
    // maxBytes; then no lines.
    bool load(const QString &path);
    // Takes the lines from bytes in code page 1252.
    void parse(const QByteArray &bytes);
    // Writes all lines with CR LF, in code page 1252, through a temporary
    // file renamed over the original.
    bool save(const QString &path) const;

    // Changing the lines drops the index of sections and keys.
    std::vector<Line> &lines()
    {
        m_indexed = false;
        return m_lines;
    }
    const std::vector<Line> &lines() const { return m_lines; }

    // Index of the header of the first section of that name, or -1.
    int findSection(const QString &section) const;
    // One past the last line of the section whose header is at index.
    int sectionEnd(int header) const;
    // Index of the first entry of key in the first section of that name, or -1.
    int findEntry(const QString &section, const QString &key) const;
    // The value as the profile functions give it back: outer quotes taken
    // off, at most 32,766 characters; empty when section or key is missing.
    std::optional<QString> value(const QString &section, const QString &key) const;
    // What to write after the '=' so that value() gives the text back as it
    // is: texts with blanks at either end, or in a pair of like quotes, go
    // into one more pair of double quotes.
    static QString writtenvalue(const QString &text);

    static Line parseLine(const QString &text);
    static bool sameName(const QString &a, const QString &b);
    static QString trimBlanks(const QString &text);

private:
    void buildIndex() const;

    std::vector<Line> m_lines;
    // Looked up by name instead of walking the lines, so that a file of many
    // lines is not walked again for each of its keys.
    mutable bool m_indexed = false;
    mutable QHash<QString, int> m_sections; // folded name: first header
    mutable QHash<QString, int> m_entries;  // folded section '\n' folded key: first entry
};

} // namespace zorbo
