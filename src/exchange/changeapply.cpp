// A change file applied to a world: its conflicts found in a first pass
// that is rolled back, then the changes applied with the user's choices.
#include "exchange/changeapply.h"

#include "core/world.h"
#include "exchange/valuetexts.h"
#include "platform/runner.h"

#include <QFileInfo>
#include <QSet>
#include <sqlite3.h>

namespace zorbo {

QString Conflict::kindtext() const
{
    switch (kind) {
    case Changed:
        return QStringLiteral("hier anders geändert");
    case Missing:
        return QStringLiteral("fehlt hier");
    case Deleted:
        return QStringLiteral("hier geändert, in der Datei entfernt");
    case Taken:
        return QStringLiteral("Nummer hier schon vergeben");
    case Reference:
        break;
    }
    return QStringLiteral("Bezug fehlt hier");
}

QString Conflict::text() const
{
    QString line = QStringLiteral("%1: %2").arg(what, kindtext());
    if (!why.isEmpty())
        line += QStringLiteral(" (%1)").arg(why);
    for (const Value &v : values)
        line += QStringLiteral("; %1: vorher %2, hier %3, Datei %4").arg(v.field, v.before, v.here, v.file);
    return line;
}

namespace {

bool samevalue(const QVariant &a, const QVariant &b)
{
    if (a.isNull() || b.isNull())
        return a.isNull() == b.isNull();
    const bool na = a.typeId() == QMetaType::LongLong || a.typeId() == QMetaType::Double;
    const bool nb = b.typeId() == QMetaType::LongLong || b.typeId() == QMetaType::Double;
    if (na && nb)
        return a.toDouble() == b.toDouble();
    return a.typeId() == b.typeId() && a == b;
}

// One run of the changes over the world: the first collects the conflicts
// (its savepoint is rolled back), the second applies with the choices.
struct Pass {
    Pass(Database &database, const ApplyChoices *chosen) : db(database), texts(database), choices(chosen) {}

    Database &db;
    ValueTexts texts;
    const ApplyChoices *choices; // null: only collecting
    QHash<QString, QList<ColumnInfo>> columns;
    QList<Conflict> conflicts;
    QSet<QString> omitted; // ids of rows whose change was left out
    QList<std::pair<qint64, qint64>> squads; // squad rows whose number is taken here, to add anew
    int already = 0;
    int appendedrows = 0; // squad rows that came in under a new number

    const QList<ColumnInfo> &cols(const QString &table)
    {
        auto it = columns.find(table);
        if (it == columns.end())
            it = columns.insert(table, db.columns(table));
        return *it;
    }

    QString label(const QString &table, int i)
    {
        const QList<ColumnInfo> &c = cols(table);
        return i < c.size() ? fieldlabel(table, i, c.at(i).name) : QString::number(i);
    }

    QString show(const QString &table, int i, const QVariant &value)
    {
        const QList<ColumnInfo> &c = cols(table);
        return texts.text(i < c.size() ? c.at(i).name : QString(), value);
    }

    // "Verein 1204 „SV Beispiel“", the name as here or in the file.
    QString what(const QString &table, qint64 key, const QVariant &name)
    {
        const EntityChange::Entity entity = table == QLatin1String("vereine_national") ? EntityChange::Country
                                          : table == QLatin1String("vereine")          ? EntityChange::Club
                                          : table == QLatin1String("spieler")          ? EntityChange::Player
                                          : table == QLatin1String("a4spieler")        ? EntityChange::FreePlayer
                                                                                       : EntityChange::Other;
        if (entity == EntityChange::Other)
            return QStringLiteral("Kaderzeile %1").arg(key);
        QString n = name.toString();
        if (n.isEmpty() && entity != EntityChange::FreePlayer)
            n = db.scalar(QStringLiteral("SELECT NAME FROM main.%1 WHERE NUMMER = ?1").arg(table), key).toString();
        const QString head = entitytext(entity) + QLatin1Char(' ') + QString::number(key);
        return n.isEmpty() ? head : QStringLiteral("%1 „%2“").arg(head, n);
    }

