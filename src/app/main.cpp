#include "core/programfolder.h"
#include "app/application.h"
#include "app/startoptions.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"
#include "app/mainwindow.h"

#include <QApplication>
#include <QDir>
#include <QTimer>
#include <cstdio>

int main(int argc, char **argv)
{
    // --help and --version answer before the window system is asked for.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    const zorbo::StartOptions start = zorbo::parsestart(arguments);
    if (start.action != zorbo::StartOptions::Action::Run) {
        const QByteArray text = start.text.toLocal8Bit();
        std::fputs(text.constData(), start.action == zorbo::StartOptions::Action::WrongUse ? stderr : stdout);
        return start.exitcode();
    }

    QApplication app(argc, argv);
    if (!zorbo::setupapplication())
        qWarning("Qt's German texts are missing; install qt6-translations-l10n.");

    // "--dir FOLDER" opens another program folder, e.g. a second world.
    const QString folder = start.folder.isEmpty() ? zorbo::programfolder() : start.folder;
    QDir().mkpath(folder);

    zorbo::Dialogs dialogs;
    zorbo::MainWindow window(folder, &dialogs);
    window.formload();
    window.show();
    // The file of the command line (a double click in the file manager)
    // opens once the window is on screen.
    if (!start.file.isEmpty())
        QTimer::singleShot(0, &window, [&window, file = start.file] { window.shell().openpath(file); });
    return app.exec();
}
