#pragma once

#include "core/search.h"

#include <QLineEdit>
#include <QPointer>
#include <memory>

class QTreeWidget;
class QTreeWidgetItem;

namespace zorbo {

class Shell;

// The search field of the toolbar ("txtsuche"; Ctrl+F puts the cursor
// there). While the user types, a list below it shows the hits grouped as
// "Länder", "Vereine" and "Spieler" (a player with his club and position);
// the arrow keys move through it, Enter or a click opens the hit, Escape
// closes the list.
class SearchField : public QLineEdit {
    Q_OBJECT

public:
    SearchField(Shell &shell, QWidget *parent);
    ~SearchField() override;

    QTreeWidget *popup() const { return m_popup; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void opened();
    void typed(const QString &text);
    void open(QTreeWidgetItem *item);
    void move(int step);

    Shell &m_shell;
    QPointer<SearchIndex> m_index;
    QTreeWidget *m_popup;
};

// Puts the field at the end of the main window's toolbar.
SearchField *installsearch(Shell &shell);

} // namespace zorbo
