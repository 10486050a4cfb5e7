#pragma once

#include "platform/codepage.h"
#include "platform/database.h"
#include "platform/operation.h"
#include "platform/profilefile.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <array>

namespace zorbo {

// An exporter file (.aet, .lig or .lan), read once and looked up as the
// profile functions do: sections and keys without regard to case, values
// trimmed of blanks, a missing section or key gives the caller's default,
// at most 32,766 characters, code page 1252.
enum class AetKind {
    Club,   // .aet: one club with its players
    League, // .lig, .lan: the club files of leagues
};

class AetFile {
public:
    // Reads the file. Fails, naming the file, when it is missing, no plain
    // file, unreadable, larger than an exporter file can be or no text; when
    // nothing of a file of its kind is in it; for a club file, when a key the
    // import reads holds a number beyond 32 bits or a text longer than the
    // world stores. Detect refuses a file that reads as UTF-8 and sets
    // looksUtf8(), so that the user can be asked; Utf8 reads it as such.
    Result load(const QString &path, AetKind kind = AetKind::Club, FileEncoding encoding = FileEncoding::Detect);
    bool looksUtf8() const { return m_looksUtf8; }
    const QString &path() const { return m_path; }
    // The file's name for messages, in the system's separators.
    QString shownname() const;

    QString value(const QString &section, const QString &key, const QString &def = {}) const;
    // The number at the start of a value, as the readers of numbers take it
    // (no number gives 0); Fault for one beyond 32 bits, which no column holds.
    double number(const QString &section, const QString &key, const QString &def = {}) const;
    bool has(const QString &section, const QString &key) const;
    bool hasSection(const QString &section) const;
    QStringList sections() const;
    // The section's key=value lines in file order, trimmed.
    QStringList sectionlines(const QString &section) const;

    // A fault at a key of the file: the message names file, section and key.
    [[noreturn]] void fail(const QString &section, const QString &key, const QString &what) const;

private:
    Result checkclub() const;
    Result checkleague() const;
    void checklength(const QString &section, const QString &key) const;

    ProfileFile m_profile;
    QString m_path;
    bool m_looksUtf8 = false;
};

// Section of the file's player i, counted from 0.
QString aetsection(int i);
// The position texts of the lists, by art 0 to 3.
QString positiontext(int art);

// The number of players that the section team announces. Throws Fault when
// one of their sections is missing.
int aetplayercount(const AetFile &file);
// The player's Position, def when the key is missing; Fault outside 0 to 3.
int aetposition(const AetFile &file, int i, const QString &def);
// Face code and the two colours of e_gesichtsfarbe for the player's
// Hautfarbe and Haarfarbe (empty default): gesichtbauen draws its numbers
// from the program's generator. Fault for a skin other than 0 or 1 or a
// pair without a row.
struct AetFace {
    qint64 code = 0;
    qint64 hautfarbe = 0;
    qint64 haarfarbe = 0;
};
AetFace aetface(Database &db, const AetFile &file, int i);
// A colour key of section team as stored (the file's spacing), def when the
// key is missing; Fault when it is not three numbers 0 to 255 joined by commas.
QString aetcolourtext(const AetFile &file, const QString &key, const QString &def);
// The same, split into red, green and blue.
std::array<int, 3> aetcolour(const AetFile &file, const QString &key, const QString &def);

// The face code of an exporter player: skin code h (0 or 1) and hair code c;
// nose, mouth, eyes and chin drawn from the program's generator in that order.
qint64 gesichtbauen(int h, int c);

} // namespace zorbo
