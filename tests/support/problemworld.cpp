#include "support/problemworld.h"

#include "core/facecode.h"

#include <QDir>
#include <QFile>

namespace zorbo::test {

namespace {

void touch(const QString &path)
{
    QFile f(path);
    f.open(QIODevice::WriteOnly);
}

} // namespace

Settings testsettings(const QString &folder)
{
    Settings settings;
    settings.programFolder = folder;
    for (size_t i = 0; i < settings.verzeichnisse.size(); ++i)
        settings.verzeichnisse[i] = folder + QStringLiteral("/ordner%1/").arg(i);
    return settings;
}

Settings makecleanworld(Database &db, const QString &folder)
{
    const Settings settings = testsettings(folder);
    makecleanworld(db, settings);
    return settings;
}

void makecleanworld(Database &db, const Settings &settings)
{
    QDir().mkpath(settings.folder(GesichtFolder));
    QDir().mkpath(settings.folder(WappenFolder));
    for (int farbe : {0, 1})
        for (int part = 0; part < FacePartCount; ++part)
            touch(settings.folder(GesichtFolder) + facepicture(farbe, part, 1));
    touch(settings.folder(WappenFolder) + QStringLiteral("vereins_wappen_5.tga"));

    const QString colour = QStringLiteral("255,255,255");
    db.run("INSERT INTO vereine_national VALUES (1, 'Deutschland', 'GER', 5, 0, 0, '', 'Olympiastadion', 'Berlin', "
           "'1,2,3', 'Deutschland', 'West-Europa', 1000, 2000, 0, 70, 10, 0, ?1, ?1, ?1, ?1, ?1, ?1, ?1, ?1, ?1, ?1, "
           "?1, ?1, '', '')",
           colour);
    db.run("INSERT INTO vereine VALUES (10, 'FC Test', 'Test', 5, 0, 0, '', 'Teststadion', 'Köln', 'deutschland', "
           "1000, 2000, 0, 70, 10, 0, ?1, ?1, ?1, ?1, ?1, ?1, ?1, ?1, ?1, ?1, ?1, ' 48, 48, 48')",
           colour);
    db.run("INSERT INTO vereine (NUMMER, NAME, GRAFIK_NR) VALUES (0, 'TRANSFERMARKT', 999)");
    for (int i = 0; i < 20; ++i) {
        db.run("INSERT INTO spieler VALUES (?1, 'Müller', 'T.', 2000, 4000, 'Deutschland', 180, ?2, 100, 0, 0, ?3, 0, 0, "
               "0, '1,2', '')",
               100 + i, i == 0 ? 0 : 2, i + 1);
        db.run("INSERT INTO vereinspieler VALUES (10, ?1)", 100 + i);
    }
    // The national team calls up the club's keeper: a player of a club and
    // of his country is no player of two clubs.
    db.run("INSERT INTO vereinspieler VALUES (1, 100)");
}

void addeveryproblem(Database &db)
{
    db.run("UPDATE vereine SET NAME = 'FC Test Langername', F_HOSE_SPIELER = '255,0', TRIKOT_ART = 95 WHERE NUMMER = 10");
    db.run("UPDATE spieler SET RUECKENNUMMER = 1 WHERE NUMMER = 101");
    db.run("UPDATE spieler SET NAME = 'Łukasz' WHERE NUMMER = 102");
    db.run("UPDATE spieler SET GESICHT = ?1 WHERE NUMMER = 103", faceweights[Haare]); // hair picture 2
    db.run("UPDATE spieler SET ERLERNT = '3,53' WHERE NUMMER = 104");
    db.run("UPDATE vereine_national SET GRAFIK_NR = 7, STADT = NULL WHERE NUMMER = 1");
    db.run("INSERT INTO spieler (NUMMER, NAME, VORNAME, NATION, GESICHT) VALUES (3000000000, 'Groß', 'G.', 'Deutschland', 0)");
    db.run("INSERT INTO vereinspieler VALUES (0, 3000000000)");
    db.run("INSERT INTO spieler (NUMMER, NAME, VORNAME, NATION, GESICHT) VALUES (200, 'Allein', 'A.', 'Deutschland', 0)");
    db.run("INSERT INTO vereinspieler VALUES (0, 999)");
    db.run("INSERT INTO vereinspieler VALUES (0, 105)");
    db.run("INSERT INTO vereine SELECT 20, 'SV Nirgendwo', KURZNAME, GRAFIK_NR, STAERKE, STARTPLATZ, SPIELER, "
           "STADION_NAME, STADT, 'Atlantika', STADION_SITZPL, STADION_STEHPL, 0, 70, 10, 0, F_TRIKOT_SPIELER, "
           "F_AUSW_TRIKOT_SPIELER, F_ALTERN_TRIKOT_SPIELER, F_TRIKOT_SPIELER, F_AUSW_HOSE_SPIELER, "
           "F_ALTERN_HOSE_SPIELER, F_TRIKOT_WERBUNG, F_HOSE_STREIFEN, F_TRIKOT_TORWART, F_HOSE_TORWART, "
           "F_TRIKOT_TRAINER, F_HOSE_TRAINER FROM vereine WHERE NUMMER = 10");
    db.run("INSERT INTO spieler (NUMMER, NAME, VORNAME, NATION, ART, GESICHT) VALUES (300, 'Fern', 'F.', 'Deutschland', 1, 0)");
    db.run("INSERT INTO vereinspieler VALUES (20, 300)");
    db.run("INSERT INTO vereine_national SELECT 2, 'Schweiz', KURZNAME, GRAFIK_NR, STAERKE, STARTPLATZ, SPIELER, "
           "STADION_NAME, 'Bern', KLIMA, 'Schweiz', 'Europa', STADION_SITZPL, STADION_STEHPL, TRIKOT_ART, "
           "TW_TRIKOT_ART, AUSWEICH_TRIKOT_ART, AUSWEICH_TW_TRIKOT_ART, F_TRIKOT_SPIELER, F_AUSW_TRIKOT_SPIELER, "
           "F_ALTERN_TRIKOT_SPIELER, F_HOSE_SPIELER, F_AUSW_HOSE_SPIELER, F_ALTERN_HOSE_SPIELER, F_TRIKOT_WERBUNG, "
           "F_HOSE_STREIFEN, F_TRIKOT_TORWART, F_HOSE_TORWART, F_TRIKOT_TRAINER, F_HOSE_TRAINER, NATIONALTEAM, "
           "LANDNAME FROM vereine_national WHERE NUMMER = 1");
    db.run("UPDATE vereine_national SET GRAFIK_NR = 5 WHERE NUMMER = 2");
}

} // namespace zorbo::test
