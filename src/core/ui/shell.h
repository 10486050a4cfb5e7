#pragma once

#include "core/world.h"
#include "platform/operation.h"

#include <QColor>
#include <QHash>
#include <QImage>
#include <QObject>
#include <QString>
#include <array>
#include <functional>
#include <memory>
#include <optional>

class QAction;
class QWidget;

namespace zorbo {

class Dialogs;
class TeamLists;

// A run in progress: the window is disabled and the status bar shows the
// text and the progress until the object goes.
class BusyScope {
public:
    virtual ~BusyScope() = default;
    virtual Progress progress() = 0;
};

// A crest chosen in the crest picker.
struct ChosenCrest {
    QString wappennr;
    QImage image;
};

// What the crests' subsystem lends the other windows.
struct CrestService {
    // The picture of crest n; a null image when it has none.
    std::function<QImage(int n)> image;
    // The crest picker, opened on the crest on show; nothing when cancelled.
    std::function<std::optional<ChosenCrest>(const QImage &current, const QString &wappennr)> choose;
};

// A kit drawing chosen in the kit picker, with the four colours (Trikot1,
// Trikot2, Hose, Streifen) that the current colour table gives it, if any.
struct ChosenKit {
    int art = 0;
    std::optional<std::array<QColor, 4>> colours;
};

// What the editor lends the other windows: the kit picker for one slot
// (0 home, 1 away, 2 goalkeeper), opened on the drawing on show; nothing
// when cancelled.
struct KitService {
    std::function<std::optional<ChosenKit>(int slot, int art)> choose;
};

// A window that can hold work not written yet, as a form with typing. The
// shell asks it before anything replaces what it shows.
class Document {
public:
    virtual ~Document() = default;
    // Whether it holds work not written yet.
    virtual bool modified() const = 0;
    // The window's name in the question, as "Land/Verein".
    virtual QString title() const = 0;
    // Writes the work; false when the save was refused (the window has said why).
    virtual bool save() = 0;
    // Forgets the work: the window shows what it showed before it.
    virtual void discard() = 0;
};

// What became of the documents' work when the shell asked.
enum class Settled { Unmodified, Saved, Discarded, Cancelled };

// What the main window offers the windows of the subsystems: the open world,
// the dialogs, runs with progress, the status bar, the menu entries and the
// services one subsystem lends another. Each subsystem's install function
// takes a Shell and hangs its work on the entries named in the shell's menu
// table; an entry nobody takes stays disabled.
class Shell : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // The open world; null before the start-up has opened it.
    virtual World *world() const = 0;
    Database *db() const { return world() ? world()->db() : nullptr; }
    // The world's settings; before the start-up, settings with no folder.
    virtual Settings &settings() = 0;
    virtual Dialogs &dialogs() const = 0;
    virtual QWidget *window() = 0;
    // The country and club lists that every combo box shows.
    virtual TeamLists *lists() const = 0;
    // The widget that fills the window below the toolbar.
    virtual void setcentral(QWidget *widget) = 0;

    // A menu entry or toolbar button by its objectName, as "mnuimportitem(0)";
    // null when the table has no such entry.
    virtual QAction *entry(const QString &name) const = 0;
    // Runs work on the entry (and on the toolbar button that stands for it)
    // and enables both.
    virtual void handle(const QString &name, std::function<void()> work) = 0;
    // Disables (or enables again) an entry that has work, with its button;
    // "Offen" tells whether the entry fits what is on show.
    void setopen(const QString &name, bool open);

    // File dialogs for a kind of file: they open in the folder last used for
    // that kind (start's folder until then; start's file name is kept) and
    // remember the folder of the file chosen. Empty when the user cancels.
    QString openfile(FileKind kind, const QString &title, const QString &start, const QStringList &filters, int *filter);
    QString savefile(FileKind kind, const QString &title, const QString &start, const QStringList &filters, int *filter);

