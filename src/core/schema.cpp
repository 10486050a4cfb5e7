#include "core/schema.h"

#include "core/history.h"
#include "platform/fileerror.h"

#include <QFile>
#include <QFileInfo>

namespace zorbo {

namespace {

// Column order is a file format: the configuration writers walk the columns
// by position, and inserts give all values by position.
const char *const schemaSql = R"SQL(
CREATE TABLE vereine (
  NUMMER INTEGER PRIMARY KEY, NAME TEXT, KURZNAME TEXT, GRAFIK_NR INTEGER,
  STAERKE REAL, STARTPLATZ REAL, SPIELER TEXT, STADION_NAME TEXT, STADT TEXT,
  NATION TEXT, STADION_SITZPL INTEGER, STADION_STEHPL INTEGER,
  TRIKOT_ART INTEGER, TW_TRIKOT_ART INTEGER, AUSWEICH_TRIKOT_ART INTEGER, AUSWEICH_TW_TRIKOT_ART INTEGER,
  F_TRIKOT_SPIELER TEXT, F_AUSW_TRIKOT_SPIELER TEXT, F_ALTERN_TRIKOT_SPIELER TEXT, F_HOSE_SPIELER TEXT,
  F_AUSW_HOSE_SPIELER TEXT, F_ALTERN_HOSE_SPIELER TEXT, F_TRIKOT_WERBUNG TEXT, F_HOSE_STREIFEN TEXT,
  F_TRIKOT_TORWART TEXT, F_HOSE_TORWART TEXT, F_TRIKOT_TRAINER TEXT, F_HOSE_TRAINER TEXT
) STRICT;
CREATE INDEX vereine_nation ON vereine (NATION);

CREATE TABLE vereine_national (
  NUMMER INTEGER PRIMARY KEY, NAME TEXT, KURZNAME TEXT, GRAFIK_NR INTEGER,
  STAERKE REAL, STARTPLATZ REAL, SPIELER TEXT, STADION_NAME TEXT, STADT TEXT,
  KLIMA TEXT, NATION TEXT, KONTINENT TEXT, STADION_SITZPL INTEGER, STADION_STEHPL INTEGER,
  TRIKOT_ART INTEGER, TW_TRIKOT_ART INTEGER, AUSWEICH_TRIKOT_ART INTEGER, AUSWEICH_TW_TRIKOT_ART INTEGER,
  F_TRIKOT_SPIELER TEXT, F_AUSW_TRIKOT_SPIELER TEXT, F_ALTERN_TRIKOT_SPIELER TEXT, F_HOSE_SPIELER TEXT,
  F_AUSW_HOSE_SPIELER TEXT, F_ALTERN_HOSE_SPIELER TEXT, F_TRIKOT_WERBUNG TEXT, F_HOSE_STREIFEN TEXT,
  F_TRIKOT_TORWART TEXT, F_HOSE_TORWART TEXT, F_TRIKOT_TRAINER TEXT, F_HOSE_TRAINER TEXT,
  NATIONALTEAM TEXT, LANDNAME TEXT
) STRICT;

CREATE TABLE spieler (
  NUMMER INTEGER PRIMARY KEY, NAME TEXT, VORNAME TEXT, "Stärke" INTEGER, "Max_Stärke" INTEGER,
  NATION TEXT, GROESSE INTEGER, ART INTEGER, "REST_EINSÄTZE" INTEGER,
  LIEBLINGSPOS_X REAL, LIEBLINGSPOS_Y REAL, RUECKENNUMMER INTEGER,
  GESICHT INTEGER, HAUTFARBE INTEGER, HAARFARBE INTEGER, ERLERNT TEXT, GESPERRT TEXT
) STRICT;


CREATE TABLE a4spieler (
  id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT, vorname TEXT, land TEXT, verein TEXT,
  position INTEGER, staerke INTEGER, restspiele INTEGER, rueckennummer INTEGER,
  gesicht INTEGER, hautfarbe INTEGER, haarfarbe INTEGER
) STRICT;

CREATE TABLE e_attribute (
  id INTEGER PRIMARY KEY, name TEXT, beschreibung TEXT,
  voraus1 INTEGER, voraus2 INTEGER, voraus3 INTEGER,
  schutz1 INTEGER, schutz2 INTEGER, schutz3 INTEGER
) STRICT;
CREATE TABLE e_gesichtsfarbe (
  Haare INTEGER, farbe INTEGER, Hautfarbe INTEGER, Haarfarbe INTEGER,
  PRIMARY KEY (Haare, farbe)
) STRICT;
CREATE TABLE e_landkontinent (
  id INTEGER PRIMARY KEY, land TEXT, kontinent TEXT, liga INTEGER, teams INTEGER, quali TEXT
) STRICT;
CREATE TABLE e_trikotfarbeoriginal (
  Nummer INTEGER PRIMARY KEY, Trikot1 TEXT, Trikot2 TEXT, Hose TEXT, Streifen TEXT
) STRICT;
CREATE TABLE e_trikotfarbezorbode (
  Nummer INTEGER PRIMARY KEY, Trikot1 TEXT, Trikot2 TEXT, Hose TEXT, Streifen TEXT
) STRICT;

-- Highest team numbers of the one number space over both team tables.
CREATE VIEW maxteamnr AS
SELECT max(NUMMER) AS maxnr FROM vereine
UNION ALL SELECT max(NUMMER) FROM vereine_national;

CREATE VIEW a4spielerzufall AS SELECT * FROM a4spieler ORDER BY random();
)SQL";

// The squads. Their rows live in kaderzeilen, whose key zeile keeps each
// row's place (a squad's order) and lets the history name a row; everyone
// else reads and writes the two columns of the game's files through the
// view vereinspieler. A squad may name a player twice, so the triggers
// change one matching row per row of the view.
const char *const squadSql = R"SQL(
CREATE TABLE kaderzeilen (zeile INTEGER PRIMARY KEY, verein INTEGER, spieler INTEGER) STRICT;
CREATE INDEX kaderzeilen_verein ON kaderzeilen (verein);
CREATE INDEX kaderzeilen_spieler ON kaderzeilen (spieler);

CREATE VIEW vereinspieler AS SELECT verein, spieler FROM kaderzeilen;
CREATE TRIGGER vereinspieler_einfuegen INSTEAD OF INSERT ON vereinspieler
BEGIN
  INSERT INTO kaderzeilen (verein, spieler) VALUES (NEW.verein, NEW.spieler);
END;
CREATE TRIGGER vereinspieler_aendern INSTEAD OF UPDATE ON vereinspieler
BEGIN
  UPDATE kaderzeilen SET verein = NEW.verein, spieler = NEW.spieler WHERE zeile =
    (SELECT min(zeile) FROM kaderzeilen WHERE verein IS OLD.verein AND spieler IS OLD.spieler);
END;
CREATE TRIGGER vereinspieler_loeschen INSTEAD OF DELETE ON vereinspieler
BEGIN
  DELETE FROM kaderzeilen WHERE zeile =
    (SELECT min(zeile) FROM kaderzeilen WHERE verein IS OLD.verein AND spieler IS OLD.spieler);
END;

-- A player with his club, in the column order of the player grid.
CREATE VIEW spielerinvereine AS
SELECT s.NUMMER AS nummer, s.NAME AS name, s.VORNAME AS vorname, s."Stärke" AS "stärke",
       s."Max_Stärke" AS "MAX_STÄRKE", s.NATION AS NATION, s.GROESSE AS GROESSE, s.ART AS art,
       s.RUECKENNUMMER AS rueckennummer, s."REST_EINSÄTZE" AS "REST_EINSÄTZE",
       s.LIEBLINGSPOS_X AS LIEBLINGSPOS_X, s.LIEBLINGSPOS_Y AS LIEBLINGSPOS_Y, v.verein AS verein,
       s.GESICHT AS GESICHT, s.HAUTFARBE AS HAUTFARBE, s.HAARFARBE AS HAARFARBE,
       s.ERLERNT AS ERLERNT, s.GESPERRT AS GESPERRT
FROM kaderzeilen v JOIN spieler s ON s.NUMMER = v.spieler;
)SQL";

