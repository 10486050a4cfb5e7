#include "resources/crestfiles.h"

#include "platform/fileerror.h"
#include "platform/safefile.h"
#include "resources/crestswitch.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace zorbo {

QString crestfile(const QString &wappenFolder, int n)
{
    return wappenFolder + QStringLiteral("vereins_wappen_%1.tga").arg(n);
}

namespace {

// Gives crest n the default picture when it has no file; bytes holds
// default.tga once read (empty before).
Result fillcrest(const QString &wappenFolder, int n, QString &path, QByteArray &bytes, Flush flush)
{
    path = crestfile(wappenFolder, n);
    if (QFileInfo::exists(path))
        return Result::success();
    const QString fallback = wappenFolder + QStringLiteral("default.tga");
    if (bytes.isEmpty()) {
        QFile in(fallback);
        if (!in.exists())
            return Result::failure(QStringLiteral("Das Wappen %1 fehlt, und es gibt kein %2.").arg(n).arg(fallback));
        if (!in.open(QIODevice::ReadOnly) || (bytes = in.readAll()).isEmpty())
            return Result::failure(QStringLiteral("%1 lässt sich nicht lesen: %2").arg(fallback, fileerrortext(in)));
    }
    if (!replacefile(path, bytes, flush))
        return Result::failure(QStringLiteral("%1 lässt sich nicht nach %2 kopieren.").arg(fallback, path));
    return Result::success();
}

} // namespace

Result ensurecrest(const QString &wappenFolder, int n, QString &path)
{
    // A crest import cut off in its switch is finished before anyone sees a mix.
    if (Result r = recovercrests(wappenFolder); !r)
        return r;
    QByteArray bytes;
    return fillcrest(wappenFolder, n, path, bytes, Flush::Disk);
}

Result ensureallcrests(const QString &wappenFolder, const Progress &progress)
{
    if (Result r = recovercrests(wappenFolder); !r)
        return r;
    // Each crest filled in is whole and stays, so the run shows how far it is
    // but does not stop halfway: a stop could not leave things as they were.
    // The disk is waited for once, for all of them.
    QString path;
    QByteArray bytes;
    for (int n = 0; n < CrestCount; ++n) {
        if (n % 50 == 0 && progress)
            progress(n, CrestCount);
        if (Result r = fillcrest(wappenFolder, n, path, bytes, Flush::None); !r)
            return r;
    }
    if (!bytes.isEmpty() && !syncfilesystem(wappenFolder))
        return Result::failure(QStringLiteral("Die Wappen in %1 lassen sich nicht sicher auf die Platte schreiben.").arg(wappenFolder));
    if (progress)
        progress(CrestCount, CrestCount);
    return Result::success();
}

Result copymares(const QString &kitFolder, const QString &zorboresFolder)
{
    const QString source = kitFolder + QStringLiteral("ma.res");
    const QString target = zorboresFolder + QStringLiteral("ma.res");
    if (!QFileInfo::exists(target))
        return Result::failure(QStringLiteral("Kein Zorbo installiert"));
    if (const QString why = writetargetproblem(target); !why.isEmpty())
        return Result::failure(why);
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly))
        return Result::failure(QStringLiteral("Der Trikotsatz %1 lässt sich nicht lesen: %2").arg(source, fileerrortext(in)));
    // Written aside and renamed, so that a failed copy leaves the game's archive whole.
    QSaveFile out(target);
    if (!out.open(QIODevice::WriteOnly))
        return Result::failure(QStringLiteral("%1 lässt sich nicht schreiben: %2").arg(target, fileerrortext(out)));
    const qint64 size = in.size();
    qint64 copied = 0;
    while (copied < size) {
        const QByteArray chunk = in.read(qMin<qint64>(1 << 20, size - copied));
        if (chunk.isEmpty() || out.write(chunk) != chunk.size()) {
            out.cancelWriting();
            return Result::failure(QStringLiteral("%1 lässt sich nicht nach %2 kopieren.").arg(source, target));
        }
        copied += chunk.size();
    }
    // Flushed by hand: the commit would not tell when its own flush fails.
    if (!out.flush()) {
        const QString why = fileerrortext(out);
        out.cancelWriting();
        return Result::failure(QStringLiteral("%1 lässt sich nicht schreiben: %2").arg(target, why));
    }
    if (!out.commit())
        return Result::failure(QStringLiteral("%1 lässt sich nicht schreiben: %2").arg(target, fileerrortext(out)));
    return Result::success();
}

} // namespace zorbo
