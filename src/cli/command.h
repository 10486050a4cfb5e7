#pragma once

#include "core/settings.h"
#include "core/world.h"
#include "platform/operation.h"

#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <functional>

namespace zorbo::cli {

struct Context {
    Context(QString folder, QStringList arguments, QTextStream &o, QTextStream &e, bool tty)
        : dir(std::move(folder)), args(std::move(arguments)), out(o), err(e), terminal(tty)
    {
    }

    QString dir;           // the program folder (--dir, else the program's own)
    QStringList args;      // arguments after the command name
    QTextStream &out;
    QTextStream &err;
    bool terminal = false; // standard error is a terminal: show progress

    // Settings of the program folder, read (or created) on first use.
    const Settings &settings();
    // A progress callback that draws a bar (done of total) on a terminal, or
    // nothing; it never asks to stop.
    Progress progress(const QString &label);
    // Prints a German failure message to standard error; returns 1.
    int fail(const QString &message);
    // The program folder's world, opened as the editor's start-up does it,
    // its messages printed and a crest import cut off by a kill finished or
    // dropped; db() is null when there is no database.
    std::unique_ptr<World> startworld();
    // The program folder's world, opened as the editor's start-up does, with
    // its messages printed; null, and the failure told, without a database.
    std::unique_ptr<World> openworld();
    // The same for a world that must exist already: a check, a search or a
    // history of a world that isn't there would only make one.
    std::unique_ptr<World> openexistingworld();
    // Option value after "--name", or empty; removes both from args.
    QString takeOption(const QString &name);
    // Whether the flag "--name" was given; removes it from args.
    bool takeFlag(const QString &name);
    // Prints a German message about a wrong call (arguments, options) to
    // standard error; returns 2.
    int usage(const QString &message);
    // Prints a listing's JSON (--json) to standard output, indented; returns 0.
    int printjson(const QJsonValue &value);

private:
    bool m_loaded = false;
    Settings m_settings;
};

struct Command {
    QString name;
    QString usage;       // arguments, e.g. "DATEI"
    QString description; // one German line for --help
    std::function<int(Context &)> run;
};

// Prints an outcome (`result` and `findings`): its findings, one a line,
// then its message, on standard output when it succeeded (answers 0). A
// refused run is an error on standard error (answers 1): "Fehler:" and its
// message, with the findings that the message doesn't hold already.
template <typename Outcome>
int finish(Context &ctx, const Outcome &outcome)
{
    if (!outcome.result.ok) {
        for (const Finding &f : outcome.findings) {
            if (!outcome.result.message.contains(f.text))
                ctx.err << "Fehler: " << f.toString() << '\n';
        }
        return ctx.fail(QStringLiteral("Fehler: ") + outcome.result.message);
    }
    for (const QString &line : findinglines(outcome.findings))
        ctx.out << "Hinweis: " << line << '\n';
    ctx.out << outcome.result.message << '\n';
    return 0;
}

// The same for a plain Result, which has no findings.
inline int finish(Context &ctx, const Result &result)
{
    if (!result.ok)
        return ctx.fail(result.message);
    ctx.out << result.message << '\n';
    return 0;
}

// Runs operation(world) on the program folder's world, opened as the
// editor's start-up opens it, and prints its outcome as finish does; refuses
// when the arguments left are not fileArguments many.
template <typename Operation>
int withWorld(Context &ctx, int fileArguments, const Operation &operation)
{
    if (ctx.args.size() != fileArguments)
        return ctx.usage(QStringLiteral("Falsche Zahl von Argumenten; »zorbo-cli --help« zeigt den Aufruf."));
    const std::unique_ptr<World> world = ctx.openworld();
    return world ? finish(ctx, operation(*world)) : 1;
}

// Registers a command; called from a static initialiser in each command file:
//   static const bool registered = registerCommand({...});
bool registerCommand(const Command &command);

} // namespace zorbo::cli
