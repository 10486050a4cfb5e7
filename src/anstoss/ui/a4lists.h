#pragma once

#include <QIcon>
#include <QPixmap>
#include <QTreeWidget>

namespace zorbo {

// Pictures of iltrikot: 1 to 4 the position shirts (STU, MIT, ABW, TOR),
// 5 the cursor while no drop is possible, 6 the cursor over the new squad.
QPixmap a4picture(int image);

// A player list of the workbench: report view, several selected entries,
// the hidden column art. Source lists drag their selection; the new squad
// takes drops from them and gives none.
class A4List : public QTreeWidget {
    Q_OBJECT
public:
    static constexpr const char *mimetype = "application/x-zorbo-a4liste";

    A4List(const QString &name, bool source, QWidget *parent = nullptr);

signals:
    // Entries were dropped here from the source list of that name.
    void dropped(const QString &source);

protected:
    void startDrag(Qt::DropActions actions) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    bool accepts(const QMimeData *mime) const;
    bool m_source;
};

} // namespace zorbo
