#include "app/startoptions.h"

#include "generated/version.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>

namespace zorbo {

namespace {

const char helptext[] =
    "Aufruf: zorbo-editor [--dir ORDNER] [DATEI]\n"
    "\n"
    "Zorbo Editor, der Dateneditor für Zorbo Manager.\n"
    "\n"
    "Optionen:\n"
    "  --dir ORDNER   Programmordner mit zorboeditor.ini und zorbo.mdb. Ohne Angabe\n"
    "                 der Ordner des Programms, wenn er beschreibbar ist, beim\n"
    "                 installierten Programm ~/.local/share/zorbo-editor\n"
    "  -h, --help     zeigt diese Hilfe\n"
    "  -v, --version  zeigt die Version\n"
    "\n"
    "Argumente:\n"
    "  DATEI          wird nach dem Start geöffnet: eine Teamdatei (.tea) oder eine\n"
    "                 Datei des Anstoss Exporters (.aet, .lig, .lan) in ihrem Fenster\n"
    "                 \"Öffnen...\", eine Änderungsdatei (.zae) in ihrer Vorschau\n"
    "\n"
    "Rückgabewerte: 0 beendet, 2 falscher Aufruf.\n";

} // namespace

StartOptions parsestart(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    const QCommandLineOption dir(QStringLiteral("dir"), QString(), QStringLiteral("ORDNER"));
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    const QCommandLineOption version(QStringList{QStringLiteral("v"), QStringLiteral("version")});
    parser.addOptions({dir, help, version});
    parser.addPositionalArgument(QStringLiteral("DATEI"), QString());

    StartOptions start;
    const auto wrong = [&start](const QString &text) {
        start.action = StartOptions::Action::WrongUse;
        start.text = text + QStringLiteral("\n(zorbo-editor --help zeigt den Aufruf)\n");
        return start;
    };
    if (!parser.parse(arguments)) {
        if (!parser.unknownOptionNames().isEmpty())
            return wrong(QStringLiteral("Unbekannte Option: %1").arg(parser.unknownOptionNames().first()));
        return wrong(QStringLiteral("--dir braucht einen Ordner."));
    }
    if (parser.isSet(help)) {
        start.action = StartOptions::Action::Help;
        start.text = QString::fromUtf8(helptext);
        return start;
    }
    if (parser.isSet(version)) {
        start.action = StartOptions::Action::Version;
        start.text = QStringLiteral("zorbo-editor %1\n%2\n").arg(QLatin1String(versionText), QString::fromUtf8(legalNotice));
        return start;
    }
    const QStringList files = parser.positionalArguments();
    if (files.size() > 1)
        return wrong(QStringLiteral("Beim Start lässt sich nur eine Datei öffnen, nicht %1.").arg(files.size()));
    if (parser.isSet(dir)) {
        if (parser.value(dir).isEmpty())
            return wrong(QStringLiteral("--dir braucht einen Ordner."));
        start.folder = QDir(parser.value(dir)).absolutePath();
    }
    if (!files.isEmpty())
        start.file = QFileInfo(files.first()).absoluteFilePath();
    return start;
}

} // namespace zorbo
