#include "core/history.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

namespace zorbo {

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
    // Date and time, a number when two points fall into one second, the reason.
    static const QRegularExpression name(
        QStringLiteral("^(\\d{4}-\\d\\d-\\d\\d_\\d\\d-\\d\\d-\\d\\d)(?:\\.(\\d+))?_(.+)\\.mdb$"));
    return name;
}

QList<RestorePoint> restorepoints(const QString &programFolder)
{
    QList<RestorePoint> points;
    QList<int> sequence;
    const QDir folder(restorepointfolder(programFolder));
    const QFileInfoList files = folder.entryInfoList({QStringLiteral("*.mdb")}, QDir::Files);
    for (const QFileInfo &file : files) {
        const QRegularExpressionMatch match = restorepointname().match(file.fileName());
        if (!match.hasMatch())
            continue;
        RestorePoint point;
        point.name = file.fileName();
        point.path = file.absoluteFilePath();
        point.time = QDateTime::fromString(match.captured(1), QStringLiteral("yyyy-MM-dd_hh-mm-ss"));
        point.reason = match.captured(3);
        point.size = file.size();
        try {
            Database copy(point.path, Database::ReadOnly);
            Statement counts = copy.prepare(QStringLiteral(
                "SELECT (SELECT count(*) FROM vereine WHERE NUMMER <> 0), (SELECT count(*) FROM spieler)"));
            if (counts.step()) {
                point.clubs = counts.integer(0);
                point.players = counts.integer(1);
            }
        } catch (const DbError &) {
            // Listed all the same; the counts stay unknown.
        }
        if (!point.time.isValid())
            continue;
        points.append(point);
    }
    std::sort(points.begin(), points.end(), [](const RestorePoint &a, const RestorePoint &b) {
        if (a.time != b.time)
            return a.time > b.time;
        const int sa = restorepointname().match(a.name).captured(2).toInt();
        const int sb = restorepointname().match(b.name).captured(2).toInt();
        return sa != sb ? sa > sb : a.name > b.name;
    });
    return points;
}

} // namespace zorbo
