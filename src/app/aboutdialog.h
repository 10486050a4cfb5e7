#pragma once

#include <QDialog>

namespace zorbo {

class Dialogs;

// frmAbout: version, description and legal notice.
class AboutDialog : public QDialog {
    Q_OBJECT
public:
    // folder: the program folder the world lives in, named in the window.
    AboutDialog(QWidget *parent, Dialogs *dialogs, const QString &folder);
};

} // namespace zorbo
