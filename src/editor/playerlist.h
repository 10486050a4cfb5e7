#pragma once

#include "core/search.h"
#include "core/world.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <optional>

namespace zorbo {

// The columns of the list of all players, in their order on screen.
enum class ListColumn {
    Nummer, Name, Vorname, Verein, Land, Kontinent, Position, Staerke, MaxStaerke, Groesse, Rueckennummer,
    Einsaetze,
};
inline constexpr int listColumnCount = 12;

// German heading of a column, as the list and the CSV file name it.
QString listcolumnname(ListColumn column);

// What the list shows of a club: the team's name, or one of these.
inline constexpr const char *vereinslos = "vereinslos";
inline constexpr const char *transfermarkt = "Transfermarkt";
inline constexpr const char *freiespieler = "Freie Spieler";

// "Tor", "Abwehr", "Mittelfeld", "Sturm"; empty outside 0 to 3.
QString positionname(qint64 art);
// The position a text names: a name of positionname (any case), its first
// three letters ("STU") or the number 0 to 3.
std::optional<int> parseposition(const QString &text);

// Which players the list shows. Every part that is set narrows the list;
// strengths are in units (2000 to the star), both ends included.
struct PlayerFilter {
    QString text;                  // any part of name or first name, without regard to case and accents
    QString land;                  // the country's name, as samename compares
    QString kontinent;
    std::optional<qint64> verein;  // a team's number; 0 the transfer market
    QString vereinName;            // or a team's name, as samename compares
    std::optional<int> position;
    std::optional<qint64> staerkeVon, staerkeBis;
    bool ohneVerein = false;       // players in no squad
    bool doppelteNummer = false;   // a squad number twice in one of his teams
    bool problem = false;          // named by the problem check
    bool freie = true;             // the free players (a4spieler) too

    bool operator==(const PlayerFilter &) const = default;
};

// Reads a filter written as "land=Brasilien; position=Sturm; sterne<3": terms
// separated by ";", each a key, an operator and a value (see filterhelp()).
// On a fault, *error names the term in German and the result is empty.
std::optional<PlayerFilter> parsefilter(const QString &expression, QString *error);
// The filter as the expression parsefilter() reads back.
QString filterexpression(const PlayerFilter &filter);
// The explanation of the filter expression, for --help and the README.
QString filterhelp();

// A row of the list. A free player (frei) is numbered by his row of
// a4spieler, the others by NUMMER of spieler.
struct PlayerRow {
    bool frei = false;
    qint64 nummer = 0;
    QString name, vorname;
    qint64 vereinNr = -1;    // the first team of his squads; -1 for none
    QString verein;          // its name, or vereinslos, transfermarkt, freiespieler
    QString land, kontinent;
    QVariant art, staerke, maxstaerke, groesse, rueckennummer, einsaetze; // Null where the row has none

    QVariant value(ListColumn column) const;
};

// The list of all players, filtered and sorted in the database: each filter
// is one statement with bound values, text goes through the search index,
// names sort in German order. Rows are read a window at a time.
class PlayerQuery {
public:
    PlayerQuery(World &world, SearchIndex &index);
    ~PlayerQuery();

    // Sets the filter; the problem check runs once when problem is set.
    void setfilter(const PlayerFilter &filter);
    const PlayerFilter &filter() const { return m_filter; }
    void setsort(ListColumn column, bool descending = false);

    // Rows the filter lets through; all players of the world.
    qint64 count();
    qint64 total();
    // Rows from offset on, at most limit, in the sort order.
    QList<PlayerRow> rows(qint64 offset, int limit);
    // NUMMER of every player in spieler that the filter lets through (no free players).
    QList<qint64> numbers();

private:
    QString arm(int which, const QList<ListColumn> &columns, QVariantList &values, bool ranked = false);
    QString statement(const QList<ListColumn> &columns, QVariantList &values, bool ranked = false);
    void refreshjoins();
    void refreshsquads();
    void markproblems();
    std::optional<QString> rankedfilter(QVariantList &values);

    World &m_world;
    SearchIndex &m_index;
    PlayerFilter m_filter;
    ListColumn m_sortColumn = ListColumn::Name;
    bool m_descending = false;
    QString m_order;
    std::optional<qint64> m_count;
    bool m_joinsDirty = true;
    bool m_problemsDirty = true;
    QMetaObject::Connection m_watch;
};

// A strength in stars as a user types it ("3,5", "3.5", "3,5 Sterne"), in
// units; exact to the unit, so "1,25" is 2500. Nothing for other text.
std::optional<qint64> parsestars(const QString &text);
// Units as stars with a decimal comma, exact and without trailing zeros:
// 2500 is "1,25", 7000 "3,5", 6000 "3".
QString starstext(qint64 units);

// The count as the list's status shows it: "4.312 von 101.700 Spielern".
QString countline(qint64 shown, qint64 total);

} // namespace zorbo
