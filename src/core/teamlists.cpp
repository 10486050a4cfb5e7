#include "core/teamlists.h"

namespace zorbo {

TeamLists::TeamLists(QObject *parent) : QObject(parent) {}

void TeamLists::fill(const TeamTree &tree)
{
    m_laender.setStringList(tree.laender);
    m_spielerlaender.setStringList(tree.spielerlaender);
    m_vereine.setClubs(tree.vereine);
}

} // namespace zorbo
