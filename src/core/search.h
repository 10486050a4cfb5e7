#pragma once

#include "core/playerrank.h"
#include "core/world.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>
#include <memory>

namespace zorbo {

// A name as the search compares it: lower case, without accents, ß as ss,
// the letters that carry no accent of their own (ł, ø, æ) as the plain
// letters a German reader types for them. "Štefan Müller-Straße" is
// "stefan muller-strasse".
QString searchfold(const QString &text);

enum class HitKind { Land, Verein, Spieler };

struct SearchHit {
    HitKind kind = HitKind::Land;
    qint64 number = 0; // the row's NUMMER
    QString text;      // the name as shown: country, club, or "Vorname Name"
    QString detail;    // a player's club and position, as "FC Test, Tor"
    // The tree's key of the node to open: "L<n>" a country, "T<n>" a club, for
    // a player his (first) club; empty when the player is in none.
    QString teamKey;
};

struct SearchResult {
    QList<SearchHit> laender, vereine, spieler; // each at most the limit, by name
    bool isEmpty() const { return laender.isEmpty() && vereine.isEmpty() && spieler.isEmpty(); }
};

// The search over the names of countries, clubs and players, kept in
// temporary tables of the world's connection (nothing goes into the file)
// and brought up to date from the world's change notices. A text finds
// every name that holds it anywhere, without regard to case and accents;
// "#1234" finds the rows numbered 1234. One index serves a world: the
// toolbar's search and the list of all players share it, so a change is
// indexed once.
class SearchIndex : public QObject {
    Q_OBJECT

public:
    // The index of the world's database (none when there is none), made at
    // the first call and living as long as the world; built at the first search.
    static SearchIndex &of(World &world);
    ~SearchIndex() override;

    // Brings parts a large change left out of date up to date first.
    SearchResult find(const QString &text, int limit = 50);

    // Builds all anew, now.
    void rebuild();

    // A condition that holds for the players whose "Vorname Name" holds text
    // as find() matches it, on the player number in column, with one "?"
    // for which *value is to be bound; the index is brought up to date first.
    QString playercondition(const QString &column, const QString &text, QVariant *value);

    // Brings temp.suche_rang (see PlayerRank) up to date, built at its first
    // use; false without a database.
    bool rankplayers();

    // From now on temp.suche_rang is built in pieces of about 20 ms while
    // the event loop is idle, and again each time it has to be made anew,
    // so that the list of all players opens without waiting for it. For
    // the windows; without an event loop it is built at its first use.
    void rankinidle();
    // Whether temp.suche_rang is built (it may still need names changed since).
    bool rankready() const;

private:
    void idlestep();

    explicit SearchIndex(World &world);
    void attach();
    void update(const Change &change);
    void refresh();
    void putteams(const QList<qint64> &numbers);
    void putplayers(const QList<qint64> &numbers);

    World &m_world;
    std::unique_ptr<PlayerRank> m_rank;
    // Parts that a large change left out of date, built at the next search.
    bool m_dirtyTeams = true;
    bool m_dirtyPlayers = true;
    QTimer *m_idle = nullptr;
};

} // namespace zorbo
