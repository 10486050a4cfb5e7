// Time to load the talent grid at start-up and to show a face, both with
// their first paint, the pictures read from the delivered files.
// Usage: bench-guispeed (runs offscreen)
#include "core/schema.h"
#include "editor/facecode.h"
#include "editor/facepictures.h"
#include "editor/ui/faceview.h"
#include "editor/ui/talentgrid.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPixmapCache>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

double median(std::vector<qint64> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2] / 1e6;
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    using namespace zorbo;

    QTemporaryDir dir;
    OpenedDb o = opendb(dir.filePath(QStringLiteral("zorbo.mdb")));
    std::vector<qint64> grid;
    for (int i = 0; i < 15; ++i) {
        TalentGrid talents;
        talents.resize(400, 900);
        QPixmapCache::clear();
        QElapsedTimer t;
        t.start();
        talents.load_attribute(*o.db, QStringLiteral(":/defaults/attribute/"));
        talents.showtalente(QStringLiteral("1,2"), QStringLiteral("3"), 2);
        talents.grab();
        grid.push_back(t.nsecsElapsed());
    }

    const FacePictures pics(QStringLiteral(":/defaults/gesicht/"));
    FaceView view;
    view.setPictures(&pics);
    view.show();
    std::vector<qint64> faces;
    for (int i = 0; i < 31; ++i) {
        QPixmapCache::clear(); // every face read from the files, as for a first look
        QElapsedTimer t;
        t.start();
        view.showgesicht(encodeface({0, {i % 31, i % 30, i % 30, (i * 7) % 30, i % 11}}));
        view.grab();
        faces.push_back(t.nsecsElapsed());
    }
    std::printf("talent grid load and first paint: median %.2f ms of 15\n", median(grid));
    std::printf("showgesicht and paint:            median %.2f ms of 31 faces\n", median(faces));
    return 0;
}
