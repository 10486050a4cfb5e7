#include "core/gamefiles.h"

#include "platform/print.h"
#include "platform/safefile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace zorbo {

namespace {

constexpr qsizetype sha256Bytes = 32;

QString key(const QString &path)
{
    const QFileInfo info(path);
    const QString canonical = info.canonicalFilePath();
    return canonical.isEmpty() ? info.absoluteFilePath() : canonical;
}

} // namespace

std::optional<FileFingerprint> fingerprint(const QString &path)
{
    QFile file(path);
    const QFileInfo info(path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    // Read in pieces rather than mapped: a file cut short by another program
    // meanwhile gives no print, where a mapping would end the program.
    Print print;
    print.begin(info.size());
    QByteArray chunk(1 << 20, Qt::Uninitialized);
    qint64 total = 0;
    for (;;) {
        const qint64 got = file.read(chunk.data(), chunk.size());
        if (got < 0)
            return std::nullopt;
        if (got == 0)
            break;
        print.piece(chunk.constData(), got);
        total += got;
    }
    if (total != info.size())
        return std::nullopt;
    print.end();
    return FileFingerprint{info.size(), info.lastModified().toUTC(), print.result()};
}

void rememberfile(Database &db, const QString &path)
{
    const std::optional<FileFingerprint> now = fingerprint(path);
    if (!now)
        return;
    db.run(QStringLiteral("INSERT INTO spieldateien (pfad, groesse, zeit, abdruck) VALUES (?1, ?2, ?3, ?4) "
                          "ON CONFLICT (pfad) DO UPDATE SET groesse = ?2, zeit = ?3, abdruck = ?4"),
           key(path), now->size, now->time.toMSecsSinceEpoch(), now->print);
}

std::optional<FileFingerprint> rememberedfile(Database &db, const QString &path)
{
    Statement st = db.prepare(QStringLiteral("SELECT groesse, zeit, abdruck FROM spieldateien WHERE pfad = ?1"));
    st.bind(1, key(path));
    if (!st.step())
        return std::nullopt;
    return FileFingerprint{st.integer(0), QDateTime::fromMSecsSinceEpoch(st.integer(1), Qt::UTC), st.blob(2)};
}

bool changedsince(Database &db, const QString &path, QDateTime *when)
{
    const std::optional<FileFingerprint> kept = rememberedfile(db, path);
    if (!kept)
        return false;
    const std::optional<FileFingerprint> now = fingerprint(path);
    if (!now)
        return false;
    if (when)
        *when = now->time;
    if (now->size != kept->size || now->time != kept->time)
        return true;
    // Worlds of earlier versions remember a file by its SHA-256.
    if (kept->print.size() == sha256Bytes) {
        QFile file(path);
        QCryptographicHash sha(QCryptographicHash::Sha256);
        return !file.open(QIODevice::ReadOnly) || !sha.addData(&file) || sha.result() != kept->print;
    }
    return now->print != kept->print;
}

QString changedwords(const QString &path, const QDateTime &when)
{
    const QDateTime local = when.toLocalTime();
    return QStringLiteral("Die Datei %1 wurde am %2 um %3 geändert, nach dem letzten Import oder Export des Editors.")
        .arg(QDir::toNativeSeparators(path), local.toString(QStringLiteral("dd.MM.yyyy")),
             local.toString(QStringLiteral("hh:mm:ss")));
}

QString FileDifference::place() const
{
    QString where = file;
    if (line > 0)
        where += QStringLiteral(", Zeile %1").arg(line);
    if (!crest.isEmpty())
        where += QStringLiteral(", Wappen %1").arg(crest);
    return where;
}

QString gamefilepath(const Settings &settings, const QString &gameFolder, const GameFileCheck &check)
{
    const QString folder = gameFolder.isEmpty() ? settings.folder(check.folder) : gameFolder;
    const QDir dir(folder);
    if (folder.isEmpty() || !dir.exists())
        return {}; // an empty name would mean the working folder
    if (QFileInfo(dir.filePath(check.name)).isFile())
        return dir.filePath(check.name);
    // A game installed from Windows may write the name in capitals.
    const QStringList names = dir.entryList(QDir::Files);
    for (const QString &n : names) {
        if (n.compare(check.name, Qt::CaseInsensitive) == 0)
            return dir.filePath(n);
    }
    return {};
}

SelfCheckReport selfcheck(const Settings &settings, const QString &gameFolder, const QList<GameFileCheck> &checks,
                          const Progress &progress)
{
    SelfCheckReport report;
    QList<std::pair<const GameFileCheck *, QString>> found;
    for (const GameFileCheck &c : checks) {
        const QString path = gamefilepath(settings, gameFolder, c);
        if (!path.isEmpty())
            found.append({&c, path});
    }
    if (found.isEmpty()) {
        QStringList names;
        for (const GameFileCheck &c : checks)
            names << c.name;
        const QString where = gameFolder.isEmpty() ? QStringLiteral("den Ordnern der Einstellungen")
                                                   : QDir::toNativeSeparators(gameFolder);
        report.result = Result::failure(
            QStringLiteral("In %1 liegt keine der Dateien %2.").arg(where, names.join(QStringLiteral(", "))));
        return report;
    }
    const qint64 total = qint64(found.size()) * 1000;
    try {
        for (qsizetype i = 0; i < found.size(); ++i) {
            const auto &[check, path] = found[i];
            QTemporaryDir scratch;
            if (!scratch.isValid()) {
                report.result = Result::failure(
                    QStringLiteral("Für die Prüfung ließ sich kein vorläufiger Ordner anlegen: %1").arg(scratch.errorString()));
                return report;
            }
            const ScratchFolder unflushed(scratch.path());
            const qint64 base = i * 1000;
            const Progress part = [&](qint64 done, qint64 all) {
                return !progress || progress(base + (all > 0 ? std::min<qint64>(1000, done * 1000 / all) : 0), total);
            };
            zorbo::report(part, 0, 1);
            QList<FileDifference> differences;
            const Result r = check->run(settings, path, scratch.path(), part, differences);
            if (!r.ok) {
                report.result = r.cancelled ? r
                                            : Result::failure(QStringLiteral("%1 ließ sich nicht prüfen: %2")
                                                                  .arg(QDir::toNativeSeparators(path), r.message));
                return report;
            }
            report.checked << path;
            for (const FileDifference &d : std::as_const(differences)) {
                if (report.differences.size() < maxDifferences)
                    report.differences << d;
                else
                    ++report.more;
            }
        }
        zorbo::report(progress, total, total);
    } catch (const Cancelled &) {
        report.result = Result::cancel();
        return report;
    }
    report.result = Result::success(selfcheckwords(report));
    return report;
}

QString selfcheckwords(const SelfCheckReport &report)
{
    const qsizetype files = report.checked.size();
    if (report.differences.isEmpty()) {
        if (files == 3)
            return QStringLiteral("Alle drei Dateien kommen unverändert zurück.");
        if (files == 2)
            return QStringLiteral("Beide Dateien kommen unverändert zurück.");
        return QStringLiteral("Die Datei %1 kommt unverändert zurück.").arg(QFileInfo(report.checked.value(0)).fileName());
    }
    QSet<QString> touched;
    for (const FileDifference &d : report.differences)
        touched.insert(d.file);
    const qsizetype count = report.differences.size() + report.more;
    return QStringLiteral("%1 %2 in %3 von %4 Dateien.")
        .arg(count)
        .arg(count == 1 ? QStringLiteral("Unterschied") : QStringLiteral("Unterschiede"))
        .arg(touched.size())
        .arg(files);
}

} // namespace zorbo