    // A conflict found: the choice made for it, or none (then the row stays
    // as it is here and the conflict is told).
    int decide(Conflict c, bool replaceable)
    {
        const std::optional<Choice> choice = choices ? choices->of(c) : std::nullopt;
        if (!choice)
            conflicts << c;
        if (choice == Choice::Theirs && replaceable)
            return SQLITE_CHANGESET_REPLACE;
        omitted << c.id();
        return SQLITE_CHANGESET_OMIT;
    }

    int handle(int kind, sqlite3_changeset_iter *raw)
    {
        const char *name = nullptr;
        int ncol = 0, op = 0, indirect = 0;
        sqlite3changeset_op(raw, &name, &ncol, &op, &indirect);
        const QString table = QString::fromUtf8(name);
        const auto value = [&](int (*get)(sqlite3_changeset_iter *, int, sqlite3_value **), int i) {
            sqlite3_value *v = nullptr;
            get(raw, i, &v);
            return valueof(v);
        };
        const auto olds = [&](int i) { return op == SQLITE_INSERT ? QVariant() : value(sqlite3changeset_old, i); };
        const auto news = [&](int i) { return op == SQLITE_DELETE ? QVariant() : value(sqlite3changeset_new, i); };
        const auto here = [&](int i) { return value(sqlite3changeset_conflict, i); };
        const qint64 key = (op == SQLITE_INSERT ? news(0) : olds(0)).toLongLong();
        Conflict c;
        c.row = RowKey{table, key};
        const QString gone = QStringLiteral("fehlt");
        if (kind == SQLITE_CHANGESET_NOTFOUND) {
            if (op == SQLITE_DELETE) {
                ++already; // gone here as well
                return SQLITE_CHANGESET_OMIT;
            }
            c.kind = Conflict::Missing;
            c.what = what(table, key, news(1).isValid() ? news(1) : olds(1));
            for (int i = 1; i < ncol; ++i)
                if (news(i).isValid())
                    c.values << Conflict::Value{label(table, i), show(table, i, olds(i)), gone, show(table, i, news(i))};
            return decide(c, false);
        }
        if (kind == SQLITE_CHANGESET_DATA && op == SQLITE_UPDATE) {
            c.kind = Conflict::Changed;
            for (int i = 1; i < ncol; ++i) {
                const QVariant after = news(i);
                if (after.isValid() && !samevalue(after, here(i)))
                    c.values << Conflict::Value{label(table, i), show(table, i, olds(i)), show(table, i, here(i)),
                                                show(table, i, after)};
            }
            if (c.values.isEmpty()) {
                ++already;
                return SQLITE_CHANGESET_OMIT;
            }
            c.what = what(table, key, here(1));
            return decide(c, true);
        }
        if (kind == SQLITE_CHANGESET_DATA && op == SQLITE_DELETE) {
            c.kind = Conflict::Deleted;
            c.what = what(table, key, here(1));
            for (int i = 1; i < ncol; ++i)
                if (!samevalue(olds(i), here(i)))
                    c.values << Conflict::Value{label(table, i), show(table, i, olds(i)), show(table, i, here(i)),
                                                QStringLiteral("entfernt")};
            return decide(c, true);
        }
        if (kind == SQLITE_CHANGESET_CONFLICT) {
            for (int i = 1; i < ncol; ++i)
                if (!samevalue(news(i), here(i)))
                    c.values << Conflict::Value{label(table, i), QStringLiteral("–"), show(table, i, here(i)),
                                                show(table, i, news(i))};
            if (c.values.isEmpty()) {
                ++already;
                return SQLITE_CHANGESET_OMIT;
            }
            if (table == QLatin1String("kaderzeilen")) {
                // Squad rows are numbered by the order they came in; one whose
                // number went to another row here simply joins under a new one.
                squads << std::pair{news(1).toLongLong(), news(2).toLongLong()};
                omitted << c.id();
                return SQLITE_CHANGESET_OMIT;
            }
            c.kind = Conflict::Taken;
            c.what = what(table, key, here(1));
            return decide(c, true);
        }
        return SQLITE_CHANGESET_ABORT;
    }

    static int onconflict(void *self, int kind, sqlite3_changeset_iter *it)
    {
        return static_cast<Pass *>(self)->handle(kind, it);
    }

