// What a user waits for at the start: the editor opening a world of 100,000
// players until the tree is filled and the first club is shown with its
// squad, painted, and the memory the program holds then (its peak so far).
// Every run is a fresh process on the same world, so that no cache of an
// earlier run helps; the process's start-up before the window is left out.
// Usage: bench-start [runs [folder]]   (runs offscreen)
// With a folder, the world is made there and left, so that a profiler can
// watch one start: bench-start --open FOLDER.
#include "app/application.h"
#include "app/mainwindow.h"
#include "core/ui/dialogs.h"
#include "core/world.h"
#include "editor/playergrid.h"
#include "editor/ui/editorview.h"

#include "world100k.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <algorithm>
#include <cstdio>
#include <vector>

using namespace zorbo;

namespace {

// The largest resident size of this process so far, in MB (Linux).
double peakmb()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').first().toDouble() / 1024;
    }
    return -1;
}

// One start on the program folder: prints "<ms> <peak MB> <tree nodes>".
int openonce(const QString &folder)
{
    QElapsedTimer timer;
    timer.start();
    Dialogs dialogs;
    MainWindow window(folder, &dialogs);
    window.formload();
    window.show();
    QApplication::processEvents();
    auto *tree = window.editor()->findChild<QTreeWidget *>();
    QTreeWidgetItem *first = nullptr;
    int nodes = 0;
    for (QTreeWidgetItemIterator it(tree); *it; ++it, ++nodes) {
        // The first club; the transfer market (T0) is none.
        const QString key = (*it)->data(0, Qt::UserRole).toString();
        if (!first && key.startsWith(QLatin1Char('T')) && key != QLatin1String("T0"))
            first = *it;
    }
    if (!first) {
        std::fprintf(stderr, "the tree holds no club\n");
        return 1;
    }
    emit tree->itemClicked(first, 0); // a click on it
    if (window.editor()->gridmodel()->rowCount() != 20) {
        std::fprintf(stderr, "the first club (%s) shows %d players, not its 20\n", qPrintable(first->text(0)),
                     window.editor()->gridmodel()->rowCount());
        return 1;
    }
    window.grab(); // painted as the user sees it
    const double ms = double(timer.nsecsElapsed()) / 1e6;
    std::printf("%.1f %.1f %d\n", ms, peakmb(), nodes);
    return 0;
}

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    setupapplication();
    const QStringList args = app.arguments();
    if (args.size() > 2 && args.at(1) == QLatin1String("--open"))
        return openonce(args.at(2));

    const int runs = argc > 1 ? std::max(1, atoi(argv[1])) : 5;
    QTemporaryDir temporary;
    const QString folder = argc > 2 ? QString::fromLocal8Bit(argv[2]) : temporary.path();
    {
        // The program folder as the first start leaves it, then the world.
        const std::unique_ptr<World> world = openworld(folder);
        if (!world->db()) {
            std::fprintf(stderr, "%s\n", qPrintable(world->messages().join(QLatin1Char('\n'))));
            return 1;
        }
        world->db()->exec(QStringLiteral("DELETE FROM kaderzeilen; DELETE FROM spieler; DELETE FROM vereine; "
                                         "DELETE FROM vereine_national"));
        bench::buildWorld(*world->db());
    }
    std::vector<double> times, peaks;
    int nodes = 0;
    for (int i = 0; i < runs; ++i) {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--open"), folder});
        if (!child.waitForFinished(120000) || child.exitCode() != 0) {
            std::fprintf(stderr, "start failed: %s\n", child.readAllStandardError().constData());
            return 1;
        }
        const QList<QByteArray> figures = child.readAllStandardOutput().trimmed().split(' ');
        times.push_back(figures.value(0).toDouble());
        peaks.push_back(figures.value(1).toDouble());
        nodes = figures.value(2).toInt();
    }
    std::printf("start with 100,000 players until the tree (%d nodes) is filled and the first club is shown: "
                "median %.1f ms of %d starts (target < 400 ms)\n",
                nodes, median(times), runs);
    std::printf("peak memory at that point: median %.1f MB (target < 200 MB)\n", median(peaks));
    return 0;
}
