#include "app/application.h"

#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace zorbo {

bool setupapplication()
{
    // No display name: the window system would put it behind every title.
    QApplication::setApplicationName(QStringLiteral("zorbo-editor"));
    // The desktop entry the window belongs to, for its icon in the task bar.
    QGuiApplication::setDesktopFileName(QStringLiteral("zorbo-editor"));
    // The installed icon of the desktop's theme; none when run from a build.
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("zorbo-editor")));
    // The data and the windows are German, so are Qt's own dialogs.
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    auto *translator = new QTranslator(qApp);
    if (!translator->load(QLocale(QLocale::German), QStringLiteral("qtbase"), QStringLiteral("_"),
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        delete translator;
        return false;
    }
    QApplication::installTranslator(translator);
    return true;
}

} // namespace zorbo
