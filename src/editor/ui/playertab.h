#pragma once

#include "editor/facepictures.h"
#include "editor/playersave.h"
#include "editor/ui/formstate.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QStringListModel;

namespace zorbo {

class Database;
class FaceView;
class TalentGrid;

// The tab "Spieler": filled from a player of the grid, not from the
// database; the save gets the form over that player.
class PlayerTab : public QWidget {
    Q_OBJECT
public:
    PlayerTab(QStringListModel *spielerlaender, QWidget *parent = nullptr);

    // showspieler. A country that is in no list stays on show greyed and is
    // saved as it is unless the user picks another; returns false then.
    bool setPlayer(const GridPlayer &player);
    // The form over the player it was filled from: the face on show and the
    // talents of the talent grid.
    PlayerForm form() const;
    // The player on show; empty() says whether there is one (0 is a
    // player's number like any other).
    const GridPlayer &player() const { return m_player; }
    bool empty() const { return !m_shows; }
    // Empties the tab, as when its player is gone.
    void clear();
    // Whether the form differs from what it was filled with.
    bool modified() const { return m_state.modified(); }
    // Fills the form again with the player on show.
    void revert() { setPlayer(m_player); }
    // Once at start-up: the talent list and its pictures.
    void load_attribute(Database &db, const QString &attributeFolder);
    // Talent numbers of the player on show that the grid has no row for.
    QList<qint64> unknowntalents() const;
    // Once at start-up: the face pictures, counted.
    void setGesichtFolder(const QString &folder);
    FaceView *face() const { return m_gesicht; }
    // imggesicht_DblClick: the face dialog, modal; a taken face replaces the one on show.
    void editface();
    // Opens or closes Frame8 to Frame11 and the save button.
    void setOpen(bool open);
    QPushButton *btnspielerspeichern() const { return m_save; }

signals:
    void saveRequested();
    void modifiedChanged(bool modified);

private:
    // Compares the form with what it was filled with, after each change.
    void recheck() { m_state.recheck(); }

    QLineEdit *m_nummer, *m_vorname, *m_name, *m_einsatz, *m_rnr, *m_groesse;
    QComboBox *m_staerke, *m_maxstaerke, *m_pos, *m_land;
    FaceView *m_gesicht;
    FacePictures m_faces;
    TalentGrid *m_attribute;
    QPushButton *m_save;
    GridPlayer m_player;
    bool m_shows = false;
    FormState<PlayerForm> m_state{[this] { return form(); }, [this] { return m_shows; },
                          [this](bool modified) { emit modifiedChanged(modified); }};
};

} // namespace zorbo
