#pragma once

#include <QDialog>
#include <functional>

class QTableView;

namespace zorbo {

class CrestGridModel;
class CrestView;

// frmwappenauswahl: all crests in a grid, the chosen one beside it. The
// buttons only hide the dialog, so it keeps its grid for the whole run.
class CrestPicker : public QDialog {
    Q_OBJECT
public:
    CrestPicker(const QString &wappenFolder, QWidget *parent = nullptr);

    // What the team tab shows when the picker opens.
    void prepare(const QImage &image, const QString &wappennr);
    QString wappennr() const { return m_wappennr; }
    const QImage &image() const;
    CrestGridModel *model() const { return m_model; }

    void flxgrdwappen_Click(const QModelIndex &index);
    // "Wappen aus Bild...": work makes crest n (the one chosen) from a
    // picture and answers the crest it wrote, or -1; the grid then shows it.
    void setfrompicture(std::function<int(int n)> work) { m_frompicture = std::move(work); }

private:
    QString m_folder;
    QString m_wappennr;
    CrestGridModel *m_model;
    QTableView *m_grid;
    CrestView *m_chosen;
    std::function<int(int)> m_frompicture;
};

} // namespace zorbo
