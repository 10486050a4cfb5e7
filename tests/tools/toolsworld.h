#pragma once

#include "core/market.h"
#include "support/qstringprint.h"
#include "support/testsupport.h"

#include <QString>

namespace zorbo::test {

// A fresh world with its transfer market, and helpers that add clubs,
// players and free players to it.
struct ToolsWorld : NewWorld {
    // The market's generated players move to numbers from 100000 on, out of
    // the way of the players the tests make.
    ToolsWorld()
    {
        ensuretransfermarket(db());
        db().exec("UPDATE spieler SET NUMMER = NUMMER + 100000; UPDATE vereinspieler SET spieler = spieler + 100000");
    }

    void club(qint64 nummer, const QString &name, bool national = false)
    {
        db().run(national ? QStringLiteral("INSERT INTO vereine_national (NUMMER, NAME) VALUES (?1, ?2)")
                          : QStringLiteral("INSERT INTO vereine (NUMMER, NAME) VALUES (?1, ?2)"),
                 nummer, name);
    }
    // A player of team with the given data; height 190, favourite place 0.5/0.25.
    void player(qint64 nummer, qint64 team, const QString &name, const QString &vorname = QStringLiteral("A."),
                qint64 number = 1, int art = 1, qint64 staerke = 4000)
    {
        db().run(QStringLiteral("INSERT INTO spieler VALUES (?1, ?2, ?3, ?4, ?5, 'Deutschland', 190, ?6, 33, 0.5, 0.25, "
                                "?7, 12345, 1, 2, '3,4', '5')"),
                 nummer, name, vorname, staerke, staerke + 2000, art, number);
        member(team, nummer);
    }
    void member(qint64 team, qint64 nummer)
    {
        db().run(QStringLiteral("INSERT INTO vereinspieler VALUES (?1, ?2)"), team, nummer);
    }
    qint64 freeplayer(const QString &name, const QString &vorname, const QString &land, const QString &verein,
                      int position = 2, qint64 staerke = 6000)
    {
        db().run(QStringLiteral("INSERT INTO a4spieler (name, vorname, land, verein, position, staerke, restspiele, "
                                "rueckennummer, gesicht, hautfarbe, haarfarbe) VALUES (?1, ?2, ?3, ?4, ?5, ?6, 7, 9, 4242, "
                                "0, 3)"),
                 name, vorname, land, verein, position, staerke);
        return db().lastInsertId();
    }
    QVariant value(const QString &sql, qint64 key) { return db().scalar(sql, key); }
    qint64 count(const QString &sql) { return db().scalar(sql).toLongLong(); }
};

} // namespace zorbo::test
