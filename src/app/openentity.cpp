#include "app/openentity.h"

#include "core/ui/shell.h"

#include <QAbstractItemModel>
#include <QTableView>

namespace zorbo {

void openentity(Shell &shell, const QString &teamKey, qint64 player)
{
    if (teamKey.isEmpty())
        return;
    shell.select(teamKey);
    // Not shown when the user kept the form with typing on show.
    if (player < 0 || !shell.window() || shell.shownkey() != teamKey)
        return;
    // The squad's grid lists the player numbers in its first column.
    auto *grid = shell.window()->findChild<QTableView *>(QStringLiteral("flxgrdspieler"));
    if (!grid || !grid->model())
        return;
    QAbstractItemModel *model = grid->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        const QModelIndex index = model->index(row, 0);
        if (model->data(index).toLongLong() == player && !model->data(index).toString().isEmpty()) {
            grid->setCurrentIndex(index);
            grid->scrollTo(index);
            emit grid->clicked(index);
            return;
        }
    }
}

} // namespace zorbo
