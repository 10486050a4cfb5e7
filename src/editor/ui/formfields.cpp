#include "editor/ui/formfields.h"

#include <QLineEdit>

namespace zorbo {

QLineEdit *formfield(QWidget *parent, const char *name, int maxLength, bool readOnly)
{
    auto *edit = new QLineEdit(parent);
    edit->setObjectName(QLatin1String(name));
    edit->setFont(QFont(QStringLiteral("Courier New")));
    if (maxLength > 0)
        edit->setMaxLength(maxLength);
    edit->setReadOnly(readOnly);
    return edit;
}

} // namespace zorbo
