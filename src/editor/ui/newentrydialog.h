#pragma once

#include <QDialog>

class QAbstractItemModel;
class QComboBox;
class QPushButton;
class QRadioButton;

namespace zorbo {

// frmneu: starts a new country on a continent or a new club in a country.
// It writes nothing; the caller adds the provisional tree node.
class NewEntryDialog : public QDialog {
    Q_OBJECT
public:
    enum Kind { Land = 0, Verein = 1 };

    // laender: the shared country list, so the dialog is complete at every opening.
    NewEntryDialog(QAbstractItemModel *laender, QWidget *parent = nullptr);

    void optnew_Click(int index);
    Kind kind() const;
    // The continent of a new country or the country of a new club.
    QString choice() const;

private:
    void updateok();

    QRadioButton *m_opt[2];
    QComboBox *m_kontinent;
    QComboBox *m_land;
    QPushButton *m_ok;
};

} // namespace zorbo
