#include "core/history.h"

#include "platform/print.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

namespace zorbo {

QByteArray stepchecksum(qint64 id, const QByteArray &changes)
{
    Print print;
    const QByteArray number = QByteArray::number(id) + ':';
    print.bytes(number.constData(), number.size());
    print.bytes(changes.constData(), changes.size());
    return print.result();
}

bool stepchecksumholds(qint64 id, const QByteArray &changes, const QByteArray &sum)
{
    // Steps kept by earlier versions carry the SHA-256 of the same bytes.
    constexpr qsizetype sha256Bytes = 32;
    if (sum.size() == sha256Bytes) {
        QCryptographicHash hash(QCryptographicHash::Sha256);
        hash.addData(QByteArray::number(id) + ':');
        hash.addData(changes);
        return hash.result() == sum;
    }
    return stepchecksum(id, changes) == sum;
}

QList<HistoryStep> historysteps(Database &db)
{
    QList<HistoryStep> steps;
    Statement st = db.prepare(QStringLiteral("SELECT schritt, zeit, text, zurueck, length(aenderungen) FROM verlauf "
                                             "ORDER BY schritt"));
    while (st.step()) {
        HistoryStep step;
        step.id = st.integer(0);
        step.time = QDateTime::fromString(st.text(1), Qt::ISODate);
        step.text = st.text(2);
        step.undone = st.integer(3) != 0;
        step.bytes = st.integer(4);
        steps.append(step);
    }
    return steps;
}

HistorySize historysize(Database &db)
{
    Statement st = db.prepare(QStringLiteral("SELECT count(*), coalesce(sum(length(aenderungen)), 0) FROM verlauf"));
    st.step();
    return {st.integer(0), st.integer(1)};
}

QString restorepointfolder(const QString &programFolder)
{
    return programFolder + QStringLiteral("/sicherungen");
}

const QRegularExpression &restorepointname()
{
    // Date and time, a number when two points fall into one second, the
    // mark of a point made by hand, the reason.
    static const QRegularExpression name(
        QStringLiteral("^(\\d{4}-\\d\\d-\\d\\d_\\d\\d-\\d\\d-\\d\\d)(?:\\.(\\d+))?_(%1)?(.+)\\.mdb$").arg(byhandmark));
    return name;
}

namespace {

// The counts of clubs (the market left out) and players of a copy; -1 when
// it can't be read.
void count(RestorePoint &point)
{
    try {
        Database copy(point.path, Database::ReadOnly);
        Statement counts = copy.prepare(
            QStringLiteral("SELECT (SELECT count(*) FROM vereine WHERE NUMMER <> 0), (SELECT count(*) FROM spieler)"));
        if (counts.step()) {
            point.clubs = counts.integer(0);
            point.players = counts.integer(1);
        }
    } catch (const DbError &) {
        // Listed all the same; the counts stay unknown.
    }
}

} // namespace

QList<RestorePoint> restorepoints(const QString &programFolder, bool counted)
{
    QList<std::pair<int, RestorePoint>> points; // with the number within their second
    const QDir folder(restorepointfolder(programFolder));
    for (const QFileInfo &file : folder.entryInfoList({QStringLiteral("*.mdb")}, QDir::Files)) {
        const QRegularExpressionMatch match = restorepointname().match(file.fileName());
        RestorePoint point;
        point.time = QDateTime::fromString(match.captured(1), QStringLiteral("yyyy-MM-dd_hh-mm-ss"));
        if (!match.hasMatch() || !point.time.isValid())
            continue;
        point.name = file.fileName();
        point.path = file.absoluteFilePath();
        point.byhand = !match.captured(3).isEmpty();
        point.reason = match.captured(4);
        point.size = file.size();
        points.append({match.captured(2).toInt(), point});
    }
    std::sort(points.begin(), points.end(), [](const auto &a, const auto &b) {
        if (a.second.time != b.second.time)
            return a.second.time > b.second.time;
        return a.first != b.first ? a.first > b.first : a.second.name > b.second.name;
    });
    QList<RestorePoint> sorted;
    for (auto &[sequence, point] : points) {
        if (counted)
            count(point);
        sorted.append(point);
    }
    return sorted;
}

} // namespace zorbo
