#pragma once

#include "core/search.h"
#include "core/world.h"
#include "support/qstringprint.h"
#include "support/testsupport.h"

#include <gtest/gtest.h>

namespace zorbo::test {

// A world of eight players in two clubs, a national team, the market and
// no club, and one free player; names with umlauts, quotes, a semicolon and
// a line break. The generated market is cleared first.
struct PlayersWorld {
    TempFolder dir;
    std::unique_ptr<World> world = openworld(dir.path());
    Database &db() { return *world->db(); }

    PlayersWorld()
    {
        db().exec("DELETE FROM kaderzeilen; DELETE FROM spieler; DELETE FROM verlauf;"
                  "INSERT INTO vereine_national (NUMMER, NAME, NATION, KONTINENT) VALUES "
                  "(1, 'Brasilien', 'Brasilien', 'Süd-Amerika'), (2, 'Deutschland', 'Deutschland', 'West-Europa');"
                  "INSERT INTO vereine (NUMMER, NAME, NATION) VALUES (10, 'FC Köln', 'Deutschland'), (11, 'Santos FC', 'Brasilien');");
        const char *players =
            "INSERT INTO spieler (NUMMER, NAME, VORNAME, \"Stärke\", \"Max_Stärke\", NATION, GROESSE, ART, \"REST_EINSÄTZE\", "
            "RUECKENNUMMER, GESICHT, HAUTFARBE, HAARFARBE, ERLERNT, GESPERRT) VALUES "
            "(1, 'Müller', 'Thomas', 5000, 8000, 'Deutschland', 186, 3, 10, 9, 12345, 1, 2, '3,4', '5'),"
            "(2, 'Özil', 'Mesut', 7000, 9000, 'Deutschland', 180, 2, 0, 10, 0, 0, 0, '', ''),"
            "(3, 'Neuer', 'Manuel', 11000, 12000, 'Deutschland', 193, 0, 5, 1, 0, 0, 0, '', ''),"
            "(4, 'Silva', 'Thiago', 4000, 6000, 'Brasilien', 183, 1, 0, 3, 0, 0, 0, '1', ''),"
            "(5, 'Santos', 'João', 3000, 5000, 'Brasilien', 178, 3, 7, 9, 0, 0, 0, '', ''),"
            "(6, 'Pereira', 'Zé; \"Bola\"' || char(10) || 'Jr.', 2500, 4000, 'Brasilien', 170, 3, 0, 9, 0, 0, 0, '', ''),"
            "(7, 'Ärger', 'Ändi', 1000, 2000, 'Deutschland', 175, 2, 0, 7, 0, 0, 0, '', ''),"
            "(8, 'Markt', 'Max', 6000, 6000, 'TRANSFERMARKT', 180, 1, 3, 4, 0, 0, 0, '', '')";
        db().exec(QString::fromUtf8(players));
        db().exec("INSERT INTO kaderzeilen (verein, spieler) VALUES (10, 1), (10, 2), (10, 3), (2, 3), (11, 4), (11, 5), (11, 6), (0, 8);"
                  "INSERT INTO a4spieler (name, vorname, land, verein, position, staerke, restspiele, rueckennummer, gesicht, "
                  "hautfarbe, haarfarbe) VALUES ('Freimann', 'Fritz', 'Brasilien', 'Altclub', 3, 5000, 7, 9, 0, 0, 0)");
    }
    QStringList players() { return dumpworld(db(), {"spieler", "kaderzeilen"}); }
    QVariant value(const char *sql) { return db().scalar(QString::fromUtf8(sql)); }
};

} // namespace zorbo::test
