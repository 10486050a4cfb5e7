#pragma once

#include <QString>

class QWidget;

namespace zorbo {

// Message boxes go through this, so that tests can answer them.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    // A Yes/No question with No as the default button; true on Yes.
    virtual bool question(QWidget *parent, const QString &title, const QString &text);
    virtual void information(QWidget *parent, const QString &title, const QString &text);
    virtual void warning(QWidget *parent, const QString &title, const QString &text);
};

} // namespace zorbo
