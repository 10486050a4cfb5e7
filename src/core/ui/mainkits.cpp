// Kits, crest and kit sets of the main window.
#include "core/ui/mainwindow.h"

#include "core/ui/busy.h"
#include "core/ui/dialogs.h"
#include "editor/kitart.h"
#include "editor/ui/kitpicker.h"
#include "editor/ui/teamtab.h"
#include "resources/crestfiles.h"
#include "resources/ui/crestpicker.h"
#include "resources/ui/crestview.h"

#include <QAction>
#include <QApplication>
#include <QLabel>

namespace zorbo {

void MainWindow::showtrikot(qint64 nummer, TeamTable table, int slot)
{
    if (!db())
        return;
    try {
        if (const auto kit = readkitslot(*db(), nummer, table, slot))
            m_teamtab->showkit(slot, kit->art, kit->colours);
    } catch (const DbError &e) {
        m_status->setText(e.text());
    }
}

void MainWindow::showtrikot2(int art, int slot, KitTarget *target)
{
    std::optional<KitColours> colours;
    if (db()) {
        try {
            colours = readartcolours(*db(), m_settings.trikotsatz, art);
        } catch (const DbError &e) {
            m_status->setText(e.text());
        }
    }
    (target ? target : m_teamtab)->showkit(slot, art, colours);
}

void MainWindow::pictrikot_DblClick(int slot)
{
    if (!m_kitpicker) {
        // Made from the kit set current now; a switch of sets drops it.
        m_kitpicker = new KitPicker(
            m_settings.kitFolder(),
            [this](int art) -> std::optional<KitColours> {
                if (!db())
                    return std::nullopt;
                try {
                    return readartcolours(*db(), m_settings.trikotsatz, art);
                } catch (const DbError &) {
                    return std::nullopt;
                }
            },
            this);
    }
    m_kitpicker->prepare(m_teamtab, slot);
    m_kitpicker->exec();
}

void MainWindow::ImgXwappen_Click()
{
    const QString folder = m_settings.folder(WappenFolder);
    if (!m_crestpicker) {
        Busy busy(this, m_status, m_progress, QStringLiteral("Lade Vorschau..."));
        // Every number gets its file now, so the grid and the team tab find one.
        const Result made = ensureallcrests(folder, busy.progress());
        if (!made)
            m_dialogs->warning(this, QStringLiteral("Wappenauswahl"), made.message);
        m_crestpicker = new CrestPicker(folder, this);
    }
    m_crestpicker->prepare(m_teamtab->imgxwappen()->image(), m_teamtab->grafnr());
    if (m_crestpicker->exec() == QDialog::Accepted)
        m_teamtab->setCrest(m_crestpicker->image(), m_crestpicker->wappennr());
}

void MainWindow::mnuoptionenitem_Click(int index)
{
    if (index == 0 || index == 1)
        switchkitset(index);
    else if (index == 2)
        copykitset();
}

void MainWindow::switchkitset(int satz)
{
    action(QStringLiteral("mnuoptionenitem(0)"))->setChecked(satz == 0);
    action(QStringLiteral("mnuoptionenitem(1)"))->setChecked(satz == 1);
    action(QStringLiteral("trikotoriginal"))->setChecked(satz == 0);
    action(QStringLiteral("trikotzorbode"))->setChecked(satz == 1);
    // The picker's grid shows the old folder's drawings; the next opening makes a new one.
    delete m_kitpicker;
    m_kitpicker = nullptr;
    m_settings.trikotsatz = satz;
    m_teamtab->setKitFolder(m_settings.kitFolder());
    if (!m_settings.programFolder.isEmpty() && !writetrikotsatz(m_settings))
        m_status->setText(QStringLiteral("Der Trikotsatz lässt sich nicht in %1 speichern.").arg(m_settings.file()));
}

void MainWindow::copykitset()
{
    Result copied;
    {
        Busy busy(this, m_status, m_progress, QStringLiteral("Kopiere Trikotsatz..."));
        copied = copymares(m_settings.kitFolder(), m_settings.folder(ZorboresFolder));
        QApplication::processEvents();
    }
    if (!copied)
        m_dialogs->information(this, QStringLiteral("Fehler"), copied.message);
}

} // namespace zorbo
