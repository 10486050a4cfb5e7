// The file menu's import and export runs: the game's configuration files
// and the crest archive.
#include "core/ui/busy.h"
#include "core/ui/dialogs.h"
#include "core/ui/mainwindow.h"
#include "exchange/configruns.h"
#include "exchange/teamfile.h"
#include "exchange/teamfileopen.h"
#include "exchange/ui/opendialog.h"
#include "resources/crestlist.h"
#include "resources/crestrun.h"

#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QTreeWidget>

namespace zorbo {

namespace {

// Which file is meant is decided by the filter entry, never by the name.
const QStringList configFilters = {QStringLiteral("Zorbo Vereine (1_tm.cfg) (*.cfg)"),
                                   QStringLiteral("Zorbo Spieler (1_sp.cfg) (*.cfg)")};
const QStringList crestFilters = {QStringLiteral("Zorbo Wappen (wa.res) (wa*.res)")};
const QStringList teamFilters = {QStringLiteral("Zorbo Editor Team (*.tea)")};

QString summary(const QString &message, const QStringList &notes)
{
    if (notes.isEmpty())
        return message;
    const qsizetype shown = std::min<qsizetype>(notes.size(), 20);
    QString text = message + QStringLiteral("\n\n") + notes.mid(0, shown).join(QLatin1Char('\n'));
    if (notes.size() > shown)
        text += QStringLiteral("\n… und %1 weitere Hinweise.").arg(notes.size() - shown);
    return text;
}

// The outcome of a run: what it did with its findings, one a line, or why it stopped.
void tell(Dialogs *dialogs, QWidget *parent, const QString &title, const Result &result, const QString &done,
          const QList<Finding> &findings)
{
    const QStringList notes = findinglines(findings);
    if (result.ok)
        dialogs->information(parent, title, summary(done, notes));
    else
        dialogs->warning(parent, title, summary(result.message, notes));
}

} // namespace

void MainWindow::connectexchange()
{
    connect(action(QStringLiteral("mnudateiitem(1)")), &QAction::triggered, this, [this] { mnudateiitem_Click(1); });
    connect(action(QStringLiteral("mnudateiitem(2)")), &QAction::triggered, this, [this] { mnudateiitem_Click(2); });
    connect(action(QStringLiteral("mnuimportitem(0)")), &QAction::triggered, this, [this] { mnuimportitem_Click(0); });
    connect(action(QStringLiteral("mnuimportitem(1)")), &QAction::triggered, this, [this] { mnuimportitem_Click(1); });
    connect(action(QStringLiteral("mnuexportitem(0)")), &QAction::triggered, this, [this] { mnuexportitem_Click(0); });
    connect(action(QStringLiteral("mnuexportitem(1)")), &QAction::triggered, this, [this] { mnuexportitem_Click(1); });
    action(QStringLiteral("impconfig"))->setEnabled(true);
    action(QStringLiteral("expconfig"))->setEnabled(true);
}

void MainWindow::mnuimportitem_Click(int index)
{
    if (index == 0 && db()) {
        int filter = 0;
        const QString file = m_dialogs->openfile(this, QStringLiteral("Öffnen ..."), m_settings.folder(ZorboconfigFolder),
                                                 configFilters, &filter);
        if (file.isEmpty())
            return;
        const ConfigKind kind = filter == 1 ? ConfigKind::Players : ConfigKind::Teams;
        const auto importRun = [&](FileEncoding encoding) {
            Busy busy(this, m_status, m_progress,
                      kind == ConfigKind::Teams ? QStringLiteral("Importiere Vereine...") : QStringLiteral("Importiere Spieler..."));
            return importconfig(*db(), file, kind, busy.progress(), encoding);
        };
        ExchangeResult run = importRun(FileEncoding::Detect);
        // Read as the game's code page, a UTF-8 file would bring every umlaut
        // in as two characters; the run stopped before touching the world.
        if (!run.ok() && run.looksUtf8) {
            if (!m_dialogs->question(this, QStringLiteral("Import"),
                                     run.result.message + QStringLiteral("\n\nSoll die Datei als UTF-8 gelesen werden?")))
                return;
            run = importRun(FileEncoding::Utf8);
        }
        if (run.ok())
            reloadandshow();
        tell(m_dialogs, this, QStringLiteral("Import"), run.result, run.result.message, run.findings);
    } else if (index == 1) {
        int filter = 0;
        const QString file = m_dialogs->openfile(this, QStringLiteral("Importieren Wappen..."),
                                                 m_settings.folder(ZorboresFolder) + QStringLiteral("wa.res"), crestFilters,
                                                 &filter);
        if (file.isEmpty())
            return;
        CrestRunReport run;
        {
            Busy busy(this, m_status, m_progress, QStringLiteral("Importiere Wappen..."));
            run = importwappen(file, m_settings.folder(WappenFolder), busy.progress());
        }
        tell(m_dialogs, this, QStringLiteral("Wappen"), run.result,
             QStringLiteral("%1 Wappen aus %2 übernommen.").arg(run.written).arg(file), run.findings);
        // An export packs the crests of wa.lst only; the user's list is
        // changed only when asked.
        if (run.result.ok && !run.missingFromList.isEmpty()
            && m_dialogs->question(this, QStringLiteral("Wappen"),
                                   QStringLiteral("%1 Wappen des Archivs fehlen in wa.lst und blieben beim Export draußen. "
                                                  "Sollen sie in wa.lst aufgenommen werden?")
                                       .arg(run.missingFromList.size()))) {
            int added = 0;
            const Result listed = addtocrestlist(m_settings.folder(WappenFolder), run.missingFromList, &added);
            if (listed)
                m_status->setText(QStringLiteral("%1 Wappen in wa.lst aufgenommen.").arg(added));
            else
                m_dialogs->warning(this, QStringLiteral("Wappen"), listed.message);
        }
    }
}

void MainWindow::mnuexportitem_Click(int index)
{
    if (index == 0 && db()) {
        int filter = 0;
        const QString file = m_dialogs->savefile(this, QStringLiteral("Zorbo Config exportieren"),
                                                 m_settings.folder(ZorboconfigFolder), configFilters, &filter);
        if (file.isEmpty())
            return;
        const ConfigKind kind = filter == 1 ? ConfigKind::Players : ConfigKind::Teams;
        ExchangeResult run;
        {
            Busy busy(this, m_status, m_progress,
                      kind == ConfigKind::Teams ? QStringLiteral("Exportiere Vereine...") : QStringLiteral("Exportiere Spieler..."));
            run = exportconfig(*db(), file, kind, busy.progress());
        }
        tell(m_dialogs, this, QStringLiteral("Export"), run.result, run.result.message, run.findings);
    } else if (index == 1) {
        int filter = 0;
        const QString file = m_dialogs->savefile(this, QStringLiteral("Exportiere Wappen..."),
                                                 m_settings.folder(ZorboresFolder) + QStringLiteral("wa.res"), crestFilters,
                                                 &filter);
        if (file.isEmpty())
            return;
        CrestRunReport run;
        {
            Busy busy(this, m_status, m_progress, QStringLiteral("Exportiere Wappen..."));
            run = exportwappen(file, m_settings.folder(WappenFolder), busy.progress());
        }
        tell(m_dialogs, this, QStringLiteral("Wappen"), run.result,
             QStringLiteral("%1 Wappen nach %2 gepackt.").arg(run.written).arg(file), run.findings);
    }
}

void MainWindow::mnudateiitem_Click(int index)
{
    if (index == 0)
        shownew();
    if (!db() || index == 0)
        return;
    QTreeWidgetItem *node = m_tvdb->currentItem();
    const QString key = node ? node->data(0, Qt::UserRole).toString() : QString();
    if (index == 2) {
        if (!key.startsWith(QLatin1Char('T')) || key.endsWith(QLatin1Char('_')))
            return;
        int filter = 0;
        const QString file = m_dialogs->savefile(this, QStringLiteral("Speichern..."),
                                                 m_settings.folder(ZorbodatenFolder) + node->text(0) + QStringLiteral(".tea"),
                                                 teamFilters, &filter);
        if (file.isEmpty())
            return;
        ExchangeResult run;
        {
            Busy busy(this, m_status, m_progress, QStringLiteral("Speichere Verein..."));
            run = exportverein(*db(), file, key.mid(1).toLongLong(), busy.progress());
        }
        if (!run.ok())
            m_dialogs->warning(this, QStringLiteral("Speichern"), run.result.message);
        else
            m_status->setText(run.result.message);
    } else if (index == 1) {
        int filter = 0;
        const QString file = m_dialogs->openfile(this, QStringLiteral("Öffnen..."), m_settings.folder(ZorbodatenFolder),
                                                 teamFilters, &filter);
        if (file.isEmpty())
            return;
        // Kept hidden between uses, so its lists follow every rebuild.
        auto *dialog = findChild<OpenDialog *>(QStringLiteral("frmopen"));
        if (!dialog)
            dialog = new OpenDialog(lists(), this);
        dialog->setfile(file);
        if (dialog->exec() != QDialog::Accepted)
            return;
        const auto openRun = [&](FileEncoding encoding) {
            Busy busy(this, m_status, m_progress,
                      dialog->newclub() ? QStringLiteral("Erstelle Verein...") : QStringLiteral("Aktualisiere Verein..."));
            return dialog->newclub() ? openteamnew(*db(), file, dialog->country(), busy.progress(), encoding)
                                     : openteamreplace(*db(), file, dialog->club(), busy.progress(), encoding);
        };
        ExchangeResult run = openRun(FileEncoding::Detect);
        if (!run.ok() && run.looksUtf8) {
            if (!m_dialogs->question(this, QStringLiteral("Öffnen"),
                                     run.result.message + QStringLiteral("\n\nSoll die Datei als UTF-8 gelesen werden?")))
                return;
            run = openRun(FileEncoding::Utf8);
        }
        if (!run.ok()) {
            m_dialogs->warning(this, QStringLiteral("Öffnen"), run.result.message);
            return;
        }
        m_tvdb->setProperty("Tag", QStringLiteral("T%1").arg(run.team));
        reloadandshow();
        m_status->setText(run.result.message);
    }
}

} // namespace zorbo
