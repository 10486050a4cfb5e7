#include "editor/talentstates.h"

#include "editor/talentlist.h"

#include <QStringList>
#include <algorithm>

namespace zorbo {

namespace {

// Reads each entry as a whole number; entries that hold none are blanks left
// by hand edits and are dropped.
QList<qint64> numbers(const QString &list)
{
    QList<qint64> out;
    for (const QString &part : list.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        bool ok = false;
        const qint64 n = part.trimmed().toLongLong(&ok);
        if (ok)
            out << n;
    }
    return out;
}

QString joined(QList<qint64> list)
{
    std::sort(list.begin(), list.end());
    list.erase(std::unique(list.begin(), list.end()), list.end());
    QStringList parts;
    for (qint64 n : list)
        parts << QString::number(n);
    return parts.join(QLatin1Char(','));
}

} // namespace

TalentStates TalentStates::fromlists(const QString &erlernt, const QString &gesperrt)
{
    TalentStates t;
    for (qint64 n : numbers(erlernt)) {
        if (n >= 0 && n < TalentCount)
            t.m_states[size_t(n)] = Learned;
        else
            t.m_keptLearned << n;
    }
    for (qint64 n : numbers(gesperrt)) {
        if (n >= 0 && n < TalentCount)
            t.m_states[size_t(n)] = Locked;
        else
            t.m_keptLocked << n;
    }
    t.m_stored = t.m_states;
    t.m_storedLists = {erlernt, gesperrt};
    return t;
}

TalentStates::State TalentStates::state(int talent) const
{
    return talent >= 0 && talent < TalentCount ? m_states[size_t(talent)] : None;
}

void TalentStates::setstate(int talent, State s)
{
    if (talent >= 0 && talent < TalentCount)
        m_states[size_t(talent)] = s;
}

TalentStates::State TalentStates::step(int talent)
{
    const State next = state(talent) == None ? Learned : state(talent) == Learned ? Locked : None;
    setstate(talent, next);
    return next;
}

void TalentStates::talentsum(QString &erlernt, QString &gesperrt) const
{
    // What the user left as it was keeps its stored spelling and order.
    if (m_states == m_stored) {
        erlernt = m_storedLists.first;
        gesperrt = m_storedLists.second;
        return;
    }
    QList<qint64> learned = m_keptLearned, locked = m_keptLocked;
    for (int i = 0; i < TalentCount; ++i) {
        if (m_states[size_t(i)] == Learned)
            learned << i;
        else if (m_states[size_t(i)] == Locked)
            locked << i;
    }
    erlernt = joined(learned);
    gesperrt = joined(locked);
}

QList<qint64> TalentStates::unknown() const
{
    QList<qint64> all = m_keptLearned + m_keptLocked;
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
}

} // namespace zorbo
