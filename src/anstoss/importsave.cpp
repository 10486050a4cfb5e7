#include "anstoss/importsave.h"

#include "core/columnrules.h"
#include "core/fieldcheck.h"
#include "core/landneu.h"
#include "core/strength.h"
#include "platform/numbers.h"
#include "platform/random.h"
#include "platform/runner.h"

#include <QFileInfo>

namespace zorbo {

namespace {

// The columns of spieler after NUMMER, in table order.
const char *const playercolumns[16] = {"NAME",           "VORNAME",        "\"Stärke\"",     "\"Max_Stärke\"",
                                       "NATION",         "GROESSE",        "ART",            "\"REST_EINSÄTZE\"",
                                       "LIEBLINGSPOS_X", "LIEBLINGSPOS_Y", "RUECKENNUMMER",  "GESICHT",
                                       "HAUTFARBE",      "HAARFARBE",      "ERLERNT",        "GESPERRT"};

using Row = std::array<QVariant, 16>;
constexpr int untouched = -1; // marks a column an imported player leaves as it was

qint64 wholekey(const AetFile &file, int i, const QString &key)
{
    const QString text = file.value(aetsection(i), key);
    const std::optional<qint64> n = parsewholenumber(text);
    if (!n)
        file.fail(aetsection(i), key, QStringLiteral("»%1« ist keine ganze Zahl.").arg(text));
    return *n;
}

// The row of the file's player i; the random numbers drawn in the order
// maximum strength, height, games left, face.
Row fileplayer(Database &db, const AetFile &file, int i, int &gain)
{
    const QString s = aetsection(i);
    if (!file.has(s, QStringLiteral("Position")))
        file.fail(s, QStringLiteral("Position"), QStringLiteral("Der Schlüssel fehlt."));
    const int art = aetposition(file, i, {});
    const qint64 number = wholekey(file, i, QStringLiteral("Rueckennummer"));
    const double strength = file.number(s, QStringLiteral("staerke"));
    const qint64 rest = qint64(file.number(s, QStringLiteral("restspiele")));
    // The maximum lies a few stars above the strength: near the edge of 32
    // bits it would run past what the world stores.
    const qint64 maximum = staerkegewinn(strength, gain);
    if (const QString problem = rangeproblem(QStringLiteral("MAX_STÄRKE"), double(maximum)); !problem.isEmpty())
        file.fail(s, QStringLiteral("Staerke"),
                  QStringLiteral("die Stärke %1 ergäbe eine höchste Stärke von %2; %3.").arg(strength, 0, 'f', 0).arg(maximum).arg(problem));
    Row row;
    row[0] = file.value(s, QStringLiteral("name"));
    row[1] = file.value(s, QStringLiteral("vorname")).left(1) + QLatin1Char('.');
    row[2] = qint64(roundHalfEven(strength));
    row[3] = maximum;
    row[4] = landneu(db, file.value(s, QStringLiteral("land")));
    row[5] = qint64(rndBelow(30) + 175);
    row[6] = qint64(art);
    row[7] = rest + rndBelow(5);
    row[8] = untouched;
    row[9] = untouched;
    row[10] = number;
    const AetFace face = aetface(db, file, i);
    row[11] = face.code;
    row[12] = face.hautfarbe;
    row[13] = face.haarfarbe;
    row[14] = QString(QLatin1String(""));
    row[15] = QString(QLatin1String(""));
    return row;
}

// A club's player as the list read him, or by his number as he stands now.
Row clubplayer(Database &db, const SquadEntry &e)
{
    QVariantList values = e.row;
    if (values.isEmpty()) {
        Statement st = db.prepare(QStringLiteral("SELECT * FROM spieler WHERE NUMMER = ?1"));
        st.bind(1, e.id);
        if (!st.step())
            throw Fault(QStringLiteral("Den Spieler %1 gibt es nicht mehr.").arg(e.id));
        for (int c = 1; c < st.columnCount(); ++c)
            values.append(st.value(c));
    }
    if (values.size() < 16)
        throw Fault(QStringLiteral("Der Spieler %1 hat nicht alle Spalten der Tabelle spieler.").arg(e.id));
    Row row;
    for (int c = 0; c < 16; ++c)
        row[size_t(c)] = values[c];
    if (!row[4].isNull())
        row[4] = landneu(db, row[4].toString());
    return row;
}

} // namespace

Step importplayersstep(qint64 club, const QString &path)
{
    return {QStringLiteral("Werkbank: Spieler von Verein %1 aus %2 gespeichert").arg(club).arg(QFileInfo(path).fileName()),
            QStringLiteral("Spieler der Werkbank")};
}

AnstossResult saveimportplayers(Database &db, const AetFile &file, qint64 club, const QList<SquadEntry> &squad,
                                const Progress &progress)
{
    return runtransaction(db, QStringLiteral("Die Spieler wurden nicht gespeichert"), [&] {
        AnstossResult r;
        if (squad.size() != squadSize)
            throw Fault(QStringLiteral("Die neue Spielerliste hat %1 statt 20 Spieler; es wurde nichts gespeichert.")
                            .arg(squad.size()));
        QList<qint64> slotnumbers;
        Statement st = db.prepare(QStringLiteral("SELECT spieler FROM kaderzeilen WHERE verein = ?1 ORDER BY spieler"));
        st.bind(1, club);
        while (st.step())
            slotnumbers.append(st.integer(0));
        if (slotnumbers.size() < squad.size())
            throw Fault(QStringLiteral("Der Verein %1 hat nur %2 Spieler im Kader, es werden aber %3 gebraucht; "
                                       "es wurde nichts gespeichert.")
                            .arg(club)
                            .arg(slotnumbers.size())
                            .arg(squad.size()));
        const int count = aetplayercount(file);
        QList<Row> rows;
        int gain = 0;
        for (int i = 0; i < squad.size(); ++i) {
            report(progress, i, 2 * squad.size());
            const SquadEntry &e = squad[i];
            if (e.fromFile && (e.id < 0 || e.id >= count))
                throw Fault(QStringLiteral("Die Datei %1 hat keinen Spieler %2.").arg(file.shownname()).arg(e.id));
            rows.append(e.fromFile ? fileplayer(db, file, int(e.id), gain) : clubplayer(db, e));
        }
        int kept = 0;
        for (int i = 0; i < rows.size(); ++i) {
            report(progress, squad.size() + i, 2 * squad.size());
            QStringList sets;
            QVariantList values;
            for (int c = 0; c < 16; ++c) {
                const QVariant &v = rows[i][size_t(c)];
                if (v.typeId() == QMetaType::Int && v.toInt() == untouched)
                    continue;
                if (squad[i].fromFile && outsidewindow(QString::fromUtf8(playercolumns[c]).remove(QLatin1Char('"')), v))
                    ++kept;
                values.append(v);
                sets.append(QStringLiteral("%1 = ?%2").arg(QString::fromUtf8(playercolumns[c])).arg(values.size()));
            }
            Statement up = db.prepare(QStringLiteral("UPDATE spieler SET %1 WHERE NUMMER = ?%2")
                                          .arg(sets.join(QStringLiteral(", ")))
                                          .arg(values.size() + 1));
            for (int v = 0; v < values.size(); ++v)
                up.bind(v + 1, values[v]);
            up.bind(values.size() + 1, slotnumbers[i]);
            up.exec();
            r.players += db.changes();
        }
        report(progress, 2 * squad.size(), 2 * squad.size());
        r.kept = kept;
        r.result = Result::success(withkept(QStringLiteral("%1 Spieler gespeichert.").arg(r.players), kept));
        return r;
    });
}

} // namespace zorbo
