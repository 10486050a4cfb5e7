#include "cli/command.h"
#include "core/programfolder.h"
#include "platform/dberror.h"
#include "resources/crestswitch.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace zorbo::cli {

namespace {

std::vector<Command> &commands()
{
    static std::vector<Command> list;
    return list;
}

void printHelp(QTextStream &out)
{
    out << "Aufruf: zorbo-cli [--dir ORDNER] BEFEHL [ARGUMENTE]\n\n"
           "Führt die Datenoperationen des Zorbo Editors ohne Fenster aus.\n"
           "--dir ORDNER  Programmordner mit zorboeditor.ini und zorbo.mdb (ohne Angabe\n"
           "              der Ordner des Programms, wenn er beschreibbar ist, beim\n"
           "              installierten Programm ~/.local/share/zorbo-editor)\n"
           "--json        bei info, check, find, history und restore-points: die\n"
           "              Ausgabe als JSON\n\n"
           "Rückgabewerte: 0 erledigt, 1 Probleme gefunden oder Lauf verweigert,\n"
           "2 falscher Aufruf.\n\nBefehle:\n";
    auto sorted = commands();
    std::sort(sorted.begin(), sorted.end(), [](const Command &a, const Command &b) { return a.name < b.name; });
    for (const Command &c : sorted) {
        const QString head = c.name + (c.usage.isEmpty() ? QString() : QStringLiteral(" ") + c.usage);
        if (head.size() > 34)
            out << "  " << head << '\n' << QString(37, QLatin1Char(' ')) << c.description << '\n';
        else
            out << "  " << head.leftJustified(34) << ' ' << c.description << '\n';
    }
}

} // namespace

bool registerCommand(const Command &command)
{
    commands().push_back(command);
    return true;
}

const Settings &Context::settings()
{
    if (!m_loaded) {
        QString message;
        m_settings = loadsettings(dir, &message);
        if (!message.isEmpty())
            err << message << '\n';
        m_loaded = true;
    }
    return m_settings;
}

Progress Context::progress(const QString &label)
{
    if (!terminal)
        return {};
    return [this, label, last = -1](qint64 done, qint64 total) mutable {
        const int percent = total > 0 ? int(std::clamp<qint64>(done * 100 / total, 0, 100)) : 0;
        if (percent == last)
            return true;
        last = percent;
        const int filled = percent / 5;
        err << '\r' << label << " [" << QString(filled, QLatin1Char('#')) << QString(20 - filled, QLatin1Char(' '))
            << "] " << percent << '%';
        if (percent >= 100)
            err << '\n';
        err.flush();
        return true;
    };
}

std::unique_ptr<World> Context::startworld()
{
    std::unique_ptr<World> world = zorbo::openworld(dir, progress(QStringLiteral("Erstelle Transfermarkt")));
    for (const QString &m : world->messages())
        err << m << '\n';
    // A crest import cut off by a kill is finished or dropped, as the
    // editor's start does it.
    if (const Result recovered = recovercrests(world->settings().folder(WappenFolder)); !recovered)
        err << recovered.message << '\n';
    return world;
}

std::unique_ptr<World> Context::openworld()
{
    std::unique_ptr<World> world = startworld();
    if (world->db())
        return world;
    fail(QStringLiteral("Die Welt in %1 ist nicht bereit.").arg(QDir::toNativeSeparators(dir)));
    return nullptr;
}

std::unique_ptr<World> Context::openexistingworld()
{
    if (!QFileInfo::exists(dir + QStringLiteral("/zorbo.mdb"))) {
        fail(QStringLiteral("In %1 liegt keine zorbo.mdb; »zorbo-cli init« legt eine an.").arg(QDir::toNativeSeparators(dir)));
        return nullptr;
    }
    return openworld();
}

int Context::fail(const QString &message)
{
    err << message << '\n';
    err.flush();
    return 1;
}

bool Context::takeFlag(const QString &name)
{
    return args.removeAll(name) > 0;
}

int Context::usage(const QString &message)
{
    fail(message);
    return 2;
}

int Context::printjson(const QJsonValue &value)
{
    const QJsonDocument document = value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    out << QString::fromUtf8(document.toJson(QJsonDocument::Indented));
    return 0;
}

QString Context::takeOption(const QString &name)
{
    const int i = int(args.indexOf(name));
    if (i < 0 || i + 1 >= args.size())
        return {};
    const QString value = args.at(i + 1);
    args.remove(i, 2);
    return value;
}

} // namespace zorbo::cli

int main(int argc, char **argv)
{
    using namespace zorbo::cli;
    QCoreApplication app(argc, argv);
    // The editor's name, so that both programs share the user's data folder.
    QCoreApplication::setApplicationName(QStringLiteral("zorbo-editor"));
    QTextStream out(stdout);
    QTextStream err(stderr);

    QStringList args = app.arguments().mid(1);
    QString dir;
    const int d = int(args.indexOf(QStringLiteral("--dir")));
    if (d >= 0) {
        if (d + 1 >= args.size()) {
            err << "--dir braucht einen Ordner.\n";
            return 2;
        }
        dir = QDir(args.at(d + 1)).absolutePath();
        args.remove(d, 2);
    }
    if (args.isEmpty() || args.first() == QLatin1String("--help") || args.first() == QLatin1String("-h")) {
        printHelp(out);
        return args.isEmpty() ? 2 : 0;
    }
    const QString name = args.takeFirst();
    for (const Command &c : commands()) {
        if (c.name != name)
            continue;
        if (dir.isEmpty())
            dir = zorbo::programfolder();
        if (!QDir().mkpath(dir)) {
            err << "Der Ordner " << dir << " lässt sich nicht anlegen.\n";
            return 1;
        }
        Context ctx(dir, args, out, err, bool(isatty(fileno(stderr))));
        int rc = 1;
        // Whatever a command leaves uncaught ends it with German words, never
        // with the engine's English text or an abort.
        try {
            rc = c.run(ctx);
        } catch (const zorbo::DbError &e) {
            out.flush();
            rc = ctx.fail(QStringLiteral("%1 abgebrochen: %2").arg(name, e.text()));
        } catch (const std::exception &) {
            out.flush();
            rc = ctx.fail(QStringLiteral("%1 abgebrochen: ein unerwarteter Fehler im Programm.").arg(name));
        }
        out.flush();
        err.flush();
        return rc;
    }
    err << "Unbekannter Befehl: " << name << " (zorbo-cli --help zeigt alle Befehle)\n";
    return 2;
}