    // After the changes: squad rows that came in under a new number, then
    // every row the file brought in or changed that names a club, player or
    // country this world lacks.
    void references(const QByteArray &changeset)
    {
        Statement exists = db.prepare(QStringLiteral("SELECT 1 FROM kaderzeilen WHERE verein IS ?1 AND spieler IS ?2"));
        QList<qint64> appended;
        for (const auto &[club, player] : squads) {
            exists.bindAll(club, player);
            const bool there = exists.step();
            exists.reset();
            if (!there) {
                db.run(QStringLiteral("INSERT INTO kaderzeilen (verein, spieler) VALUES (?1, ?2)"), club, player);
                appended << db.lastInsertId();
                ++appendedrows;
            }
        }
        Statement team = db.prepare(QStringLiteral("SELECT NAME FROM vereine WHERE NUMMER = ?1 UNION ALL "
                                                   "SELECT NAME FROM vereine_national WHERE NUMMER = ?1"));
        Statement player = db.prepare(QStringLiteral("SELECT 1 FROM spieler WHERE NUMMER = ?1"));
        Statement country = db.prepare(QStringLiteral("SELECT 1 FROM vereine_national WHERE samename(NAME, ?1) OR samename(NATION, ?1)"));
        Statement squadrow = db.prepare(QStringLiteral("SELECT verein, spieler FROM kaderzeilen WHERE zeile = ?1"));
        const auto found = [](Statement &st, const QVariant &v) {
            st.bind(1, v);
            const bool yes = st.step();
            st.reset();
            return yes;
        };
        // Whether the squad row names a club or a player this world lacks.
        const auto lacking = [&](qint64 zeile, Conflict &c) {
            squadrow.bind(1, zeile);
            if (!squadrow.step()) {
                squadrow.reset();
                return false;
            }
            const qint64 club = squadrow.integer(0), who = squadrow.integer(1);
            squadrow.reset();
            QStringList missing;
            if (!found(team, club))
                missing << QStringLiteral("den Verein %1 gibt es hier nicht").arg(club);
            if (!found(player, who))
                missing << QStringLiteral("den Spieler %1 gibt es hier nicht").arg(who);
            c.what = QStringLiteral("Kaderzeile %1 (Spieler %2 in Verein %3)").arg(zeile).arg(who).arg(club);
            c.why = missing.join(QStringLiteral(", "));
            return !missing.isEmpty();
        };
        // The choice for a conflict of reference: kept as the file has it,
        // or the row goes back to what it was (true).
        const auto takeback = [&](Conflict &c) {
            const std::optional<Choice> choice = choices ? choices->of(c) : std::nullopt;
            if (!choice)
                conflicts << c;
            if (choice == Choice::Theirs)
                return false;
            omitted << c.id();
            return true;
        };
        for (ChangesetReader it(changeset); it.next();) {
            if (it.op() == SQLITE_DELETE)
                continue;
            const QString table = it.table();
            const qint64 key = it.key().toLongLong();
            Conflict c;
            c.kind = Conflict::Reference;
            c.row = RowKey{table, key};
            if (omitted.contains(c.id()))
                continue;
            if (table == QLatin1String("kaderzeilen")) {
                if (!lacking(key, c))
                    continue;
            } else if (table == QLatin1String("vereine")) {
                const QVariant nation = it.newValue(9);
                if (!nation.isValid() || nation.toString().isEmpty() || found(country, nation))
                    continue;
                c.what = what(table, key, it.newValue(1));
                c.why = QStringLiteral("das Land „%1“ gibt es hier nicht").arg(nation.toString());
            } else {
                continue;
            }
            if (!takeback(c))
                continue;
            const QList<ColumnInfo> &cs = cols(table);
            if (it.op() == SQLITE_INSERT) {
                db.run(QStringLiteral("DELETE FROM %1 WHERE \"%2\" = ?1").arg(table, cs.first().name), key);
                continue;
            }
            for (int i = 1; i < it.columns() && i < cs.size(); ++i) {
                if (it.newValue(i).isValid())
                    db.run(QStringLiteral("UPDATE %1 SET \"%2\" = ?1 WHERE \"%3\" = ?2").arg(table, cs.at(i).name, cs.first().name),
                           it.oldValue(i).isNull() ? QVariant() : it.oldValue(i), key);
            }
        }
        for (qint64 zeile : appended) {
            Conflict c;
            c.kind = Conflict::Reference;
            c.row = RowKey{QStringLiteral("kaderzeilen"), zeile};
            if (lacking(zeile, c) && takeback(c))
                db.run(QStringLiteral("DELETE FROM kaderzeilen WHERE zeile = ?1"), zeile);
        }
    }
};

int countrows(const QByteArray &changeset)
{
    int n = 0;
    for (ChangesetReader it(changeset); it.next();)
        ++n;
    return n;
}

ApplyOutcome runpass(Database &db, const QByteArray &changeset, const ApplyChoices *choices)
{
    ApplyOutcome out;
    Pass pass(db, choices);
    out.changes = countrows(changeset);
    const int rc = sqlite3changeset_apply_v2(db.handle(), int(changeset.size()), const_cast<char *>(changeset.constData()),
                                             nullptr, &Pass::onconflict, &pass, nullptr, nullptr, 0);
    if (rc != SQLITE_OK)
        throw DbError(rc, QStringLiteral("Änderungen anwenden: %1").arg(QString::fromUtf8(sqlite3_errmsg(db.handle()))));
    pass.references(changeset);
    out.conflicts = pass.conflicts;
    out.already = pass.already;
    out.applied = std::max(0, out.changes - pass.already - int(pass.omitted.size())) + pass.appendedrows;
    return out;
}

} // namespace

ApplyOutcome previewchanges(Database &db, const QByteArray &changeset)
{
    return runguarded(QStringLiteral("Die Änderungen lassen sich nicht prüfen"), [&] {
        // Everything inside a savepoint that is rolled back.
        Transaction tx(db);
        ApplyOutcome out = runpass(db, changeset, nullptr);
        out.result = Result::success();
        return out;
    });
}

ApplyOutcome applychanges(Database &db, const QByteArray &changeset, const ApplyChoices &choices)
{
    ApplyOutcome out = runpass(db, changeset, &choices);
    if (!out.conflicts.isEmpty()) {
        QStringList lines;
        for (const Conflict &c : out.conflicts)
            lines << c.text();
        out.result = Result::failure(QStringLiteral("%1 Konflikte ohne Entscheidung; es wurde nichts geändert:\n%2")
                                         .arg(out.conflicts.size())
                                         .arg(lines.join(QLatin1Char('\n'))));
        return out;
    }
    if (out.applied > 0)
        out.result = Result::success(QStringLiteral("%1 Zeilen geändert.").arg(out.applied));
    else if (out.already == out.changes)
        out.result = Result::success(QStringLiteral("Die Änderungen sind in dieser Welt schon enthalten; es wurde nichts geändert."));
    else
        out.result = Result::success(QStringLiteral("Es wurde nichts geändert: diese Welt behält ihre Zeilen."));
    return out;
}

ApplyOutcome applychangefile(World &world, const QString &path, const ChangeFile &file, const ApplyChoices &choices)
{
    const QString name = QFileInfo(path).fileName();
    return world.run([&](Database &db) { return applychanges(db, file.changeset, choices); },
                     QStringLiteral("„%1“ lässt sich nicht anwenden").arg(name),
                     Step(QStringLiteral("Änderungsdatei „%1“ angewendet").arg(name), QStringLiteral("Änderungen anwenden")));
}

Result takeoverchanges(World &world, const QString &otherPath, const QList<EntityChange> &chosen, const QString &from)
{
    if (!world.db())
        return Result::failure(QStringLiteral("Es ist keine Datenbank geöffnet."));
    if (chosen.isEmpty())
        return Result::failure(QStringLiteral("Es ist keine Änderung angehakt."));
    OtherWorld other(*world.db(), otherPath);
    if (!other.result())
        return other.result();
    return world.run([&](Database &db) { return takeover(db, chosen); },
                     QStringLiteral("Die Änderungen lassen sich nicht übernehmen"),
                     Step(QStringLiteral("%1 Änderungen aus „%2“ übernommen").arg(chosen.size()).arg(from)));
}

} // namespace zorbo
