#pragma once

#include "core/ui/targetdialog.h"

namespace zorbo {

// frmopen: asks whether a team file becomes a new club in a country or
// goes over an existing club.
class OpenDialog : public TargetDialog {
    Q_OBJECT
public:
    OpenDialog(TeamLists *lists, QWidget *parent = nullptr);

    // Prepares the dialog for a file: its title and no option chosen.
    void setfile(const QString &path);
    bool newclub() const;
    QString country() const;

    void optnew_Click(int index) override;

private:
    void updateok();
};

} // namespace zorbo
