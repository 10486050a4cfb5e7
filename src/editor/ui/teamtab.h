#pragma once

#include "editor/teamsave.h"
#include "editor/ui/formstate.h"
#include "editor/ui/kittarget.h"

#include <functional>

#include <QWidget>
#include <array>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QStringListModel;

namespace zorbo {

class CrestView;
class KitPreview;

// The tab "Land/Verein": one form for a club, a national team and, in
// part, the transfer market.
class TeamTab : public QWidget, public KitTarget {
    Q_OBJECT
public:
    TeamTab(QStringListModel *laender, QWidget *parent = nullptr);

    // Fills the form. A country that is in no list stays on show greyed and
    // is saved as it is unless the user picks another; returns false then.
    bool setForm(const TeamForm &form, TeamMode mode);
    TeamForm form() const;
    // Empties the form, as when its row is gone.
    void clear();
    // Whether the form differs from what it was filled with.
    bool modified() const { return m_state.modified(); }
    // Fills the form again with what it was filled with.
    void revert();
    // The kit folder of the current kit set, for the kit drawings.
    void setKitFolder(const QString &folder) { m_kitFolder = folder; }
    void setArt(int slot, int art);
    void setKitColours(int slot, const KitColours &colours);
    KitPreview *kit(int slot) const { return m_kit[size_t(slot)]; }
    int kitart(int slot) const override;
    void showkit(int slot, int art, const std::optional<KitColours> &colours) override;

    // The wappen folder, for the crests.
    // Where the crest on show comes from: the picture of crest n.
    void setCrestSource(std::function<QImage(int)> source) { m_crestsource = std::move(source); }
    // Shows crest n; a crest without a file gets a copy of default.tga.
    void loadwappen(int n);
    // Takes a crest chosen in the picker, picture and number.
    void setCrest(const QImage &image, const QString &grafnr);
    CrestView *imgxwappen() const { return m_wappen; }
    QString grafnr() const;

    // Shows or hides the continent, which only a national team has.
    void setNational(bool national);

    QGroupBox *frame(const QString &name) const;
    QComboBox *cboland() const { return m_land; }
    QPushButton *btnteamsave() const { return m_save; }

signals:
    void saveRequested();
    void modifiedChanged(bool modified);
    void kitDoubleClicked(int slot);
    void crestClicked();

private:
    // Compares the form with what it was filled with, after each change.
    void recheck() { m_state.recheck(); }

    QLineEdit *m_nummer, *m_grafnr, *m_lang, *m_kurz, *m_stadt, *m_stadion, *m_sitz, *m_steh;
    QComboBox *m_land, *m_kontinent;
    QLabel *m_kontinentLabel;
    TeamTable m_table = TeamTable::Vereine;
    CrestView *m_wappen;
    std::array<KitPreview *, 3> m_kit{};
    QPushButton *m_save;
    QString m_kitFolder;
    std::function<QImage(int)> m_crestsource;
    TeamMode m_mode = ClubMode;
    bool m_filled = false; // false until the first fill and after clear()
    FormState<TeamForm> m_state{[this] { return form(); }, [this] { return m_filled; },
                          [this](bool modified) { emit modifiedChanged(modified); }};
};

} // namespace zorbo
