// Time to open the Anstoss workbench on a club of 20 players and fill it
// from a club file of 25 players, all four groups ticked, with its first
// paint. Usage: bench-guianstoss (runs offscreen)
#include "anstoss/ui/workbench.h"
#include "app/mainwindow.h"
#include "core/generator.h"
#include "core/ui/dialogs.h"
#include "platform/codepage.h"

#include "timing.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    using namespace zorbo;

    QTemporaryDir dir;
    QString text = QStringLiteral("[Team]\r\nName=Verein Süd\r\nStadt=Süd\r\nLand=Deutschland\r\nstadion=Arena\r\n"
                                  "Stadionsitz=1000\r\nStadionsteh=2000\r\nSpieler=25\r\ntrikoth0=255,0,0\r\n");
    for (int i = 0; i < 25; ++i)
        text += QStringLiteral("[Spieler%1]\r\nName=Müller %1\r\nVorname=Jörg\r\nPosition=%2\r\nStaerke=%3\r\n")
                    .arg(i + 1)
                    .arg(i < 3 ? 0 : 1 + i % 3)
                    .arg(1000 * (i % 12));
    const QString file = dir.filePath(QStringLiteral("club.aet"));
    QFile f(file);
    if (!f.open(QIODevice::WriteOnly) || f.write(*toCp1252(text)) < 0)
        return 1;
    f.close();

    Dialogs dialogs;
    MainWindow window(dir.path(), &dialogs);
    window.formload();
    window.db()->run("INSERT INTO vereine (NUMMER, NAME, NATION, TRIKOT_ART, AUSWEICH_TRIKOT_ART, TW_TRIKOT_ART) "
                     "VALUES (7, 'Altverein', 'Deutschland', 1, 2, 3)");
    spieler20new(*window.db(), 7, QStringLiteral("Deutschland"), 20);

    const double open = bench::medianms(15, [&] {
        Workbench bench(window.shell(), file, 7, &window);
        for (int i = 0; i < 4; ++i)
            bench.setimport(i, true);
        bench.show();
        bench.grab();
    });
    std::printf("workbench opened and filled (25 + 20 players), first paint: %.1f ms\n", open);
    return 0;
}
