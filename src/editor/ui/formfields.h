#pragma once

#include <QString>

class QLineEdit;
class QWidget;

namespace zorbo {

// A text field of the editor tabs: named, Courier New, with its typing limit
// (0: none). The limit stops the user from typing more; text set by the
// program shows whole, so a stored name longer than the limit survives a save
// that didn't touch it.
QLineEdit *formfield(QWidget *parent, const char *name, int maxLength, bool readOnly = false);

// Shows every text field below the widget from the start of its text; a
// field the program fills otherwise shows a long text's end.
void showfromstart(QWidget *form);

// Puts the typing limit on a field that was built elsewhere.
void settypinglimit(QLineEdit *edit, int maxLength);

} // namespace zorbo
