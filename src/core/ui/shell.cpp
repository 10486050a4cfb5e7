#include "core/ui/shell.h"

#include "core/ui/dialogs.h"

#include <QAction>

namespace zorbo {

void Shell::setopen(const QString &name, bool open)
{
    QAction *act = entry(name);
    if (!act)
        return;
    act->setProperty("Offen", open);
    act->setEnabled(open && !act->property("pending").toBool());
}

Settled Shell::settle(Document *only)
{
    Settled settled = Settled::Unmodified;
    for (Document *document : std::as_const(m_documents)) {
        if ((only && document != only) || !document->modified())
            continue;
        const int answer = dialogs().choose(window(), document->title(), QStringLiteral("Änderungen speichern?"),
                                            {QStringLiteral("Speichern"), QStringLiteral("Verwerfen"),
                                             QStringLiteral("Abbrechen")});
        if (answer == 0) {
            if (!document->save())
                return Settled::Cancelled;
            settled = Settled::Saved;
        } else if (answer == 1) {
            document->discard();
            if (settled == Settled::Unmodified)
                settled = Settled::Discarded;
        } else {
            return Settled::Cancelled;
        }
    }
    return settled;
}

} // namespace zorbo
