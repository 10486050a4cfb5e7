#pragma once

#include <QList>
#include <QString>
#include <array>
#include <utility>

namespace zorbo {

// The talent states of one player, read from ERLERNT and GESPERRT and folded
// back into them. Numbers the editor has no talent for are kept, untouched,
// so a save never deletes them.
class TalentStates {
public:
    enum State { None = 0, Learned = 1, Locked = -1 };

    // A talent in both lists ends up locked. Blanks around numbers don't count.
    static TalentStates fromlists(const QString &erlernt, const QString &gesperrt);

    State state(int talent) const;
    void setstate(int talent, State s);
    // none -> learned -> locked -> none; returns the new state.
    State step(int talent);

    // Both lists ascending, joined by "," without blanks, kept numbers
    // included; the stored lists as they were while no state has changed.
    void talentsum(QString &erlernt, QString &gesperrt) const;

    // Numbers of either list outside 0 to 52, ascending.
    QList<qint64> unknown() const;

private:
    std::array<State, 53> m_states{};
    QList<qint64> m_keptLearned, m_keptLocked;
    std::array<State, 53> m_stored{};
    std::pair<QString, QString> m_storedLists;
};

} // namespace zorbo
