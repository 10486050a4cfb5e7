#pragma once

#include "editor/kitart.h"

#include <QDialog>
#include <functional>
#include <optional>

class QTableView;

namespace zorbo {

class KitGridModel;
class KitTarget;

// frmtrikotauswahl: the 80 kit drawings of the kit set that was current
// when it was made. It works for one slot of a target window at a time;
// "Übernehmen" shows the chosen art there with the colours it comes with.
class KitPicker : public QDialog {
    Q_OBJECT
public:
    // Colours of an art in the current colour table; nothing when it has none.
    using ColourLookup = std::function<std::optional<KitColours>(int art)>;

    KitPicker(const QString &kitFolder, ColourLookup colours, QWidget *parent = nullptr);

    // Prepares the grid for a slot of target, its current art as the choice.
    void prepare(KitTarget *target, int slot);
    KitGridModel *model() const { return m_model; }
    int trikotslot() const { return m_slot; }

    void flxgrdtrikot_Click(const QModelIndex &index);
    void btnok_Click();

private:
    ColourLookup m_colours;
    KitTarget *m_target = nullptr;
    int m_slot = 0;
    KitGridModel *m_model;
    QTableView *m_grid;
};

} // namespace zorbo
