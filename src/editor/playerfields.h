#pragma once

#include "platform/database.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QVariant>
#include <map>
#include <optional>

namespace zorbo {

// How a field of spieler travels as text: in the CSV file, in a bulk edit,
// in a preview.
enum class FieldType {
    Text,
    Whole,
    Stars,    // units, written as stars with a decimal comma ("3,5")
    Position, // ART, written as its name ("Sturm")
    Talents,  // a talent list, written with blanks ("3 17"): "3,17" would be a number to a spreadsheet
};

// A field of spieler under its German heading.
struct PlayerField {
    QString heading; // "Stärke"
    QString column;  // "Stärke" as spieler names it
    FieldType type = FieldType::Whole;
};

// The fields in the order of the CSV file's columns: Nummer, Name, Vorname,
// Land, Position, Stärke, Maxstärke, Größe, Rückennummer, Resteinsätze,
// Gesicht, Hautfarbe, Haarfarbe, Erlernt, Gesperrt.
const QList<PlayerField> &playerfields();
// The field of a heading or a column name, in any case; null for none.
const PlayerField *playerfield(const QString &name);

// A stored value as text: stars with a decimal comma, positions by name,
// Null as empty text.
QString fieldtext(const PlayerField &field, const QVariant &value);
// The value a text stands for, checked against what the windows let the
// user enter (names of 32 characters, strengths of 0 to 6 stars, ...).
// Empty text of a number field gives Null. Nothing, and *why in German
// ("„abc“ ist keine ganze Zahl"), for a text that doesn't fit.
std::optional<QVariant> parsefield(const PlayerField &field, const QString &text, QString *why);

// Rows of spieler by the fields of playerfields(), in that order: of the
// players numbered (each once, by NUMMER), or of all when numbers is null.
QHash<qint64, QVariantList> readplayers(Database &db, const QList<qint64> *numbers);

// Writes the fields of players that differ from what they were, or new
// rows; statements prepared once per set of columns.
class PlayerWriter {
public:
    explicit PlayerWriter(Database &db) : m_db(db) {}
    // Writes the fields in which after differs from before; false when none does.
    bool update(const QVariantList &before, const QVariantList &after);
    void insert(const QVariantList &values);

private:
    Database &m_db;
    std::map<QString, Statement> m_updates;
};

// One field of a player that a run would change.
struct PlayerFieldChange {
    QString field; // heading
    QString before;
    QString after;
};

// A player a run would change or create, for a preview.
struct PlayerChange {
    qint64 nummer = 0;
    QString name; // "Vorname Name" as it was
    bool created = false;
    QList<PlayerFieldChange> fields;
};

// Whether two values are the same as the database keeps them: 3 and "3"
// differ, Null and "" too.
bool samevalue(const QVariant &a, const QVariant &b);
// Whether two rows of readplayers() differ in any field.
bool differs(const QVariantList &before, const QVariantList &after);

// The changes of one player as a preview shows them; no fields when the two
// are the same.
PlayerChange changeof(const QVariantList &before, const QVariantList &after);

} // namespace zorbo