    // Files that come from outside the file dialogs (the command line, the
    // list of files opened last): each subsystem names the endings it opens,
    // as "tea", and the work that opens a file of that kind.
    void handlefile(const QString &suffix, std::function<void(const QString &file)> open);
    // Imports that come back from that list: each subsystem names its
    // formats by key, as "vereine", with the words the list shows beside the
    // file ("Import Vereine") and the work that imports a file in that format.
    void handleimport(const QString &kind, const QString &words, std::function<void(const QString &file)> import);
    QString importwords(const QString &kind) const { return m_imports.value(kind).words; }
    // An import of file in the format kind goes to the top of that list.
    void rememberimport(const QString &file, const QString &kind) { writerecentfile(settings(), file, kind); }
    // Opens file by its ending, or imports it in the format kind when one is
    // given, after asking about typing not saved yet; false, with a message
    // that names the file, when it is missing or nothing opens its kind.
    bool openpath(const QString &file, const QString &kind = {});
    // Whether a subsystem opens files of file's ending.
    bool opens(const QString &file) const;

    virtual std::unique_ptr<BusyScope> busy(const QString &text) = 0;
    virtual void status(const QString &text) = 0;

    // The node on show in the tree, as "T12" for a club, and its text; the
    // window that shows the tree tells it.
    QString shownkey() const { return m_shownkey; }
    QString showntext() const { return m_showntext; }
    void setshown(const QString &key, const QString &text)
    {
        m_shownkey = key;
        m_showntext = text;
        emit shown(key);
    }

    // Crest pictures and the crest picker, once the crests' subsystem has
    // lent them; a null image and no choice before.
    void setcrests(CrestService service) { m_crests = std::move(service); }
    QImage crestimage(int n) const { return m_crests.image ? m_crests.image(n) : QImage(); }
    std::optional<ChosenCrest> choosecrest(const QImage &current, const QString &wappennr) const
    {
        return m_crests.choose ? m_crests.choose(current, wappennr) : std::nullopt;
    }

    // "Erst vergleichen" before an export over a game file that changed
    // since: shows how the file differs from what the editor would write.
    // The self-check's list stands here until the comparison of worlds
    // takes this place (setcomparison is the one hook for it).
    void setcomparison(std::function<void(const QString &gamefile)> compare) { m_compare = std::move(compare); }
    void comparegamefile(const QString &gamefile) const
    {
        if (m_compare)
            m_compare(gamefile);
    }
    // The kit picker, once the editor has lent it; no choice before.
    void setkits(KitService service) { m_kits = std::move(service); }
    std::optional<ChosenKit> choosekit(int slot, int art) const
    {
        return m_kits.choose ? m_kits.choose(slot, art) : std::nullopt;
    }

    // Runs op on the world's database in one transaction; when it commits,
    // its rows become a step of the history named by step, and every window
    // hears through changed() what it changed. Without a
    // database, a failure that says so.
    template <typename Op>
    auto run(Op &&op, const QString &lead = {}, const Step &step = {}) -> std::invoke_result_t<Op &, Database &>
    {
        if (World *w = world())
            return w->run(std::forward<Op>(op), lead, step);
        std::invoke_result_t<Op &, Database &> none{};
        resultof(none) = Result::failure(QStringLiteral("Es ist keine Datenbank geöffnet."));
        return none;
    }

    // Documents are asked about their work before it would be thrown away,
    // until their owner goes.
    void adddocument(Document *document, QObject *owner)
    {
        m_documents.append(document);
        connect(owner, &QObject::destroyed, this, [this, document] { m_documents.removeAll(document); });
    }
    // Before a run or a click replaces what the documents show: asks for
    // each modified one (or only for document) "Änderungen speichern?" with
    // Speichern, Verwerfen and Abbrechen. Cancelled when the user cancels
    // or a save is refused; the documents after that are not asked.
    Settled settle(Document *only = nullptr);

    // Asks the window with the tree to show the node with this key.
    void select(const QString &key) { emit selectrequested(key); }

signals:
    // The world was opened: settings read, database open or missing.
    void opened();
    // What a run changed; after the start-up, everything.
    void changed(const zorbo::Change &change);
    void selectrequested(const QString &key);
    // The tree's node on show changed.
    void shown(const QString &key);

private:
    QString pickfile(bool save, FileKind kind, const QString &title, const QString &start, const QStringList &filters,
                     int *filter);

    CrestService m_crests;
    std::function<void(const QString &)> m_compare;
    KitService m_kits;
    QList<Document *> m_documents;
    QHash<QString, std::function<void(const QString &)>> m_openers;
    struct Import {
        QString words;
        std::function<void(const QString &)> run;
    };
    QHash<QString, Import> m_imports;
    QString m_shownkey;
    QString m_showntext;
};

} // namespace zorbo
