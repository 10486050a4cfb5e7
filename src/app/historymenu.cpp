// The menu "Bearbeiten": undo and redo of the world's steps, the panel
// "Verlauf", and the text fields' own undo that comes first.
#include "app/historypanel.h"
#include "app/restorewindow.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"

#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>

namespace zorbo {

namespace {

const QString undoEntry = QStringLiteral("mnubearbeitenitem(0)");
const QString redoEntry = QStringLiteral("mnubearbeitenitem(1)");

// The text field that takes the keys of a widget with the focus: the field
// itself, or the one inside a spin box or an editable combo box.
QLineEdit *textfield(QWidget *focus)
{
    if (auto *field = qobject_cast<QLineEdit *>(focus))
        return field;
    if (auto *combo = qobject_cast<QComboBox *>(focus))
        return combo->lineEdit();
    if (auto *spin = qobject_cast<QAbstractSpinBox *>(focus))
        return spin->findChild<QLineEdit *>();
    return nullptr;
}

// A text field claims Ctrl+Z (and its redo keys) for itself whenever it can
// be written to, so the world's undo would never be reached from inside a
// form. This filter lets the field keep the key only while it has text of
// its own to undo or redo; else the key goes on to the menu entry. The
// field's own undo and redo are done here too, so that all of the entry's
// keys work in the field, whatever the desktop's key scheme calls redo.
class TextUndoFilter : public QObject {
public:
    TextUndoFilter(QWidget *window, QAction *undo, QAction *redo) : QObject(window), m_window(window), m_undo(undo), m_redo(redo)
    {
        qApp->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
            return false;
        const auto *key = static_cast<QKeyEvent *>(event);
        const bool undo = bound(m_undo, key);
        if (!undo && !bound(m_redo, key))
            return false;
        QWidget *focus = QApplication::focusWidget();
        QLineEdit *field = focus && focus->window() == m_window ? textfield(focus) : nullptr;
        if (!field)
            return false;
        const bool own = undo ? field->isUndoAvailable() : field->isRedoAvailable();
        if (event->type() == QEvent::ShortcutOverride) {
            // Accepted, the key goes to the field as a key press; ignored,
            // Qt tries the shortcuts.
            event->setAccepted(own);
            return true;
        }
        if (!own || watched != focus)
            return false;
        if (undo)
            field->undo();
        else
            field->redo();
        return true;
    }

private:
    static bool bound(const QAction *action, const QKeyEvent *key)
    {
        const QKeySequence pressed(QKeyCombination(key->modifiers() & ~Qt::KeypadModifier, Qt::Key(key->key())));
        return action && action->shortcuts().contains(pressed);
    }

    QWidget *m_window;
    QAction *m_undo;
    QAction *m_redo;
};

// The entries and their buttons name the step they would undo or redo.
void nameentries(Shell &shell)
{
    const QList<HistoryStep> steps = shell.world() ? shell.world()->history() : QList<HistoryStep>();
    const HistoryStep *undo = nullptr;
    const HistoryStep *redo = nullptr;
    for (const HistoryStep &step : steps) {
        if (!step.undone)
            undo = &step;
        else if (!redo)
            redo = &step;
    }
    const auto name = [&shell](const QString &entry, const QString &button, const QString &caption,
                               const HistoryStep *step) {
        const QString tip = step ? caption + QStringLiteral(": ") + step->text : caption;
        if (QAction *act = shell.entry(entry)) {
            QString text = tip;
            act->setText(QLatin1Char('&') + text.replace(QLatin1Char('&'), QStringLiteral("&&")));
        }
        if (QAction *act = shell.entry(button))
            act->setToolTip(tip);
        shell.setopen(entry, step != nullptr);
    };
    name(undoEntry, QStringLiteral("undo"), QStringLiteral("Rückgängig"), undo);
    name(redoEntry, QStringLiteral("redo"), QStringLiteral("Wiederherstellen"), redo);
}

} // namespace

void movehistory(Shell &shell, const QString &title, const QString &busytext,
                 const std::function<Result(World &world, const Progress &progress)> &move)
{
    World *world = shell.world();
    if (!world || !world->db())
        return;
    // A form saved now becomes the newest step, which a move would take
    // back or throw away at once: the move waits for the next command.
    if (const Settled settled = shell.settle(); settled == Settled::Cancelled || settled == Settled::Saved)
        return;
    Result done;
    {
        const auto busy = shell.busy(busytext);
        done = move(*world, busy->progress());
    }
    shell.status(done.message);
    if (done.ok || done.cancelled)
        return;
    const qint64 broken = world->brokenstep();
    if (!broken) {
        shell.dialogs().warning(shell.window(), title, done.message);
        return;
    }
    // A step that can't be applied blocks the way beyond it; the user may
    // drop it and what lies behind it.
    if (!shell.dialogs().question(shell.window(), title,
                                  done.message + QStringLiteral("\n\nDen Verlauf ab Schritt %1 löschen?").arg(broken)))
        return;
    const Result dropped = world->dropsteps(broken);
    shell.status(dropped.message);
    if (!dropped.ok)
        shell.dialogs().warning(shell.window(), title, dropped.message);
}

HistoryPanel *installhistory(Shell &shell)
{
    auto *window = qobject_cast<QMainWindow *>(shell.window());
    auto *panel = new HistoryPanel(shell, window);
    if (window)
        window->addDockWidget(Qt::RightDockWidgetArea, panel);
    panel->hide();
    shell.handle(undoEntry, [&shell] {
        movehistory(shell, QStringLiteral("Rückgängig"), QStringLiteral("Mache rückgängig"),
                    [](World &world, const Progress &progress) { return world.undo(1, progress); });
    });
    shell.handle(redoEntry, [&shell] {
        movehistory(shell, QStringLiteral("Wiederherstellen"), QStringLiteral("Stelle wieder her"),
                    [](World &world, const Progress &progress) { return world.redo(1, progress); });
    });
    shell.handle(QStringLiteral("mnubearbeitenitem(3)"), [panel] {
        panel->show();
        panel->raise();
    });
    shell.handle(QStringLiteral("mnuoptionenitem(8)"), [&shell] { showrestorepoints(shell); });
    new TextUndoFilter(shell.window(), shell.entry(undoEntry), shell.entry(redoEntry));

    nameentries(shell);
    QObject::connect(&shell, &Shell::changed, panel, [&shell] { nameentries(shell); });
    QObject::connect(&shell, &Shell::opened, panel, [&shell, panel] {
        if (World *world = shell.world()) {
            QObject::connect(world, &World::historychanged, panel, [&shell] { nameentries(shell); });
        }
        nameentries(shell);
    });
    return panel;
}

} // namespace zorbo
