#pragma once

#include "core/history.h"
#include "core/schema.h"
#include "core/settings.h"
#include "platform/changeset.h"
#include "platform/runner.h"

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <memory>
#include <thread>
#include <vector>

namespace zorbo {

// What a committed run changed in the database, as the engine's update hook
// told it row by row.
struct Change {
    QSet<QString> tables;    // tables with rows inserted, changed or deleted
    QSet<qint64> teams;      // NUMMER of rows of vereine and vereine_national, and the
                             // club of squad rows inserted or changed
    QSet<qint64> players;    // NUMMER of rows of spieler
    // Rows changed that the hook did not tell of, as a DELETE without WHERE
    // clears a table at once: whatever is shown may be out of date.
    bool everything = false;

    bool isEmpty() const { return tables.isEmpty() && !everything; }
};

// How a run that changes the world enters its history. A run that changes
// no row leaves no step.
struct Step {
    Step(QString text = {}, QString restorepoint = {}, bool replacing = false)
        : text(std::move(text)), restorepoint(std::move(restorepoint)), replacing(replacing) {}

    QString text;         // German, as the menu names it: "Verein „FC Köln“ gespeichert"
    QString restorepoint; // when set, a run that changed rows keeps the world as it
                          // was before as a restore point with this reason, and
                          // the run is refused without one; a run that fails or
                          // changes nothing leaves the restore points as they are
    bool replacing;       // the run replaces most of its tables (an import of a whole
                          // file): with a restore point, the step keeps no changes
                          // but names the point as its way back; its first undo
                          // turns it into an ordinary step
};

// A program folder brought up as the editor's start-up does it (see
// openworld), with the settings, the open database and the start-up
// messages. Operations on the database run through run(), which tells the
// listeners of changed() what a committed run changed.
class World : public QObject {
    Q_OBJECT

public:
    ~World() override;

    const Settings &settings() const { return m_settings; }
    Settings &settings() { return m_settings; }
    // Null when the database could not be opened or is not one of ours.
    Database *db() const { return m_db.get(); }
    DbOpenState dbState() const { return m_dbState; }
    // German, one each, in the order of the start-up: settings, folders, database.
    const QStringList &messages() const { return m_messages; }
    // The same by where they come from, for a window that shows them apart:
    // the settings file, the delivered pictures that are missing, the
    // database and the transfer market.
    const QString &settingsMessage() const { return m_settingsMessage; }
    const QStringList &missingPictures() const { return m_missingPictures; }
    const QString &databaseMessage() const { return m_databaseMessage; }
    bool marketCreated() const { return m_marketCreated; }

    // Runs op(db) as runtransaction does (lead goes before a database error's
    // text) and, when it committed, emits changed() with what it changed. A
    // run that fails or is cancelled rolls back and tells nothing. A run
    // inside a run belongs to the outer one. Op returns Result or an outcome
    // with a member `result`.
    // The rows the run changed become one step of the history, named by
    // step; the steps undone before are dropped.
    template <typename Op>
    std::invoke_result_t<Op &, Database &> run(Op &&op, const QString &lead = {}, const Step &step = {});

    // The history, oldest step first.
    QList<HistoryStep> history() const;
    // Undoes the newest count steps that are done, or redoes the oldest
    // count undone ones, all or none: when a row of a step was changed since
    // (by another program), nothing changes and the result says where.
    // Listeners of changed() hear what changed.
    Result undo(int count = 1, const Progress &progress = {});
    Result redo(int count = 1, const Progress &progress = {});
    // Undoes or redoes steps until the step with this id is the newest done
    // one; 0 undoes every kept step.
    Result gotostep(qint64 id, const Progress &progress = {});
    // Forgets every step.
    Result drophistory();
    // The step that the last undo or redo refused because its kept changes
    // are not as written (0: none); see dropsteps.
    qint64 brokenstep() const { return m_brokenstep; }
    // Forgets the step with this id and the steps that can only be reached
    // through it: for a done step the older ones, for an undone step the
    // newer ones. 0 forgets every step.
    Result dropsteps(qint64 from);

    // Keeps a copy of the world as a restore point with this reason; *name
    // tells its file name. Nothing is pruned: see prunerestorepoints().
    Result keeprestorepoint(const QString &reason, QString *name = nullptr);
    // Removes the oldest restore points kept by runs beyond the settings'
    // number; the ones made by hand stay.
    void prunerestorepoints();
    // A restore point the user makes by hand, under a name of his own; it is
    // never pruned.
    Result makerestorepoint(const QString &name);
    // Deletes the restore point with this file name.
    Result removerestorepoint(const QString &name);
    // Brings the world of the restore point back, after keeping a restore
    // point of the present one. Listeners hear that everything changed.
    Result restore(const QString &name, const Progress &progress = {});

    // Closes the database, lets work have its file to itself (as a
    // compaction needs) and opens the file again as the start-up does;
    // listeners then hear that everything may have changed. Refused inside a
    // run. When the file no longer opens as ours, db() is null afterwards and
    // the result says why.
    Result closedwhile(const std::function<Result(const QString &path)> &work);

signals:
    void changed(const zorbo::Change &change);
    // A step was added, undone or redone, or the history was dropped.
    void historychanged();

private:
    friend std::unique_ptr<World> openworld(const QString &programFolder, const Progress &progress);
    World() = default;

