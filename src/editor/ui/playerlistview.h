#pragma once

#include "editor/playerlist.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QTableView;

namespace zorbo {

class PlayerListModel;
class Shell;

// "Spielerliste": every player of the world in one list, with the filter
// bar above it (text, country, continent, club, position, strength from–to,
// "ohne Verein", "doppelte Rückennummer", "Problem"), named filters, edits on
// many and the file for spreadsheets. A double click opens the player in
// the main window.
class PlayerListView : public QWidget {
    Q_OBJECT

public:
    PlayerListView(Shell &shell, QWidget *parent = nullptr);

    PlayerListModel *model() const { return m_model; }
    // The filter the bar shows.
    PlayerFilter filter() const;
    // The players "Auswahl bearbeiten..." works on: the selected rows, or all
    // the filter shows when none is selected.
    QList<qint64> chosen() const;

    void editchosen();
    void exportcsv();
    void importcsv();
    void savefilter();
    // Fills the bar from a filter expression, as the named filters keep it.
    void showfilter(const PlayerFilter &filter);

signals:
    // A double click: the player's first team ("T12", "L3") and number.
    void openplayer(const QString &teamKey, qint64 player);

private:
    void applyfilter();
    void filllists();
    void fillsaved();
    QString savedfile() const;

    Shell &m_shell;
    PlayerListModel *m_model;
    QTableView *m_table;
    QLineEdit *m_text;
    QComboBox *m_land, *m_kontinent, *m_verein, *m_position, *m_von, *m_bis, *m_saved;
    QCheckBox *m_ohneVerein, *m_doppelt, *m_problem;
    QLabel *m_count;
    bool m_filling = false;
};

} // namespace zorbo
