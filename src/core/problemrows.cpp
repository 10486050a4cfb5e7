// The checks that look at one row at a time: values the game's files can't
// hold or that name pictures, kits and crests that don't exist.
#include "core/facecode.h"
#include "core/problemsink.h"
#include "core/schema.h"
#include "core/teamrules.h"
#include "platform/codepage.h"

#include <QDir>
#include <vector>
#include <sqlite3.h>

namespace zorbo::detail {

namespace {

constexpr qint64 numberMax = 2147483647; // what the files' number fields hold

QString quoted(const QString &text)
{
    return QStringLiteral("„") + text + QStringLiteral("“");
}

// Three whole numbers 0 to 255 joined by commas, blanks and double quotes
// around them allowed: what the kit reader splits.
bool readablecolour(const QString &text)
{
    // Most colours are plain "r,g,b" with blanks: read without splitting.
    // Anything else goes the long way.
    int parts = 0, value = -1;
    bool plainOk = true, ended = false;
    for (QChar ch : text) {
        const char16_t u = ch.unicode();
        if (u >= '0' && u <= '9' && !ended) {
            value = (value < 0 ? 0 : value * 10) + (u - '0');
            plainOk = plainOk && value <= 255;
        } else if (u == ',') {
            plainOk = plainOk && value >= 0;
            ++parts;
            value = -1;
            ended = false;
        } else if (u == ' ') {
            ended = value >= 0;
        } else {
            plainOk = false;
            break;
        }
    }
    if (plainOk && parts == 2 && value >= 0)
        return true;
    QString plain = text;
    plain.remove(QLatin1Char('"'));
    const QStringList pieces = plain.split(QLatin1Char(','));
    if (pieces.size() != 3)
        return false;
    for (const QString &piece : pieces) {
        bool ok = false;
        const int v = piece.trimmed().toInt(&ok);
        if (!ok || v < 0 || v > 255 || piece.trimmed().startsWith(QLatin1Char('+')))
            return false;
    }
    return true;
}

QSet<QString> filesIn(const QString &folder, const QString &pattern)
{
    const QStringList names = QDir(folder).entryList({pattern}, QDir::Files);
    QSet<QString> set;
    for (const QString &n : names)
        set.insert(n.toLower());
    return set;
}

QSet<qint64> kitarts(Database &db, int trikotsatz)
{
    QSet<qint64> arts;
    Statement st = db.prepare(trikotsatz == 1 ? QStringLiteral("SELECT Nummer FROM e_trikotfarbezorbode")
                                              : QStringLiteral("SELECT Nummer FROM e_trikotfarbeoriginal"));
    while (st.step())
        arts.insert(st.integer(0));
    return arts;
}

void checktext(Statement &st, int c, const QString &column, ProblemSink &sink, bool isPlayer, qint64 number,
               bool country)
{
    const auto *raw = sqlite3_column_text(st.handle(), c);
    if (!raw || fitsCp1252Utf8(raw, sqlite3_column_bytes(st.handle(), c)))
        return;
    const QString text = QStringLiteral("%1 enthält Zeichen außerhalb von Codepage 1252").arg(quoted(st.text(c)));
    if (isPlayer)
        sink.player(ProblemKind::NotCp1252, number, column, text);
    else
        sink.team(ProblemKind::NotCp1252, number, country, column, text);
}

// crests: the crest files of the folder; defaultCrest: whether default.tga,
// which stands in for a crest without its file, is there.
void walkteams(Database &db, const QString &table, bool country, const QSet<qint64> &arts,
               const QSet<QString> &crests, bool defaultCrest, ProblemSink &sink)
{
    const QList<ColumnInfo> columns = db.columns(table);
    Statement st = db.prepare(QStringLiteral("SELECT * FROM %1 ORDER BY NUMMER").arg(table));
    const int nameCol = st.columnIndex(QStringLiteral("NAME"));
    const int nationCol = st.columnIndex(QStringLiteral("NATION"));
    const int continentCol = st.columnIndex(QStringLiteral("KONTINENT"));
    const int crestCol = st.columnIndex(QStringLiteral("GRAFIK_NR"));
    const QSet<QString> shortForm = {QStringLiteral("NUMMER"), QStringLiteral("NAME"), QStringLiteral("GRAFIK_NR")};
    struct Column {
        QString name;
        bool squad, text, shortForm, colour, kitArt;
    };
    std::vector<Column> cols;
    for (const ColumnInfo &info : columns) {
        const QString name = info.name.toUpper();
        cols.push_back({name, name == QLatin1String("SPIELER"), info.isText(), shortForm.contains(name),
                        name.startsWith(QLatin1String("F_")), name.endsWith(QLatin1String("TRIKOT_ART"))});
    }
    while (st.step()) {
        const qint64 nr = st.integer(0);
        const QString name = st.text(nameCol);
        const QString who = (country ? QStringLiteral("Land ") : QStringLiteral("Verein ")) + quoted(name);
        if (nr < 0 || nr > numberMax)
            sink.team(ProblemKind::NumberTooLarge, nr, country, QStringLiteral("NUMMER"),
                      QStringLiteral("%1: die Nummer %2 passt nicht in die Dateien des Spiels (0 bis %3)")
                          .arg(who).arg(nr).arg(numberMax));
        if (blankname(name))
            sink.team(ProblemKind::TeamWithoutName, nr, country, QStringLiteral("NAME"),
                      QStringLiteral("%1 hat keinen Namen").arg(country ? QStringLiteral("Das Land") : QStringLiteral("Der Verein")));
        QStringList nulls;
        bool onlyShort = true;
        for (int c = 0; c < int(cols.size()); ++c) {
            const Column &col = cols[size_t(c)];
            const QString &column = col.name;
            if (col.squad)
                continue;
            if (st.isNull(c)) {
                nulls << column;
                continue;
            }
            if (!col.shortForm)
                onlyShort = false;
            if (col.text)
                checktext(st, c, column, sink, false, nr, country);
            if (col.colour && !readablecolour(st.text(c)))
                sink.team(ProblemKind::BadColour, nr, country, column,
                          QStringLiteral("%1: die Farbe %2 ist nicht Rot, Grün, Blau (0 bis 255) mit Kommas getrennt")
                              .arg(who, quoted(st.text(c))));
            if (col.kitArt && !arts.contains(st.integer(c)))
                sink.team(ProblemKind::KitOutsideSet, nr, country, column,
                          QStringLiteral("%1: das Trikot %2 gibt es im Trikotsatz nicht").arg(who).arg(st.integer(c)));
        }
        // A club row of three values goes out as the short record; any
        // other Null leaves out a line, and the reader takes the lines
        // after it for the wrong fields.
        const bool shortRecord = !country && onlyShort && nulls.size() == columns.size() - 1 - shortForm.size();
        if (!nulls.isEmpty() && !shortRecord)
            sink.team(ProblemKind::NullColumn, nr, country, nulls.join(QStringLiteral(", ")),
                      QStringLiteral("%1: leere Spalten (Null), die Teamdatei ließe sich nicht wieder einlesen").arg(who));
        if (nr != 0 && crestCol >= 0 && !st.isNull(crestCol)
            && !crests.contains(QStringLiteral("vereins_wappen_%1.tga").arg(st.integer(crestCol)))) {
            const QString missing = QStringLiteral("%1: zum Wappen %2 fehlt die Datei vereins_wappen_%2.tga")
                                        .arg(who).arg(st.integer(crestCol));
            if (defaultCrest)
                sink.team(ProblemKind::CrestDefault, nr, country, QStringLiteral("GRAFIK_NR"),
                          missing + QStringLiteral(", es wird default.tga gezeigt"));
            else
                sink.team(ProblemKind::CrestMissing, nr, country, QStringLiteral("GRAFIK_NR"), missing);
        }
        if (country) {
            sink.countries.insert(nr);
            sink.countryNames.insert(name.toCaseFolded());
            const QString continent = continentCol >= 0 ? st.text(continentCol) : QString();
            if (!kontinente().contains(continent))
                sink.team(ProblemKind::CountryWithoutContinent, nr, true, QStringLiteral("KONTINENT"),
                          st.isNull(continentCol) ? QStringLiteral("%1 hat keinen Kontinent").arg(who)
                                                  : QStringLiteral("%1: %2 ist keiner der zwölf Kontinente")
                                                        .arg(who, quoted(continent)));
        } else if (nr != 0) {
            sink.clubs.insert(nr, name);
            if (name.toUcs4().size() > 15)
                sink.team(ProblemKind::LongClubName, nr, false, QStringLiteral("NAME"),
                          QStringLiteral("%1 hat %2 Zeichen, das Spiel nimmt höchstens 15").arg(who).arg(name.toUcs4().size()));
            const QString nation = st.text(nationCol);
            if (blankname(nation))
                sink.team(ProblemKind::ClubWithoutCountry, nr, false, QStringLiteral("NATION"),
                          QStringLiteral("%1 hat kein Land").arg(who));
            else if (!sink.countryNames.contains(nation.toCaseFolded()))
                sink.team(ProblemKind::ClubWithoutCountry, nr, false, QStringLiteral("NATION"),
                          QStringLiteral("%1: das Land %2 hat keine Zeile").arg(who, quoted(nation)));
        }
    }
}

} // namespace

bool fitsCp1252Utf8(const unsigned char *text, int bytes)
{
    for (int i = 0; i < bytes; ++i) {
        if (text[i] < 0x80)
            continue;
        // U+00A0 to U+00FF (umlauts, ß, accents of Western Europe) stand at
        // the same place in the code page; anything else is looked up.
        if (text[i] == 0xC2 && i + 1 < bytes && text[i + 1] >= 0xA0 && text[i + 1] <= 0xBF) {
            ++i;
            continue;
        }
        if (text[i] == 0xC3 && i + 1 < bytes && text[i + 1] >= 0x80 && text[i + 1] <= 0xBF) {
            ++i;
            continue;
        }
        return fitsCp1252(QString::fromUtf8(reinterpret_cast<const char *>(text), bytes));
    }
    return true;
}

void checkteamrows(Database &db, const Settings &settings, ProblemSink &sink)
{
    const QSet<qint64> arts = kitarts(db, settings.trikotsatz);
    const QString wappen = settings.folder(WappenFolder);
    const QSet<QString> crests = filesIn(wappen, QStringLiteral("vereins_wappen_*.tga"));
    const bool defaultCrest = !filesIn(wappen, QStringLiteral("default.tga")).isEmpty();
    // Countries first: the clubs are looked up among their names.
    walkteams(db, QStringLiteral("vereine_national"), true, arts, crests, defaultCrest, sink);
    walkteams(db, QStringLiteral("vereine"), false, arts, crests, defaultCrest, sink);
}

void checkplayerrows(Database &db, const Settings &settings, ProblemSink &sink)
{
    const QSet<QString> faces = filesIn(settings.folder(GesichtFolder), QStringLiteral("sp_gesicht_*.gif"));
    Statement st = db.prepare(QStringLiteral("SELECT NUMMER, NAME, VORNAME, NATION, GESICHT, ERLERNT, GESPERRT FROM spieler"));
    const QString columns[] = {QStringLiteral("NUMMER"), QStringLiteral("NAME"), QStringLiteral("VORNAME"),
                               QStringLiteral("NATION"), QStringLiteral("GESICHT"), QStringLiteral("ERLERNT"),
                               QStringLiteral("GESPERRT")};
    QHash<qint64, bool> faceKnown; // most players share a few face codes
    sink.players.reserve(size_t(db.scalar(QStringLiteral("SELECT count(*) FROM spieler")).toLongLong()));
    while (st.step()) {
        const qint64 nr = st.integer(0);
        sink.players.push_back(nr);
        const auto who = [&] { return QStringLiteral("Spieler %1").arg(quoted(st.text(2) + QLatin1Char(' ') + st.text(1))); };
        if (nr < 0 || nr > numberMax)
            sink.player(ProblemKind::NumberTooLarge, nr, columns[0],
                        QStringLiteral("%1: die Nummer %2 passt nicht in die Dateien des Spiels (0 bis %3)")
                            .arg(who()).arg(nr).arg(numberMax));
        for (int c : {1, 2, 3, 5, 6})
            checktext(st, c, columns[c], sink, true, nr, false);
        if (blankname(st.text(3)))
            sink.player(ProblemKind::PlayerWithoutCountry, nr, columns[3], QStringLiteral("%1 hat kein Land").arg(who()));
        if (!st.isNull(4)) {
            const qint64 code = st.integer(4);
            auto known = faceKnown.constFind(code);
            if (known == faceKnown.constEnd()) {
                const Face face = decodeface(code);
                bool all = code >= 0;
                for (int part = 0; all && part < FacePartCount; ++part)
                    all = faces.contains(facepicture(face.farbe, part, face.digits[size_t(part)] + 1));
                known = faceKnown.insert(code, all);
            }
            if (!known.value())
                sink.player(ProblemKind::FaceMissing, nr, columns[4],
                            QStringLiteral("%1: das Gesicht %2 nennt Bilder, die es nicht gibt").arg(who()).arg(code));
        }
        for (int c : {5, 6}) {
            const auto *raw = reinterpret_cast<const char *>(sqlite3_column_text(st.handle(), c));
            const QByteArrayView list(raw, raw ? sqlite3_column_bytes(st.handle(), c) : 0);
            if (list.isEmpty())
                continue;
            qsizetype from = 0;
            while (from <= list.size()) {
                qsizetype to = list.indexOf(',', from);
                if (to < 0)
                    to = list.size();
                const QByteArrayView piece = list.sliced(from, to - from);
                from = to + 1;
                // "0" to "52", as the talent list writes them.
                bool ok = !piece.isEmpty() && piece.size() <= 2;
                for (char d : piece)
                    ok = ok && d >= '0' && d <= '9';
                if (!ok || piece.toInt() > 52) {
                    sink.player(ProblemKind::TalentOutside, nr, columns[c],
                                QStringLiteral("%1: %2 ist kein Talent (0 bis 52)").arg(who(), quoted(QString::fromUtf8(piece))));
                    break;
                }
            }
        }
    }
}

} // namespace zorbo::detail
