#include "editor/ui/formfields.h"

#include <QLineEdit>
#include <QValidator>

namespace zorbo {

namespace {

// QLineEdit::setMaxLength would cut text set by the program as well, so the
// limit is a validator: an edit may not leave the text longer than the limit,
// unless it makes it no longer than it was. An edit refused by it is undone,
// as typing past a length limit is. Text the program sets must count as
// acceptable, or the field would undo no later edit at all; the program's
// text is the one that leaves the field unmodified. While an edit is checked,
// the field already holds the new text, so the length before it is kept here.
class TypingLimit : public QValidator {
public:
    TypingLimit(int limit, QLineEdit *edit)
        : QValidator(edit), m_edit(edit), m_limit(limit), m_before(edit->text().size())
    {
        connect(edit, &QLineEdit::textChanged, this, [this](const QString &text) { m_before = text.size(); });
    }

    State validate(QString &input, int &) const override
    {
        if (!m_edit->isModified() || input.size() <= m_limit || input.size() <= m_before)
            return Acceptable;
        return Invalid;
    }

private:
    const QLineEdit *m_edit;
    int m_limit;
    qsizetype m_before;
};

} // namespace

void showfromstart(QWidget *form)
{
    for (QLineEdit *edit : form->findChildren<QLineEdit *>())
        edit->setCursorPosition(0);
}

void settypinglimit(QLineEdit *edit, int maxLength)
{
    edit->setValidator(maxLength > 0 ? new TypingLimit(maxLength, edit) : nullptr);
    edit->setProperty("typingLimit", maxLength);
}

QLineEdit *formfield(QWidget *parent, const char *name, int maxLength, bool readOnly)
{
    auto *edit = new QLineEdit(parent);
    edit->setObjectName(QLatin1String(name));
    edit->setFont(QFont(QStringLiteral("Courier New")));
    if (maxLength > 0)
        settypinglimit(edit, maxLength);
    edit->setReadOnly(readOnly);
    return edit;
}

} // namespace zorbo
