#pragma once

#include "core/ui/targetdialog.h"
#include "platform/codepage.h"

namespace zorbo {

// frma4open: an exporter club goes into the free players or over a club of
// the world, which the dialog preselects from the file's name, town and country.
class A4OpenDialog : public TargetDialog {
    Q_OBJECT
public:
    A4OpenDialog(TeamLists *lists, QWidget *parent = nullptr);

    // Prepares the dialog for a file: the club's name as the file is called,
    // no option chosen, btnok and cboverein disabled.
    void setfile(const QString &path, const QString &clubname, FileEncoding encoding = FileEncoding::Detect);
    bool freeplayers() const;

    void optnew_Click(int index) override;

private:
    void updateok();

    FileEncoding m_encoding = FileEncoding::Detect;
};

} // namespace zorbo
