#include "core/history.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>
#include <openssl/evp.h>

namespace zorbo {

QByteArray stepchecksum(qint64 id, const QByteArray &changes)
{
    // SHA-256 of "<id>:" and the changes.
    const QByteArray head = QByteArray::number(id) + ':';
    QByteArray sum(32, '\0');
    unsigned int length = 0;
    EVP_MD_CTX *context = EVP_MD_CTX_new();
    const bool done = context && EVP_DigestInit_ex(context, EVP_sha256(), nullptr)
                      && EVP_DigestUpdate(context, head.constData(), size_t(head.size()))
                      && EVP_DigestUpdate(context, changes.constData(), size_t(changes.size()))
                      && EVP_DigestFinal_ex(context, reinterpret_cast<unsigned char *>(sum.data()), &length);
    EVP_MD_CTX_free(context);
    if (!done || length != 32)
        throw DbError("SHA-256 nicht berechnet");
    return sum;
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