// The world's history: per step the rows one run changed, as a changeset of
// the engine's session extension. zurueck is 1 for a step that is undone;
// pruefsumme is the step's checksum (see stepchecksum). A run that replaced
// whole tables keeps no changes until it is first undone: its way back is
// the restore point punkt (a file name in the folder of the restore points),
// of punktgroesse bytes.
const char *const historySql = R"SQL(
CREATE TABLE verlauf (
  schritt INTEGER PRIMARY KEY, zeit TEXT NOT NULL, text TEXT NOT NULL,
  zurueck INTEGER NOT NULL DEFAULT 0, aenderungen BLOB NOT NULL, pruefsumme BLOB,
  punkt TEXT, punktgroesse INTEGER NOT NULL DEFAULT 0
) STRICT;
)SQL";

// The game's files as the last import or export left them: size, time of
// change (milliseconds since 1970, UTC) and SHA-256, by full path. Not part
// of the history.
const char *const gameFilesSql = R"SQL(
CREATE TABLE IF NOT EXISTS spieldateien (
  pfad TEXT PRIMARY KEY, groesse INTEGER NOT NULL, zeit INTEGER NOT NULL, abdruck BLOB NOT NULL
) STRICT;
)SQL";

// A world of the first version kept its squads in a table vereinspieler of
// two columns; its rows keep their rowids as zeile, so squads keep their order.
const char *const upgradeSquadsSql = R"SQL(
DROP VIEW IF EXISTS spielerinvereine;
ALTER TABLE vereinspieler RENAME TO vereinspieler_alt;
)SQL";
const char *const moveSquadsSql = R"SQL(
INSERT INTO kaderzeilen (zeile, verein, spieler) SELECT rowid, verein, spieler FROM vereinspieler_alt ORDER BY rowid;
DROP TABLE vereinspieler_alt;
)SQL";

