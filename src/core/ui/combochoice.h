#pragma once

#include <QString>

class QComboBox;

namespace zorbo {

// The entry of a list-only combo box that shows a stored value. Qt's combo
// box falls back on its first entry when the value is not in its list, or
// when its model is filled anew; a form saved after that would store the
// wrong country. These keep the stored value instead.

// Selects text; when the list lacks it, the box shows it greyed and empty of
// a selection, and chosentext() still gives it. False then.
bool choosetext(QComboBox *combo, const QString &text);

// The entry the user chose, or the stored value the box holds.
QString chosentext(const QComboBox *combo);

// Keeps the entry when the combo box's model resets: found again by its item
// data (Qt::UserRole) where the model has some, else by its text. Call after
// setModel.
void keepchoice(QComboBox *combo);

} // namespace zorbo
