#pragma once

#include "core/generator.h"
#include "platform/codepage.h"
#include "platform/random.h"
#include "support/testsupport.h"

#include <QDir>
#include <QFileInfo>
#include <gtest/gtest.h>

namespace zorbo::test {

// A player section of an exporter file; empty fields are left out.
struct AetPlayer {
    QString name;
    QString vorname = QStringLiteral("Anton");
    QString position = QStringLiteral("2");
    QString staerke = QStringLiteral("4000");
    QString extra = {}; // further lines, "key=value\r\n" each
};

// The text of an exporter file: the team section, then one section per player.
inline QString aettext(const QString &team, const QList<AetPlayer> &players)
{
    QString text = QStringLiteral("[Team]\r\n") + team + QStringLiteral("Spieler=%1\r\n").arg(players.size());
    for (int i = 0; i < players.size(); ++i) {
        const AetPlayer &p = players[i];
        text += QStringLiteral("[Spieler%1]\r\n").arg(i + 1);
        for (const auto &[key, value] : {std::pair{"Name", p.name}, {"Vorname", p.vorname}, {"Position", p.position},
                                         {"Staerke", p.staerke}}) {
            if (!value.isNull())
                text += QLatin1String(key) + QLatin1Char('=') + value + QStringLiteral("\r\n");
        }
        text += QStringLiteral("Land=Deutschland\r\nRestspiele=10\r\nRueckennummer=%1\r\nHautfarbe=0\r\nHaarfarbe=3\r\n")
                    .arg(i + 1);
        text += p.extra;
    }
    return text;
}

// counts[art] players of each position, strength falling with the place.
inline QList<AetPlayer> squadof(const std::array<int, 4> &counts)
{
    QList<AetPlayer> players;
    for (int art = 0; art < 4; ++art) {
        for (int k = 0; k < counts[size_t(art)]; ++k)
            players.append({QStringLiteral("P%1_%2").arg(art).arg(k), QStringLiteral("Vor"), QString::number(art),
                            QString::number(10000 - 500 * k)});
    }
    return players;
}

inline QString writeaet(const TempFolder &dir, const QString &name, const QString &text)
{
    const QString path = dir.file(name);
    QDir().mkpath(QFileInfo(path).absolutePath());
    EXPECT_TRUE(writeBytes(path, *toCp1252(text)));
    return path;
}

// A fresh world with club 7 ("Altverein", Deutschland) and its 20 generated
// players; the generator restarts, so each test draws the same numbers.
struct ClubWorld : ::testing::Test {
    NewWorld world;
    TempFolder files;
    static constexpr qint64 club = 7;

    void SetUp() override
    {
        db().run("INSERT INTO vereine (NUMMER, NAME, KURZNAME, GRAFIK_NR, STADT, NATION, STADION_NAME, STADION_SITZPL, "
                 "STADION_STEHPL, TRIKOT_ART, AUSWEICH_TRIKOT_ART, TW_TRIKOT_ART) VALUES (7, 'Altverein', 'ALT', 12, "
                 "'Altstadt', 'Deutschland', 'Altstadion', 100, 200, 3, 4, 5)");
        spieler20new(db(), club, QStringLiteral("Deutschland"), 20);
        rnd().restart();
    }
    Database &db() { return world.db(); }
    QList<qint64> squadslots()
    {
        QList<qint64> out;
        Statement st = db().prepare("SELECT spieler FROM vereinspieler WHERE verein = 7 ORDER BY spieler");
        while (st.step())
            out.append(st.integer(0));
        return out;
    }
};

} // namespace zorbo::test