// The first 100 bytes of an SQLite file hold its header. Null when the file
// can't be read, with *why telling the reason.
QByteArray header(const QString &path, QString *why)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) {
        *why = fileerrortext(f);
        return {};
    }
    QByteArray head = f.read(100);
    if (head.isNull())
        head = QByteArray("");
    return head;
}

// PRAGMA application_id as the header stores it, big-endian at byte 68.
// Read from the bytes, so that deciding never lets the engine touch a file
// that is not ours (it would roll back a journal lying beside it).
qint32 applicationId(const QByteArray &head)
{
    if (head.size() < 72)
        return 0;
    const auto *b = reinterpret_cast<const unsigned char *>(head.constData() + 68);
    return qint32(quint32(b[0]) << 24 | quint32(b[1]) << 16 | quint32(b[2]) << 8 | quint32(b[3]));
}

} // namespace

const QStringList &kontinente()
{
    static const QStringList names = {
        QStringLiteral("Asien"),         QStringLiteral("Atlantis"),    QStringLiteral("Mittel-Amerika"),
        QStringLiteral("Naher-Osten"),   QStringLiteral("Nord-Afrika"), QStringLiteral("Nord-Amerika"),
        QStringLiteral("Ost-Europa"),    QStringLiteral("Ozeanien"),    QStringLiteral("Süd-Afrika"),
        QStringLiteral("Süd-Amerika"),   QStringLiteral("Süd-Europa"),  QStringLiteral("West-Europa"),
    };
    return names;
}

void createschema(Database &db)
{
    Transaction tx(db);
    db.exec(QString::fromUtf8(schemaSql));
    db.exec(QString::fromUtf8(squadSql));
    db.exec(QString::fromUtf8(historySql));
    db.exec(QString::fromUtf8(gameFilesSql));
    fillreferencetables(db);
    db.exec(QStringLiteral("PRAGMA application_id = %1").arg(zorboApplicationId));
    db.exec(QStringLiteral("PRAGMA user_version = %1").arg(zorboSchemaVersion));
    tx.commit();
}

bool isworldfile(const QString &path, QString *why)
{
    const QByteArray head = header(path, why);
    if (head.isNull())
        return false;
    if (!head.startsWith(QByteArray("SQLite format 3\0", 16)) || applicationId(head) != zorboApplicationId) {
        *why = QStringLiteral("%1 ist keine Datenbank des Zorbo Editors.").arg(path);
        return false;
    }
    return true;
}

