#include "core/ui/shell.h"

#include "core/ui/dialogs.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>

namespace zorbo {

void Shell::setopen(const QString &name, bool open)
{
    QAction *act = entry(name);
    if (!act)
        return;
    act->setProperty("Offen", open);
    act->setEnabled(open && !act->property("pending").toBool());
}

namespace {

// start moved into the folder last used for the kind, if that still exists.
QString laststart(const Settings &settings, FileKind kind, const QString &start)
{
    const QString last = settings.lastfolders[size_t(kind)];
    if (last.isEmpty() || !QFileInfo(last).isDir())
        return start;
    const QString name = start.endsWith(QLatin1Char('/')) ? QString() : QFileInfo(start).fileName();
    return last + (last.endsWith(QLatin1Char('/')) ? QString() : QStringLiteral("/")) + name;
}

} // namespace

QString Shell::openfile(FileKind kind, const QString &title, const QString &start, const QStringList &filters,
                        int *filter)
{
    return pickfile(false, kind, title, start, filters, filter);
}

QString Shell::savefile(FileKind kind, const QString &title, const QString &start, const QStringList &filters,
                        int *filter)
{
    return pickfile(true, kind, title, start, filters, filter);
}

QString Shell::pickfile(bool save, FileKind kind, const QString &title, const QString &start, const QStringList &filters,
                        int *filter)
{
    const QString from = laststart(settings(), kind, start);
    const QString file = save ? dialogs().savefile(window(), title, from, filters, filter)
                              : dialogs().openfile(window(), title, from, filters, filter);
    if (!file.isEmpty())
        writelastfolder(settings(), kind, file);
    // Files the editor can open again go into "Zuletzt geöffnet".
    if (!save && !file.isEmpty() && opens(file))
        writerecentfile(settings(), file);
    return file;
}

void Shell::handlefile(const QString &suffix, std::function<void(const QString &file)> open)
{
    m_openers.insert(suffix.toLower(), std::move(open));
}

void Shell::handleimport(const QString &kind, const QString &words, std::function<void(const QString &file)> import)
{
    m_imports.insert(kind, Import{words, std::move(import)});
}

bool Shell::openpath(const QString &file, const QString &kind)
{
    const QFileInfo info(file);
    const QString shown = QDir::toNativeSeparators(info.absoluteFilePath());
    if (!info.isFile()) {
        dialogs().warning(window(), QStringLiteral("Öffnen"), QStringLiteral("Die Datei %1 gibt es nicht.").arg(shown));
        return false;
    }
    std::function<void(const QString &)> open;
    if (!kind.isEmpty())
        open = m_imports.value(kind).run;
    else
        open = m_openers.value(info.suffix().toLower());
    if (!open) {
        dialogs().warning(window(), QStringLiteral("Öffnen"),
                          QStringLiteral("Die Datei %1 kann der Zorbo Editor nicht öffnen: er kennt Teamdateien "
                                         "(.tea), Dateien des Anstoss Exporters (.aet, .lig, .lan) und "
                                         "Änderungsdateien (.zae).")
                              .arg(shown));
        return false;
    }
    if (!db() || settle() == Settled::Cancelled)
        return false;
    writerecentfile(settings(), info.absoluteFilePath(), kind);
    open(info.absoluteFilePath());
    return true;
}

bool Shell::opens(const QString &file) const
{
    return m_openers.contains(QFileInfo(file).suffix().toLower());
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
