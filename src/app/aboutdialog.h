#pragma once

#include <QDialog>

namespace zorbo {

class Dialogs;

// frmAbout: version, description and legal notice.
class AboutDialog : public QDialog {
    Q_OBJECT
public:
    AboutDialog(QWidget *parent, Dialogs *dialogs);
};

} // namespace zorbo
