#pragma once

#include "editor/talentlist.h"
#include "editor/talentstates.h"

#include <QIcon>
#include <QTableWidget>

namespace zorbo {

class Database;

// flxgrdattribute: one row per talent (row = talent number), the talent's own
// picture, its state, two texts, three prerequisite and three protection
// pictures. Columns 10 to 16 are hidden: the talent numbers behind the
// pictures and the row's state ("0", row + 1 learned, -(row + 1) locked).
class TalentGrid : public QTableWidget {
    Q_OBJECT
public:
    explicit TalentGrid(QWidget *parent = nullptr);

    // Once at start-up; folder ends in a separator.
    void load_attribute(Database &db, const QString &folder);
    void showtalente(const QString &erlernt, const QString &gesperrt, int art);
    void talentsum(QString &erlernt, QString &gesperrt) const;
    // Numbers of the stored lists that have no row here.
    QList<qint64> unknown() const { return m_states.unknown(); }
    // How often the rows on view were exchanged; a new player of the same group doesn't.
    int layoutchanges() const { return m_layoutChanges; }

    // Every talent column whole and six rows: the smallest window keeps
    // the talents usable.
    QSize minimumSizeHint() const override;

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void setattribute(int row, int sign);
    void showstate(int row);

    QList<Talent> m_talents;
    QList<QIcon> m_pictures;
    QIcon m_learned, m_locked;
    TalentStates m_states;
    int m_group = -1; // 0 goalkeepers, 1 field players, -1 before the first player
    int m_layoutChanges = 0;
};

} // namespace zorbo
