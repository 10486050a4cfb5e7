#include "app/selfcheckwindow.h"

#include "core/ui/shell.h"
#include "exchange/cfgcheck.h"
#include "exchange/ui/changemenus.h"
#include "resources/crestcheck.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace zorbo {

SelfCheckWindow::SelfCheckWindow(Shell &shell, QWidget *parent)
    : QDialog(parent), m_shell(shell), m_folder(new QLineEdit(this)), m_list(new QTreeWidget(this)),
      m_answer(new QLabel(this))
{
    setObjectName(QStringLiteral("frmspieldateien"));
    setWindowTitle(QStringLiteral("Spieldateien prüfen"));
    m_folder->setObjectName(QStringLiteral("txtordner"));
    m_folder->setPlaceholderText(QStringLiteral("Ordner der Einstellungen"));
    auto *pick = new QPushButton(QStringLiteral("..."), this);
    pick->setObjectName(QStringLiteral("btnordner"));
    pick->setFixedWidth(pick->fontMetrics().horizontalAdvance(QStringLiteral("...")) + 24);
    auto *run = new QPushButton(QStringLiteral("&Prüfen"), this);
    run->setObjectName(QStringLiteral("btnpruefen"));
    run->setDefault(true);
    auto *close = new QPushButton(QStringLiteral("Schließen"), this);
    close->setObjectName(QStringLiteral("btnschliessen"));
    m_list->setObjectName(QStringLiteral("lstunterschiede"));
    m_list->setHeaderLabels({QStringLiteral("Datei"), QStringLiteral("Zeile / Wappen"), QStringLiteral("Im Spiel"),
                             QStringLiteral("Vom Editor"), QStringLiteral("Grund")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->header()->setStretchLastSection(true);
    m_answer->setObjectName(QStringLiteral("lblergebnis"));
    m_answer->setWordWrap(true);

    auto *top = new QHBoxLayout;
    top->addWidget(new QLabel(QStringLiteral("Spielordner:"), this));
    top->addWidget(m_folder, 1);
    top->addWidget(pick);
    top->addWidget(run);
    auto *bottom = new QHBoxLayout;
    bottom->addWidget(m_answer, 1);
    bottom->addWidget(close);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("1_tm.cfg, 1_sp.cfg und wa.res werden in eine Probewelt gelesen, "
                                                "zurückgeschrieben und Byte für Byte verglichen; die Welt bleibt, wie sie ist."),
                                 this));
    layout->addLayout(top);
    layout->addWidget(m_list, 1);
    layout->addLayout(bottom);
    resize(900, 420);

    connect(pick, &QPushButton::clicked, this, [this] {
        const QString folder = QFileDialog::getExistingDirectory(this, QStringLiteral("Spielordner"), m_folder->text());
        if (!folder.isEmpty())
            m_folder->setText(QDir::toNativeSeparators(folder));
    });
    connect(run, &QPushButton::clicked, this, &SelfCheckWindow::check);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
}

void SelfCheckWindow::setfolder(const QString &folder)
{
    m_folder->setText(QDir::toNativeSeparators(folder));
}

void SelfCheckWindow::check()
{
    m_list->clear();
    m_answer->clear();
    SelfCheckReport report;
    {
        const auto busy = m_shell.busy(QStringLiteral("Prüfe Spieldateien..."));
        report = selfcheck(m_shell.settings(), QDir::fromNativeSeparators(m_folder->text().trimmed()),
                           configchecks() << crestcheck(), busy->progress());
    }
    for (const FileDifference &d : std::as_const(report.differences)) {
        const QString where = d.line > 0 ? QString::number(d.line) : d.crest;
        auto *item = new QTreeWidgetItem(m_list, {d.file, where, d.game, d.ours, d.reason});
        for (int c = 2; c < 4; ++c)
            item->setToolTip(c, item->text(c));
        item->setToolTip(4, d.reason);
    }
    for (int c = 0; c < 4; ++c)
        m_list->resizeColumnToContents(c);
    m_list->setColumnWidth(2, std::min(m_list->columnWidth(2), 260));
    m_list->setColumnWidth(3, std::min(m_list->columnWidth(3), 260));
    QString answer = report.result.message;
    if (report.more > 0)
        answer += QStringLiteral(" Gezeigt werden die ersten %1.").arg(maxDifferences);
    m_answer->setText(answer);
}

void installselfcheck(Shell &shell)
{
    const auto open = [&shell](const QString &gamefile) {
        auto *window = shell.window()->findChild<SelfCheckWindow *>(QStringLiteral("frmspieldateien"));
        if (!window)
            window = new SelfCheckWindow(shell, shell.window());
        if (!gamefile.isEmpty()) {
            window->setfolder(QFileInfo(gamefile).absolutePath());
            window->check();
        }
        window->exec();
    };
    shell.handle(QStringLiteral("mnutoolitem(11)"), [open] { open({}); });
    // "Erst vergleichen": a changed configuration file of the game is set
    // beside the world as "Welten vergleichen" shows it; for the crest
    // archive the self-check's list tells crest by crest.
    shell.setcomparison([&shell, open](const QString &gamefile) {
        const QString name = QFileInfo(gamefile).fileName().toLower();
        if (name.endsWith(QLatin1String("_tm.cfg")))
            opencomparison(shell, gamefile, {});
        else if (name.endsWith(QLatin1String("_sp.cfg")))
            opencomparison(shell, {}, gamefile);
        else
            open(gamefile);
    });
}

} // namespace zorbo
