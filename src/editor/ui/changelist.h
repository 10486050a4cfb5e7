#pragma once

#include "editor/playerfields.h"

#include <QTreeWidget>

namespace zorbo {

// A preview of what a run would change: one line per field, with the
// player, the value before and after. objectName lstvvorschau.
class ChangeList : public QTreeWidget {
    Q_OBJECT

public:
    explicit ChangeList(QWidget *parent = nullptr);
    void show(const QList<PlayerChange> &changes);
};

} // namespace zorbo