    // The update hook, on while a run goes. holding: the run's changed pages
    // stay in memory until the commit, so that a second connection can still
    // read the world as it was before (for its restore point).
    class Watch {
    public:
        explicit Watch(World &world, bool holding = false);
        ~Watch();
        Watch(const Watch &) = delete;
        Watch &operator=(const Watch &) = delete;

    private:
        World &m_world;
        bool m_holding;
        qint64 m_cachesize = 0;
    };
    void noted(RowChange change, const char *table, qint64 rowid);
    // Inside the run's transaction: starts recording its rows, and keeps
    // what it changed as a step (false when it changed nothing).
    void record(const Step &step);
    bool keepstep(const Step &step, const QString &point);
    // Undoes (or redoes) the steps in the order given, as one run.
    Result replay(const QList<HistoryStep> &steps, bool undoing, const Progress &progress);
    // Inside replay: undoes the step kept by the restore point attached as
    // point, which keeps the changes from then on.
    void unreplace(qint64 id, const QString &point);
    // The restore points that steps need, with the step.
    QHash<QString, qint64> neededpoints() const;
    // Copies source (the open database, or during a run a second connection
    // that sees the world as last committed) into a restore point.
    Result keeprestorepoint(Database &source, const QString &reason, bool byhand, QString *name);
    // As a run that keeps a restore point begins: the point is copied on a
    // thread of its own while the run works. Until the run commits, the
    // database file holds the world as it was before (the run's pages stay
    // in memory), so the copy is the world of before the run.
    void beginpoint(const QString &reason);
    // Inside a run's transaction, once op succeeded: keeps the world of
    // before the run when the run changed rows; *name tells the point made.
    Result keepbefore(const QString &reason, QString *name);
    // After the run's transaction: a copy begun for a run that failed before
    // it was taken goes again.
    void droppoint();
    // After the run: a point made for a run that did not commit goes again,
    // one of a committed run may push out the oldest.
    void settlepoint(const QString &name, bool committed);
    // Inside the run's transaction, before it commits: rows the hook missed,
    // clubs of the squad rows.
    void settle();
    void publish(bool committed);

    Settings m_settings;
    std::unique_ptr<Database> m_db;
    DbOpenState m_dbState = DbOpenState::Failed;
    QStringList m_messages;
    QString m_settingsMessage;
    QStringList m_missingPictures;
    QString m_databaseMessage;
    bool m_marketCreated = false;

    bool m_watching = false;
    qint64 m_brokenstep = 0;
    bool m_recordsteps = true;             // off while the start-up makes the market
    std::unique_ptr<ChangeRecorder> m_recorder; // while a run goes
    struct EarlyPoint {
        ~EarlyPoint()
        {
            if (copying.joinable())
                copying.join();
        }
        std::thread copying;
        Result made;
        QString name; // of the point made
    };
    std::unique_ptr<EarlyPoint> m_earlypoint;   // a restore point being copied while a run goes
    bool m_replacing = false;  // the run's step is kept by its restore point, without a recorder
    Change m_pending;
    qint64 m_told = 0;         // rows the hook told of during the run
    qint64 m_changesBefore = 0; // the engine's count of changed rows when the run began
    QList<qint64> m_squadRows;  // rowids of squad rows inserted or changed
    // Numbers of players and teams as the hook tells them, sorted into the
    // change's sets once the run is through: a whole import tells of each.
    std::vector<qint64> m_playerRows, m_teamRows;
    QByteArray m_lastTable;     // the table of the row told before, to spare a lookup per row
};

template <typename Op>
std::invoke_result_t<Op &, Database &> World::run(Op &&op, const QString &lead, const Step &step)
{
    using Outcome = std::invoke_result_t<Op &, Database &>;
    if (!m_db) {
        Outcome none{};
        resultof(none) = Result::failure(QStringLiteral("Es ist keine Datenbank geöffnet."));
        return none;
    }
    if (m_watching)
        return runtransaction(*m_db, lead, [&] { return op(*m_db); });
    Outcome outcome{};
    bool stepped = false;
    QString point;
    {
        Watch watch(*this, !step.restorepoint.isEmpty());
        if (!step.restorepoint.isEmpty())
            beginpoint(step.restorepoint);
        outcome = runtransaction(*m_db, lead, [&] {
            record(step);
            Outcome done = op(*m_db);
            if (resultof(done).ok) {
                settle();
                if (!step.restorepoint.isEmpty()) {
                    if (const Result kept = keepbefore(step.restorepoint, &point); !kept) {
                        Outcome refused{};
                        resultof(refused) = Result::failure(kept.message + QStringLiteral(" Es wurde nichts geändert."));
                        return refused;
                    }
                }
                stepped = keepstep(step, point);
            }
            return done;
        });
        droppoint();
    }
    settlepoint(point, resultof(outcome).ok);
    publish(resultof(outcome).ok);
    if (resultof(outcome).ok && stepped)
        emit historychanged();
    return outcome;
}

// Reads the settings of the program folder or creates them, unpacks the
// delivered folders, opens the database or creates it and makes sure the
// transfer market is there (reported to progress; a stop leaves it out and
// says so in the messages). Never fails: what went wrong is in messages(),
// and db() is null when there is no database.
std::unique_ptr<World> openworld(const QString &programFolder, const Progress &progress = {});

} // namespace zorbo
