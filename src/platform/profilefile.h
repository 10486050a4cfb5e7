#pragma once

#include <QString>
#include <QStringList>
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

    // False when the file is missing or cannot be read; then no lines.
    bool load(const QString &path);
    // Writes all lines with CR LF, in code page 1252, through a temporary
    // file renamed over the original.
    bool save(const QString &path) const;

    std::vector<Line> &lines() { return m_lines; }
    const std::vector<Line> &lines() const { return m_lines; }

    // Index of the header of the first section of that name, or -1.
    int findSection(const QString &section) const;
    // One past the last line of the section whose header is at index.
    int sectionEnd(int header) const;
    // Index of the first entry of key in the first section of that name, or -1.
    int findEntry(const QString &section, const QString &key) const;

    static Line parseLine(const QString &text);
    static bool sameName(const QString &a, const QString &b);
    static QString trimBlanks(const QString &text);

private:
    std::vector<Line> m_lines;
};

} // namespace zorbo
