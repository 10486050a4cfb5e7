// Kits, crest and kit sets of the editor.
#include "editor/ui/editorview.h"

#include "core/settings.h"
#include "core/ui/crestview.h"
#include "core/ui/shell.h"
#include "core/ui/dialogs.h"
#include "editor/kitart.h"
#include "editor/ui/kitpicker.h"
#include "editor/ui/kittarget.h"
#include "editor/ui/teamtab.h"
#include "editor/ui/kitpreview.h"

#include <QAction>
#include <QLabel>

namespace zorbo {

void EditorView::showtrikot(qint64 nummer, TeamTable table, int slot)
{
    if (!db())
        return;
    try {
        if (const auto kit = readkitslot(*db(), nummer, table, slot))
            m_teamtab->showkit(slot, kit->art, kit->colours);
    } catch (const DbError &e) {
        m_shell.status(e.text());
    }
}

void EditorView::showtrikot2(int art, int slot, KitTarget *target)
{
    std::optional<KitColours> colours;
    if (db()) {
        try {
            colours = readartcolours(*db(), settings().trikotsatz, art);
        } catch (const DbError &e) {
            m_shell.status(e.text());
        }
    }
    (target ? target : m_teamtab)->showkit(slot, art, colours);
}

KitPicker *EditorView::makekitpicker()
{
    if (!m_kitpicker) {
        // Made from the kit set current now; a switch of sets drops it.
        m_kitpicker = new KitPicker(
            settings().kitFolder(),
            [this](int art) -> std::optional<KitColours> {
                if (!db())
                    return std::nullopt;
                try {
                    return readartcolours(*db(), settings().trikotsatz, art);
                } catch (const DbError &) {
                    return std::nullopt;
                }
            },
            m_shell.window());
    }
    return m_kitpicker;
}

void EditorView::pictrikot_DblClick(int slot)
{
    makekitpicker()->prepare(m_teamtab, slot);
    m_kitpicker->exec();
}

std::optional<ChosenKit> EditorView::choosekit(int slot, int art)
{
    // The picker shows its choice on a target; this one only keeps it.
    struct Keep : KitTarget {
        int art = 0;
        std::optional<ChosenKit> chosen;
        int kitart(int) const override { return art; }
        void showkit(int, int picked, const std::optional<KitColours> &colours) override
        {
            ChosenKit c;
            c.art = picked;
            if (colours) {
                std::array<QColor, 4> q;
                for (size_t i = 0; i < 4; ++i)
                    q[i] = QColor((*colours)[i].red, (*colours)[i].green, (*colours)[i].blue);
                c.colours = q;
            }
            chosen = c;
        }
    } keep;
    keep.art = art;
    makekitpicker()->prepare(&keep, slot);
    m_kitpicker->exec();
    return keep.chosen;
}

void EditorView::ImgXwappen_Click()
{
    // The crest picker belongs to the crests' subsystem, which lends it
    // through the shell.
    if (const auto chosen = m_shell.choosecrest(m_teamtab->imgxwappen()->image(), m_teamtab->grafnr()))
        m_teamtab->setCrest(chosen->image, chosen->wappennr);
}

void EditorView::mnuoptionenitem_Click(int index)
{
    if (index == 0 || index == 1)
        switchkitset(index);
}

void EditorView::switchkitset(int satz)
{
    m_shell.entry(QStringLiteral("mnuoptionenitem(0)"))->setChecked(satz == 0);
    m_shell.entry(QStringLiteral("mnuoptionenitem(1)"))->setChecked(satz == 1);
    m_shell.entry(QStringLiteral("trikotoriginal"))->setChecked(satz == 0);
    m_shell.entry(QStringLiteral("trikotzorbode"))->setChecked(satz == 1);
    // The picker's grid shows the old folder's drawings; the next opening makes a new one.
    delete m_kitpicker;
    m_kitpicker = nullptr;
    m_shell.settings().trikotsatz = satz;
    m_teamtab->setKitFolder(settings().kitFolder());
    if (!settings().programFolder.isEmpty() && !writetrikotsatz(m_shell.settings()))
        m_shell.status(QStringLiteral("Der Trikotsatz lässt sich nicht in %1 speichern.").arg(settings().file()));
}

} // namespace zorbo
