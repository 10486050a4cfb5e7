#pragma once

#include "core/settings.h"
#include "platform/operation.h"

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
    // Option value after "--name", or empty; removes both from args.
    QString takeOption(const QString &name);

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

// Registers a command; called from a static initialiser in each command file:
//   static const bool registered = registerCommand({...});
bool registerCommand(const Command &command);

} // namespace zorbo::cli
