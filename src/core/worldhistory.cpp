// The world's history: steps recorded around each run, undone and redone
// through the engine's changesets, and restore points of the whole world.
#include "core/world.h"

#include "platform/fileerror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <functional>

namespace zorbo {

namespace {

// Steps beyond these are forgotten, oldest first, so that the history of a
// world that imports whole worlds again and again doesn't outgrow it.
constexpr qint64 keptSteps = 200;
constexpr qint64 keptBytes = 256LL * 1024 * 1024;

const QString applyLead = QStringLiteral("Der Verlauf lässt sich nicht anwenden");

Result norun()
{
    return Result::failure(QStringLiteral("Während eines Laufs lässt sich der Verlauf nicht ändern."));
}

// Tables that are no part of the world: the history, and what the game's
// files were at their last import or export.
const QStringList &outsideworld()
{
    static const QStringList tables{QStringLiteral("verlauf"), QStringLiteral("spieldateien")};
    return tables;
}

std::optional<QString> pointpath(const QString &programFolder, const QString &name, QString *why);

// Steps kept by their restore points take them along to their first undo,
// attached to the connection while this lives (an attachment can't wait
// inside a transaction). The engine attaches no more than ten files.
constexpr int attachedPoints = 8;

class Waysback {
public:
    explicit Waysback(Database &db) : m_db(db) {}
    ~Waysback()
    {
        for (const QString &alias : std::as_const(m_aliases)) {
            try {
                m_db.exec(QStringLiteral("DETACH DATABASE ") + alias);
            } catch (const DbError &) {
                // Gone with the connection at the latest.
            }
        }
    }
    Waysback(const Waysback &) = delete;
    Waysback &operator=(const Waysback &) = delete;