void upgradeschema(Database &db)
{
    const int version = db.scalar(QStringLiteral("PRAGMA user_version")).toInt();
    if (version >= zorboSchemaVersion)
        return;
    Transaction tx(db);
    if (version < 2) {
        db.exec(QString::fromUtf8(upgradeSquadsSql));
        db.exec(QString::fromUtf8(squadSql));
        db.exec(QString::fromUtf8(moveSquadsSql));
        db.exec(QString::fromUtf8(historySql));
    } else if (!db.hasTable(QStringLiteral("verlauf"))) {
        // A history lost by another program is begun anew, not the world refused.
        db.exec(QString::fromUtf8(historySql));
    } else if (version < 3) {
        // The steps kept so far are taken as they are.
        db.exec(QStringLiteral("ALTER TABLE verlauf ADD COLUMN pruefsumme BLOB"));
        Statement steps = db.prepare(QStringLiteral("SELECT schritt, aenderungen FROM verlauf"));
        Statement sum = db.prepare(QStringLiteral("UPDATE verlauf SET pruefsumme = ?1 WHERE schritt = ?2"));
        while (steps.step()) {
            sum.bindAll(stepchecksum(steps.integer(0), steps.blob(1)), steps.integer(0));
            sum.exec();
            sum.reset();
        }
    }
    if (version < 4)
        db.exec(QString::fromUtf8(gameFilesSql));
    const auto hascolumn = [&](const QString &table, const QString &name) {
        for (const ColumnInfo &column : db.columns(table)) {
            if (column.name == name)
                return true;
        }
        return false;
    };
    // Steps kept so far all hold their changes.
    if (version < 5 && !hascolumn(QStringLiteral("verlauf"), QStringLiteral("punkt")))
        db.exec(QStringLiteral("ALTER TABLE verlauf ADD COLUMN punkt TEXT; "
                               "ALTER TABLE verlauf ADD COLUMN punktgroesse INTEGER NOT NULL DEFAULT 0"));
    // The files were remembered by their SHA-256; the column now holds
    // whichever print the row was written with.
    if (version < 6 && hascolumn(QStringLiteral("spieldateien"), QStringLiteral("sha256")))
        db.exec(QStringLiteral("ALTER TABLE spieldateien RENAME COLUMN sha256 TO abdruck"));
    else if (!db.hasTable(QStringLiteral("spieldateien")))
        db.exec(QString::fromUtf8(gameFilesSql));
    db.exec(QStringLiteral("PRAGMA user_version = %1").arg(zorboSchemaVersion));
    tx.commit();
}

OpenedDb opendb(const QString &path)
{
    OpenedDb result;
    const QFileInfo info(path);
    // Only a missing or empty file becomes a new world. Any other file must
    // carry our mark; a database of another program stays as it is, even one
    // without a single table.
    const bool fresh = !info.exists() || info.size() == 0;
    if (!fresh) {
        QString why;
        const QByteArray head = header(path, &why);
        if (head.isNull()) {
            result.state = DbOpenState::Failed;
            result.message = QStringLiteral("Die Datenbank %1 lässt sich nicht lesen: %2").arg(path, why);
            return result;
        }
        if (!head.startsWith(QByteArray("SQLite format 3\0", 16))) {
            result.state = DbOpenState::Foreign;
            result.message = QStringLiteral("Die Datei %1 ist keine Datenbank des Zorbo Editors (vielleicht eine alte "
                                            "Access-Datenbank). Sie bleibt unverändert; der Editor startet ohne Daten.")
                                 .arg(path);
            return result;
        }
        if (applicationId(head) != zorboApplicationId) {
            result.state = DbOpenState::Foreign;
            result.message = QStringLiteral("Die Datei %1 ist eine SQLite-Datenbank, aber keine des Zorbo Editors. "
                                            "Sie bleibt unverändert; der Editor startet ohne Daten.")
                                 .arg(path);
            return result;
        }
    }
    try {
        auto db = std::make_unique<Database>(path);
        if (fresh) {
            createschema(*db);
            result.state = DbOpenState::Created;
        } else {
            if (db->scalar(QStringLiteral("PRAGMA user_version")).toInt() > zorboSchemaVersion) {
                result.state = DbOpenState::Foreign;
                result.message = QStringLiteral("Die Datenbank %1 stammt von einer neueren Version des Zorbo Editors. "
                                                "Sie bleibt unverändert; der Editor startet ohne Daten.")
                                     .arg(path);
                return result;
            }
            upgradeschema(*db);
            result.state = DbOpenState::Opened;
        }
        db->exec(QStringLiteral("PRAGMA foreign_keys = OFF"));
        // Deleted content is wiped only where that costs no extra writing:
        // zeroing every freed page of a large history step would write its
        // megabytes once more in the run that drops it.
        db->exec(QStringLiteral("PRAGMA secure_delete = FAST"));
        result.db = std::move(db);
    } catch (const DbError &e) {
        result.state = DbOpenState::Failed;
        result.message = QStringLiteral("Die Datenbank %1 lässt sich nicht öffnen: %2").arg(path, e.text());
    }
    return result;
}

} // namespace zorbo
