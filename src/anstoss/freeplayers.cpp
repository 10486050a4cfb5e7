#include "anstoss/freeplayers.h"

#include "core/gamedb.h"
#include "platform/numbers.h"
#include "platform/runner.h"

namespace zorbo {

namespace {

qint64 wholevalue(const AetFile &file, const QString &section, const QString &key)
{
    return qint64(valtext(file.value(section, key)));
}

} // namespace

void savea4spieler(Database &db, const AetFile &file, int k)
{
    const QString s = aetsection(k);
    const int position = aetposition(file, k, QStringLiteral("0"));
    const AetFace face = aetface(db, file, k);
    Statement st = db.prepare(QStringLiteral(
        "INSERT INTO a4spieler (name, vorname, land, verein, position, staerke, restspiele, rueckennummer, "
        "gesicht, hautfarbe, haarfarbe) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11)"));
    st.bindAll(file.value(s, QStringLiteral("name")), file.value(s, QStringLiteral("vorname")),
               file.value(s, QStringLiteral("Land")), file.value(QStringLiteral("Team"), QStringLiteral("Name")),
               qint64(position), wholevalue(file, s, QStringLiteral("Staerke")),
               wholevalue(file, s, QStringLiteral("Restspiele")), wholevalue(file, s, QStringLiteral("Rueckennummer")),
               face.code, face.hautfarbe, face.haarfarbe);
    st.exec();
}

void a4deletenew(Database &db)
{
    db.run(QStringLiteral(
               "DELETE FROM a4spieler WHERE id = ?1 AND EXISTS (SELECT 1 FROM a4spieler o WHERE o.id < ?1 "
               "AND o.name IS a4spieler.name AND o.vorname IS a4spieler.vorname AND o.land IS a4spieler.land "
               "AND o.verein IS a4spieler.verein AND o.position IS a4spieler.position "
               "AND o.staerke IS a4spieler.staerke)"),
           db.lastInsertId());
}

AnstossResult importfreeplayers(Database &db, const AetFile &file, const QList<int> &indexes, const Progress &progress,
                                bool cleanfirst)
{
    if (!db.hasTable(QStringLiteral("a4spieler")))
        throw Fault(QStringLiteral("Die Datenbank hat keine Tabelle a4spieler für die freien Spieler."));
    QList<int> chosen = indexes;
    const int count = aetplayercount(file);
    if (chosen.isEmpty()) {
        for (int i = 0; i < count; ++i)
            chosen.append(i);
    }
    // Whatever duplicates the table held before go first, as the run's
    // first a4deleteid would remove them; then only each new row can be one.
    if (cleanfirst)
        a4deleteid(db);
    AnstossResult r;
    for (int n = 0; n < chosen.size(); ++n) {
        report(progress, n, chosen.size());
        savea4spieler(db, file, chosen[n]);
        a4deletenew(db);
        ++r.players;
    }
    report(progress, chosen.size(), chosen.size());
    r.clubs = 1;
    r.result = Result::success(QStringLiteral("%1 Spieler in Freie Spieler importiert!").arg(r.players));
    return r;
}

AnstossResult runfreeplayers(Database &db, const QString &path, const QList<int> &indexes, const Progress &progress)
{
    return runtransaction(db, QStringLiteral("Die freien Spieler wurden nicht gespeichert"), [&] {
        AetFile file;
        AnstossResult r;
        r.result = file.load(path);
        if (!r.ok())
            return r;
        return importfreeplayers(db, file, indexes, progress);
    });
}

} // namespace zorbo