    qsizetype count() const { return m_aliases.size(); }
    QString attach(const QString &path)
    {
        const QString alias = QStringLiteral("punkt%1").arg(m_aliases.size() + 1);
        m_db.run(QStringLiteral("ATTACH DATABASE ?1 AS ") + alias, path);
        m_aliases << alias;
        return alias;
    }

private:
    Database &m_db;
    QStringList m_aliases;
};

} // namespace

void World::record(const Step &step)
{
    if (!m_recordsteps)
        return;
    // The restore point such a run keeps anyway is its way back; recording
    // each of its rows would cost it more than its own work.
    m_replacing = step.replacing && !step.restorepoint.isEmpty();
    if (!m_replacing)
        m_recorder = std::make_unique<ChangeRecorder>(*m_db, outsideworld());
}

bool World::keepstep(const Step &step, const QString &point)
{
    QByteArray changes;
    QString way;
    qint64 waybytes = 0;
    if (m_replacing) {
        bool changedworld = m_pending.everything;
        for (const QString &table : std::as_const(m_pending.tables))
            changedworld = changedworld || !outsideworld().contains(table);
        if (!changedworld || point.isEmpty())
            return false;
        way = point;
        waybytes = QFileInfo(restorepointfolder(m_settings.programFolder) + QLatin1Char('/') + point).size();
    } else {
        if (!m_recorder)
            return false;
        changes = m_recorder->changeset();
        if (changes.isEmpty())
            return false;
    }
    m_db->exec(QStringLiteral("DELETE FROM verlauf WHERE zurueck = 1"));
    // The step's number is known before it is written, so that the changes,
    // megabytes after a whole import, are written once, with their checksum.
    // A step kept by its restore point sums up the point's name.
    const qint64 id = m_db->scalar(QStringLiteral("SELECT coalesce(max(schritt), 0) + 1 FROM verlauf")).toLongLong();
    Statement insert = m_db->prepare(QStringLiteral("INSERT INTO verlauf (schritt, zeit, text, zurueck, aenderungen, "
                                                    "pruefsumme, punkt, punktgroesse) VALUES (?1, ?2, ?3, 0, ?4, ?5, ?6, ?7)"));
    insert.bindAll(id, QDateTime::currentDateTime().toString(Qt::ISODate),
                   step.text.isEmpty() ? QStringLiteral("Änderung") : step.text, changes,
                   stepchecksum(id, way.isEmpty() ? changes : way.toUtf8()));
    if (way.isEmpty())
        insert.bindNull(6);
    else
        insert.bind(6, way);
    insert.bind(7, waybytes);
    insert.exec();
    // The newest step always stays, however large; a restore point a step
    // needs counts with its size.
    m_db->run(QStringLiteral("DELETE FROM verlauf WHERE schritt IN (SELECT schritt FROM (SELECT schritt, "
                             "row_number() OVER (ORDER BY schritt DESC) AS n, "
                             "sum(length(aenderungen) + punktgroesse) OVER (ORDER BY schritt DESC) AS bytes FROM verlauf) "
                             "WHERE n > 1 AND (n > ?1 OR bytes > ?2))"),
              keptSteps, keptBytes);
    return true;
}

QList<HistoryStep> World::history() const
{
    if (!m_db)
        return {};
    try {
        return historysteps(*m_db);
    } catch (const DbError &) {
        return {};
    }
}

Result World::replay(const QList<HistoryStep> &steps, bool undoing, const Progress &progress)
{
    if (!m_db)
        return Result::failure(QStringLiteral("Es ist keine Datenbank geöffnet."));
    if (m_watching)
        return norun();
    if (steps.isEmpty())
        return Result::failure(undoing ? QStringLiteral("Es gibt nichts rückgängig zu machen.")
                                       : QStringLiteral("Es gibt nichts wiederherzustellen."));
    m_brokenstep = 0;
    const QString doing = undoing ? QStringLiteral("rückgängig machen") : QStringLiteral("wiederherstellen");
    // A step that can't be applied leaves the world as it is, and the user
    // may drop the history from it on.
    const auto refused = [&](const HistoryStep &step, const QString &doingwhy) {
        m_brokenstep = step.id;
        return Result::failure(QStringLiteral("Schritt %1 des Verlaufs („%2“) lässt sich nicht %3 Die Datenbank selbst "
                                              "ist in Ordnung; es wurde nichts geändert. Der Verlauf lässt sich ab diesem "
                                              "Schritt löschen.")
                                   .arg(step.id)
                                   .arg(step.text, doingwhy));
    };
    // Nor is a step whose kept changes are not what was written.
    const auto broken = [&](const HistoryStep &step) {
        return refused(step, doing + QStringLiteral(": seine gespeicherten Änderungen sind unvollständig oder verändert "
                                                    "(die Prüfsumme stimmt nicht)."));
    };
    // The restore points of the steps that are kept by them.
    QHash<qint64, QString> ways;
    Waysback attached(*m_db);
    if (undoing) {
        Statement way = m_db->prepare(QStringLiteral("SELECT punkt FROM verlauf WHERE schritt = ?1 AND punkt IS NOT NULL"));
        for (const HistoryStep &step : steps) {
            way.bind(1, step.id);
            const std::optional<QString> name = way.step() ? std::optional(way.text(0)) : std::nullopt;
            way.reset();
            if (!name)
                continue;
            QString why;
            const std::optional<QString> path = pointpath(m_settings.programFolder, *name, &why);
            if (!path)
                return refused(step, QStringLiteral("rückgängig machen: er braucht dafür seinen "
                                                    "Wiederherstellungspunkt. ") + why);
            if (attached.count() == attachedPoints)
                return Result::failure(QStringLiteral("Mehr als %1 Schritte, die ganze Tabellen ersetzt haben, lassen sich "
                                                      "nicht auf einmal rückgängig machen; bitte in kleineren Schritten. Es "
                                                      "wurde nichts geändert.")
                                           .arg(attachedPoints));
            try {
                ways.insert(step.id, attached.attach(*path));
            } catch (const DbError &e) {
                return Result::failure(QStringLiteral("%1: der Wiederherstellungspunkt %2 lässt sich nicht öffnen: %3")
                                           .arg(applyLead, QDir::toNativeSeparators(*path), e.text()));
            }
        }
    }
    Result done;
    {
        Watch watch(*this);
        done = runtransaction(*m_db, applyLead, [&] {
            Statement read = m_db->prepare(
                QStringLiteral("SELECT aenderungen, pruefsumme, punkt FROM verlauf WHERE schritt = ?1"));
            Statement mark = m_db->prepare(QStringLiteral("UPDATE verlauf SET zurueck = ?1 WHERE schritt = ?2"));
            QStringList texts;
            for (qsizetype i = 0; i < steps.size(); ++i) {
                report(progress, i, steps.size());
                const HistoryStep &step = steps.at(i);
                read.bind(1, step.id);
                if (!read.step())
                    return Result::failure(QStringLiteral("Den Schritt %1 gibt es nicht mehr.").arg(step.id));
                const QByteArray changes = read.blob(0);
                const QByteArray sum = read.blob(1);
                const QString way = read.isNull(2) ? QString() : read.text(2);
                read.reset();
                if (!stepchecksumholds(step.id, way.isEmpty() ? changes : way.toUtf8(), sum)
                    || (!way.isEmpty() && !ways.contains(step.id)))
                    return broken(step);
                std::optional<QString> conflict;
                try {
                    if (!way.isEmpty())
                        unreplace(step.id, ways.value(step.id));
                    else if (!changes.isEmpty())
                        conflict = applychangeset(*m_db, changes, undoing);
                } catch (const DbError &e) {
                    // Bytes the engine can't read as changes: the step's, not the database's.
                    if (!e.damaged() || !way.isEmpty())
                        throw;
                    return broken(step);
                }
                if (conflict)
                    return Result::failure(QStringLiteral("„%1“ lässt sich nicht %2: %3. Es wurde nichts geändert.")
                                               .arg(step.text, doing, *conflict));
                mark.bindAll(undoing ? 1 : 0, step.id);
                mark.exec();
                texts << step.text;
            }
            report(progress, steps.size(), steps.size());
            settle();
            return Result::success((undoing ? QStringLiteral("Rückgängig gemacht: ") : QStringLiteral("Wiederhergestellt: "))
                                   + texts.join(QStringLiteral("; ")));
        });
    }
    publish(done.ok);
    if (done.ok) {
        // The points those steps needed are left to the usual pruning.
        if (!ways.isEmpty())
            prunerestorepoints();
        emit historychanged();
    }
    return done;
}

void World::unreplace(qint64 id, const QString &point)
{
    // What turns the world of before into the present one is the step's
    // way forth from now on, kept as an ordinary step's changes.
    QStringList differing;
    const QByteArray changes = diffchangeset(*m_db, point, outsideworld(), &differing);
    // The tables that differ come back whole, row for row as the point keeps them.
    for (const QString &table : std::as_const(differing)) {
        const QString name = QLatin1Char('"') + table + QLatin1Char('"');
        m_db->exec(QStringLiteral("DELETE FROM main.") + name);
        m_db->exec(QStringLiteral("INSERT INTO main.%1 SELECT * FROM %2.%1").arg(name, point));
        m_pending.tables.insert(table.compare(QLatin1String("kaderzeilen"), Qt::CaseInsensitive) == 0
                                    ? QStringLiteral("vereinspieler")
                                    : table);
    }
    // The engine tells no row of a table copied whole.
    if (!differing.isEmpty())
        m_pending.everything = true;
    m_db->run(QStringLiteral("UPDATE verlauf SET aenderungen = ?1, pruefsumme = ?2, punkt = NULL, punktgroesse = 0 "
                             "WHERE schritt = ?3"),
              changes, stepchecksum(id, changes), id);
}

Result World::undo(int count, const Progress &progress)
{
    QList<HistoryStep> steps;
    const QList<HistoryStep> all = history();
    for (auto it = all.crbegin(); it != all.crend() && steps.size() < count; ++it) {
        if (!it->undone)
            steps.append(*it);
    }
    return replay(steps, true, progress);
}

Result World::redo(int count, const Progress &progress)
{
    QList<HistoryStep> steps;
    for (const HistoryStep &step : history()) {
        if (step.undone && steps.size() < count)
            steps.append(step);
    }
    return replay(steps, false, progress);
}

Result World::gotostep(qint64 id, const Progress &progress)
{
    const QList<HistoryStep> all = history();
    QList<HistoryStep> undoing, redoing;
    bool known = id == 0;
    for (const HistoryStep &step : all) {
        known = known || step.id == id;
        if (!step.undone && step.id > id)
            undoing.prepend(step);
        else if (step.undone && step.id <= id)
            redoing.append(step);
    }
    if (!known)
        return Result::failure(QStringLiteral("Den Schritt %1 gibt es nicht im Verlauf.").arg(id));
    if (!undoing.isEmpty())
        return replay(undoing, true, progress);
    if (!redoing.isEmpty())
        return replay(redoing, false, progress);
    return Result::success(QStringLiteral("Die Welt steht schon auf diesem Schritt."));
}

Result World::drophistory()
{
    return dropsteps(0);
}

Result World::dropsteps(qint64 from)
{
    if (!m_db)
        return Result::failure(QStringLiteral("Es ist keine Datenbank geöffnet."));
    if (m_watching)
        return norun();
    const Result done = runtransaction(*m_db, QStringLiteral("Der Verlauf lässt sich nicht löschen"), [&] {
        if (from == 0) {
            m_db->exec(QStringLiteral("DELETE FROM verlauf"));
            return Result::success(QStringLiteral("Der Verlauf wurde gelöscht."));
        }
        const QVariant undone = m_db->scalar(QStringLiteral("SELECT zurueck FROM verlauf WHERE schritt = ?1"), from);
        if (undone.isNull())
            return Result::failure(QStringLiteral("Den Schritt %1 gibt es nicht im Verlauf.").arg(from));
        // Undone steps follow the done ones: beyond an undone step lie the
        // newer ones, beyond a done step the older ones.
        const int dropped = m_db->run(undone.toInt() != 0 ? QStringLiteral("DELETE FROM verlauf WHERE schritt >= ?1")
                                                           : QStringLiteral("DELETE FROM verlauf WHERE schritt <= ?1"),
                                      from);
        return Result::success(dropped == 1 ? QStringLiteral("Schritt %1 wurde aus dem Verlauf gelöscht.").arg(from)
                                            : QStringLiteral("Der Verlauf ab Schritt %1 wurde gelöscht (%2 Schritte).")
                                                  .arg(from)
                                                  .arg(dropped));
    });
    if (done.ok) {
        m_brokenstep = 0;
        prunerestorepoints();
        emit historychanged();
    }
    return done;
}

namespace {

// Characters no file name may hold become dashes.
QString filepart(const QString &reason)
{
    QString part;
    for (const QChar c : reason)
        part += c.unicode() < 0x20 || QStringLiteral("/\\:*?\"<>|").contains(c) ? QLatin1Char('-') : c;
    return part.trimmed().isEmpty() ? QStringLiteral("Sicherung") : part.trimmed();
}

// The path of the restore point with this file name, or nothing after a
// message for a name that is no restore point of the folder.
std::optional<QString> pointpath(const QString &programFolder, const QString &name, QString *why)
{
    const QString folder = restorepointfolder(programFolder);
    const QString path = folder + QLatin1Char('/') + name;
    if (name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\')) || !restorepointname().match(name).hasMatch()
        || !QFileInfo(path).isFile()) {
        *why = QStringLiteral("Einen Wiederherstellungspunkt „%1“ gibt es in %2 nicht.").arg(name, QDir::toNativeSeparators(folder));
        return std::nullopt;
    }
    return path;
}

} // namespace

QHash<QString, qint64> World::neededpoints() const
{
    QHash<QString, qint64> needed;
    if (!m_db)
        return needed;
    try {
        Statement st = m_db->prepare(QStringLiteral("SELECT punkt, schritt FROM verlauf WHERE punkt IS NOT NULL"));
        while (st.step())
            needed.insert(st.text(0), st.integer(1));
    } catch (const DbError &) {
        // A history that can't be read needs nothing.
    }
    return needed;
}

void World::prunerestorepoints()
{
    // The points steps of the history need are theirs, outside the number
    // of the settings; the history's bound keeps them few.
    const QHash<QString, qint64> needed = neededpoints();
    int kept = 0;
    for (const RestorePoint &point : restorepoints(m_settings.programFolder, false)) {
        if (!point.byhand && !needed.contains(point.name) && ++kept > m_settings.restorepoints)
            QFile::remove(point.path);
    }
}

Result World::keeprestorepoint(const QString &reason, QString *name)
{
    if (!m_db)
        return Result::failure(QStringLiteral("Es ist keine Datenbank geöffnet."));
    if (m_watching)
        return Result::failure(QStringLiteral("Während eines Laufs lässt sich kein Wiederherstellungspunkt anlegen."));
    return keeprestorepoint(*m_db, reason, false, name);
}

Result World::makerestorepoint(const QString &name)
{
    if (!m_db)
        return Result::failure(QStringLiteral("Es ist keine Datenbank geöffnet."));
    if (m_watching)
        return Result::failure(QStringLiteral("Während eines Laufs lässt sich kein Wiederherstellungspunkt anlegen."));
    if (name.trimmed().isEmpty())
        return Result::failure(QStringLiteral("Der Wiederherstellungspunkt braucht einen Namen."));
    return keeprestorepoint(*m_db, name, true, nullptr);
}

Result World::removerestorepoint(const QString &name)
{
    QString why;
    const std::optional<QString> path = pointpath(m_settings.programFolder, name, &why);
    if (!path)
        return Result::failure(why);
    if (const qint64 step = neededpoints().value(name); step != 0)
        return Result::failure(QStringLiteral("Der Wiederherstellungspunkt %1 wird noch gebraucht: Schritt %2 des Verlaufs "
                                              "lässt sich nur mit ihm rückgängig machen. Erst den Verlauf ab diesem Schritt "
                                              "löschen, dann den Wiederherstellungspunkt.")
                                   .arg(name)
                                   .arg(step));
    QFile file(*path);
    if (!file.remove())
        return Result::failure(QStringLiteral("Der Wiederherstellungspunkt %1 lässt sich nicht löschen: %2")
                                   .arg(QDir::toNativeSeparators(*path), fileerrortext(file)));
    return Result::success(QStringLiteral("Der Wiederherstellungspunkt %1 wurde gelöscht.").arg(name));
}

namespace {

Result pointfrom(const QString &database, const std::function<Result(Database &)> &keep)
{
    // A second connection reads the world as last committed.
    try {
        Database before(database, Database::ReadOnly);
        return keep(before);
    } catch (const DbError &e) {
        return Result::failure(QStringLiteral("Der Wiederherstellungspunkt lässt sich nicht anlegen: %1 lässt sich nicht "
                                              "lesen: %2")
                                   .arg(QDir::toNativeSeparators(database), e.text()));
    }
}

} // namespace

void World::beginpoint(const QString &reason)
{
    droppoint();
    auto early = std::make_unique<EarlyPoint>();
    EarlyPoint *point = early.get();
    // The thread touches nothing of the world but its settings, which no run changes.
    point->copying = std::thread([this, point, reason, database = m_db->path()] {
        point->made = pointfrom(database, [&](Database &before) {
            return keeprestorepoint(before, reason, false, &point->name);
        });
    });
    m_earlypoint = std::move(early);
}

void World::droppoint()
{
    const std::unique_ptr<EarlyPoint> early = std::move(m_earlypoint);
    if (!early)
        return;
    early->copying.join();
    if (early->made.ok && !early->name.isEmpty())
        QFile::remove(restorepointfolder(m_settings.programFolder) + QLatin1Char('/') + early->name);
}

Result World::keepbefore(const QString &reason, QString *name)
{
    // A run that changed no row needs no way back.
    if (m_pending.isEmpty()) {
        droppoint();
        return Result::success();
    }
    if (const std::unique_ptr<EarlyPoint> early = std::move(m_earlypoint)) {
        early->copying.join();
        if (early->made.ok)
            *name = early->name;
        return early->made;
    }
    return pointfrom(m_db->path(), [&](Database &before) { return keeprestorepoint(before, reason, false, name); });
}

void World::settlepoint(const QString &name, bool committed)
{
    if (name.isEmpty())
        return;
    if (committed)
        prunerestorepoints();
    else
        QFile::remove(restorepointfolder(m_settings.programFolder) + QLatin1Char('/') + name);
}

Result World::keeprestorepoint(Database &source, const QString &reason, bool byhand, QString *made)
{
    const QString folder = restorepointfolder(m_settings.programFolder);
    const QString failed = QStringLiteral("Der Wiederherstellungspunkt lässt sich nicht anlegen");
    if (!QDir().mkpath(folder))
        return Result::failure(QStringLiteral("%1: der Ordner %2 lässt sich nicht anlegen.")
                                   .arg(failed, QDir::toNativeSeparators(folder)));
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd_hh-mm-ss"));
    // Points of one second are numbered, so that their order stays known.
    const QStringList same = QDir(folder).entryList({time + QStringLiteral("*.mdb")}, QDir::Files);
    int last = 0;
    for (const QString &other : same) {
        const QRegularExpressionMatch match = restorepointname().match(other);
        if (match.hasMatch())
            last = std::max(last, match.captured(2).isEmpty() ? 1 : match.captured(2).toInt());
    }
    const QString reasonpart = (byhand ? byhandmark : QString()) + filepart(reason);
    const QString name = same.isEmpty() ? QStringLiteral("%1_%2.mdb").arg(time, reasonpart)
                                        : QStringLiteral("%1.%2_%3.mdb").arg(time).arg(last + 1).arg(reasonpart);
    // Written under another name first, so that a half copy is never listed.
    const QString path = folder + QLatin1Char('/') + name;
    const QString part = path + QStringLiteral(".teil");
    try {
        QFile::remove(part);
        source.copyto(part);
    } catch (const DbError &e) {
        QFile::remove(part);
        QFile::remove(part + QStringLiteral("-journal"));
        return Result::failure(QStringLiteral("%1: %2 lässt sich nicht schreiben: %3")
                                   .arg(failed, QDir::toNativeSeparators(path), e.text()));
    }
    if (!QFile::rename(part, path)) {
        QFile::remove(part);
        return Result::failure(QStringLiteral("%1: %2 lässt sich nicht anlegen.").arg(failed, QDir::toNativeSeparators(path)));
    }
    if (made)
        *made = name;
    return Result::success(QStringLiteral("Wiederherstellungspunkt %1 angelegt.").arg(name));
}

Result World::restore(const QString &name, const Progress &progress)
{
    if (!m_db)
        return Result::failure(QStringLiteral("Es ist keine Datenbank geöffnet."));
    if (m_watching)
        return norun();
    QString why;
    const std::optional<QString> found = pointpath(m_settings.programFolder, name, &why);
    if (!found)
        return Result::failure(why);
    const QString path = *found;
    const QRegularExpressionMatch named = restorepointname().match(name);
    if (!isworldfile(path, &why))
        return Result::failure(why);
    // Once begun, a restore is not stopped halfway: the progress only shows.
    if (progress)
        progress(0, 2);
    // The present world is kept first; pruning waits, it might take the
    // point that is to come back.
    if (const Result kept = keeprestorepoint(QStringLiteral("Vor der Wiederherstellung")); !kept)
        return Result::failure(kept.message + QStringLiteral(" Es wurde nichts geändert."));
    const QString when = QDateTime::fromString(named.captured(1), QStringLiteral("yyyy-MM-dd_hh-mm-ss"))
                             .toString(QStringLiteral("dd.MM.yyyy hh:mm:ss"));
    Result done = Result::success(QStringLiteral("Die Welt vom %1 (%2) ist wiederhergestellt; die bisherige ist als "
                                                 "Wiederherstellungspunkt aufgehoben.")
                                      .arg(when, named.captured(4)));
    try {
        m_db->copyfrom(path);
        upgradeschema(*m_db);
    } catch (const DbError &e) {
        done = Result::failure(QStringLiteral("Der Wiederherstellungspunkt %1 lässt sich nicht zurückholen: %2").arg(name, e.text()));
    }
    if (progress)
        progress(2, 2);
    prunerestorepoints();
    Change everything;
    everything.everything = true;
    emit changed(everything);
    emit historychanged();
    return done;
}

} // namespace zorbo
