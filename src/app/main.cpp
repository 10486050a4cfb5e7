#include "core/programfolder.h"
#include "app/application.h"
#include "core/ui/dialogs.h"
#include "app/mainwindow.h"

#include <QApplication>
#include <QDir>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (!zorbo::setupapplication())
        qWarning("Qt's German texts are missing; install qt6-translations-l10n.");

    // "--dir FOLDER" opens another program folder, e.g. a second world.
    QString folder;
    const QStringList args = app.arguments();
    const int d = int(args.indexOf(QStringLiteral("--dir")));
    folder = d >= 0 && d + 1 < args.size() ? QDir(args.at(d + 1)).absolutePath() : zorbo::programfolder();
    QDir().mkpath(folder);

    zorbo::Dialogs dialogs;
    zorbo::MainWindow window(folder, &dialogs);
    window.formload();
    window.show();
    return app.exec();
}
