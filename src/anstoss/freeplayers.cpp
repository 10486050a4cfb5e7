#include "anstoss/freeplayers.h"

#include "core/gamedb.h"
#include "platform/numbers.h"
#include "platform/runner.h"

#include <QFileInfo>
#include <optional>

namespace zorbo {

namespace {

qint64 wholevalue(const AetFile &file, const QString &section, const QString &key)
{
    return qint64(file.number(section, key));
}

} // namespace

QVariantList savea4spieler(Database &db, const AetFile &file, int k)
{
    const QString s = aetsection(k);
    const int position = aetposition(file, k, QStringLiteral("0"));
    const AetFace face = aetface(db, file, k);
    Statement st = db.prepare(QStringLiteral(
        "INSERT INTO a4spieler (name, vorname, land, verein, position, staerke, restspiele, rueckennummer, "
        "gesicht, hautfarbe, haarfarbe) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11)"));
    const QVariantList key{file.value(s, QStringLiteral("name")), file.value(s, QStringLiteral("vorname")),
                           file.value(s, QStringLiteral("Land")),
                           file.value(QStringLiteral("Team"), QStringLiteral("Name")), qint64(position),
                           wholevalue(file, s, QStringLiteral("Staerke"))};
    for (int i = 0; i < key.size(); ++i)
        st.bind(i + 1, key[i]);
    st.bind(7, wholevalue(file, s, QStringLiteral("Restspiele")));
    st.bind(8, wholevalue(file, s, QStringLiteral("Rueckennummer")));
    st.bind(9, face.code);
    st.bind(10, face.hautfarbe);
    st.bind(11, face.haarfarbe);
    st.exec();
    return key;
}

namespace {

const char *const keycolumns = "name, vorname, land, verein, position, staerke";

// One text for the six values; Null apart from every text, as IS compares.
QString keyof(const QVariantList &values)
{
    QString key;
    for (const QVariant &v : values) {
        key += v.isNull() ? QStringLiteral("\x01") : QStringLiteral("\x02") + v.toString();
        key += QLatin1Char('\0');
    }
    return key;
}

} // namespace

A4Keys::A4Keys(Database &db)
{
    a4deleteid(db);
    Statement st = db.prepare(QStringLiteral("SELECT %1 FROM a4spieler").arg(QLatin1String(keycolumns)));
    while (st.step()) {
        QVariantList values;
        for (int c = 0; c < 6; ++c)
            values << st.value(c);
        m_keys.insert(keyof(values));
    }
}

bool A4Keys::deletenew(Database &db, const QVariantList &values)
{
    const QString key = keyof(values);
    if (!m_keys.contains(key)) {
        m_keys.insert(key);
        return false;
    }
    db.run(QStringLiteral("DELETE FROM a4spieler WHERE id = ?1"), db.lastInsertId());
    return true;
}

AnstossResult importfreeplayers(Database &db, const AetFile &file, const QList<int> &indexes, const Progress &progress,
                                A4Keys *keys)
{
    if (!db.hasTable(QStringLiteral("a4spieler")))
        throw Fault(QStringLiteral("Die Datenbank hat keine Tabelle a4spieler für die freien Spieler."));
    QList<int> chosen = indexes;
    const int count = aetplayercount(file);
    if (chosen.isEmpty()) {
        for (int i = 0; i < count; ++i)
            chosen.append(i);
    }
    std::optional<A4Keys> own;
    if (!keys)
        keys = &own.emplace(db);
    AnstossResult r;
    for (int n = 0; n < chosen.size(); ++n) {
        report(progress, n, chosen.size());
        if (keys->deletenew(db, savea4spieler(db, file, chosen[n])))
            ++r.duplicates;
        else
            ++r.players;
    }
    report(progress, chosen.size(), chosen.size());
    r.clubs = r.players > 0 ? 1 : 0;
    r.result = Result::success(QStringLiteral("%1 Spieler in Freie Spieler importiert!").arg(r.players)
                               + duplicatestext(r.duplicates));
    return r;
}

QString duplicatestext(int duplicates)
{
    if (duplicates == 0)
        return {};
    return duplicates == 1
               ? QStringLiteral(" 1 Spieler stand schon in Freie Spieler und wurde als doppelt verworfen.")
               : QStringLiteral(" %1 Spieler standen schon in Freie Spieler und wurden als doppelt verworfen.").arg(duplicates);
}

Step freeplayersstep(const QString &path)
{
    return {QStringLiteral("Freie Spieler aus %1").arg(QFileInfo(path).fileName())};
}

AnstossResult runfreeplayers(Database &db, const QString &path, const QList<int> &indexes, const Progress &progress,
                             FileEncoding encoding)
{
    return runtransaction(db, QStringLiteral("Die freien Spieler wurden nicht gespeichert"), [&] {
        AetFile file;
        AnstossResult r;
        r.result = file.load(path, AetKind::Club, encoding);
        r.looksUtf8 = file.looksUtf8();
        if (!r.ok())
            return r;
        return importfreeplayers(db, file, indexes, progress);
    });
}

} // namespace zorbo
