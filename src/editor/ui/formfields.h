#pragma once

#include <QString>

class QLineEdit;
class QWidget;

namespace zorbo {

// A text field of the editor tabs: named, Courier New, with its maximal
// length (0: none).
QLineEdit *formfield(QWidget *parent, const char *name, int maxLength, bool readOnly = false);

} // namespace zorbo
