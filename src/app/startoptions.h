#pragma once

#include <QString>
#include <QStringList>

namespace zorbo {

// What the editor's command line asks for.
struct StartOptions {
    enum class Action { Run, Help, Version, WrongUse };
    Action action = Action::Run;
    QString folder; // --dir, absolute; empty: the program folder's rule
    QString file;   // a file to open once the window is up; empty: none
    QString text;   // the help, the version, or what was wrong, in German
    // The exit code when the editor ends without starting: 0, or 2 for wrong use.
    int exitcode() const { return action == Action::WrongUse ? 2 : 0; }
};

// Reads the arguments (the program's name first), without needing a
// QApplication, so that --help and --version answer without a display.
StartOptions parsestart(const QStringList &arguments);

} // namespace zorbo
