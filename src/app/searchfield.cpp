#include "app/searchfield.h"

#include "app/openentity.h"
#include "core/ui/shell.h"

#include <QAction>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMainWindow>
#include <QShortcut>
#include <QToolBar>
#include <QTreeWidget>

namespace zorbo {

namespace {

enum Role { KeyRole = Qt::UserRole, PlayerRole };

} // namespace

SearchField::SearchField(Shell &shell, QWidget *parent) : QLineEdit(parent), m_shell(shell)
{
    setObjectName(QStringLiteral("txtsuche"));
    setPlaceholderText(QStringLiteral("Suchen (Strg+F)"));
    setClearButtonEnabled(true);
    setMaximumWidth(260);
    // A list that never takes the focus, so typing goes on in the field.
    m_popup = new QTreeWidget(this);
    m_popup->setObjectName(QStringLiteral("lstsuche"));
    m_popup->setWindowFlags(Qt::ToolTip | Qt::FramelessWindowHint);
    m_popup->setFocusPolicy(Qt::NoFocus);
    m_popup->setHeaderHidden(true);
    m_popup->setRootIsDecorated(false);
    m_popup->setColumnCount(2);
    m_popup->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_popup->installEventFilter(this);
    connect(m_popup, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem *item) { open(item); });
    connect(this, &QLineEdit::textEdited, this, &SearchField::typed);
    connect(&m_shell, &Shell::opened, this, &SearchField::opened);
    if (m_shell.world())
        opened();
}

SearchField::~SearchField() = default;

void SearchField::opened()
{
    m_index = m_shell.world() ? &SearchIndex::of(*m_shell.world()) : nullptr;
    if (m_index)
        m_index->rankinidle();
}

void SearchField::typed(const QString &text)
{
    m_popup->clear();
    const SearchResult result = m_index ? m_index->find(text) : SearchResult();
    if (result.isEmpty()) {
        m_popup->hide();
        return;
    }
    const auto group = [&](const QString &heading, const QList<SearchHit> &hits) {
        if (hits.isEmpty())
            return;
        auto *head = new QTreeWidgetItem(m_popup, QStringList{heading});
        head->setFlags(Qt::ItemIsEnabled);
        QFont bold = head->font(0);
        bold.setBold(true);
        head->setFont(0, bold);
        for (const SearchHit &h : hits) {
            auto *item = new QTreeWidgetItem(m_popup, QStringList{h.text, h.detail});
            item->setData(0, KeyRole, h.teamKey);
            item->setData(0, PlayerRole, h.kind == HitKind::Spieler ? h.number : -1);
            item->setToolTip(0, QStringLiteral("#%1").arg(h.number));
        }
    };
    group(QStringLiteral("Länder"), result.laender);
    group(QStringLiteral("Vereine"), result.vereine);
    group(QStringLiteral("Spieler"), result.spieler);
    m_popup->setCurrentItem(nullptr);
    move(1);
    m_popup->setMinimumWidth(width());
    m_popup->resize(std::max(width(), 420), std::min(320, m_popup->topLevelItemCount() * (fontMetrics().height() + 4) + 8));
    m_popup->move(mapToGlobal(QPoint(0, height())));
    m_popup->show();
}

// To the next hit up or down, over the headings.
void SearchField::move(int step)
{
    const int count = m_popup->topLevelItemCount();
    int row = m_popup->currentItem() ? m_popup->indexOfTopLevelItem(m_popup->currentItem()) : (step > 0 ? -1 : count);
    for (row += step; row >= 0 && row < count; row += step) {
        QTreeWidgetItem *item = m_popup->topLevelItem(row);
        if (item->flags() & Qt::ItemIsSelectable) {
            m_popup->setCurrentItem(item);
            return;
        }
    }
}

void SearchField::open(QTreeWidgetItem *item)
{
    if (!item || !(item->flags() & Qt::ItemIsSelectable))
        return;
    m_popup->hide();
    openentity(m_shell, item->data(0, KeyRole).toString(), item->data(0, PlayerRole).toLongLong());
}

void SearchField::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Down: move(1); return;
    case Qt::Key_Up: move(-1); return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (m_popup->isVisible())
            open(m_popup->currentItem());
        else
            typed(text());
        return;
    case Qt::Key_Escape: m_popup->hide(); return;
    default: QLineEdit::keyPressEvent(event);
    }
}

void SearchField::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    // A click into the list takes no focus; anything else closes it.
    if (!m_popup->underMouse())
        m_popup->hide();
}

bool SearchField::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_popup && event->type() == QEvent::KeyPress) {
        keyPressEvent(static_cast<QKeyEvent *>(event));
        return true;
    }
    return QLineEdit::eventFilter(watched, event);
}

SearchField *installsearch(Shell &shell)
{
    auto *window = qobject_cast<QMainWindow *>(shell.window());
    QToolBar *bar = window ? window->findChild<QToolBar *>() : nullptr;
    auto *field = new SearchField(shell, bar ? static_cast<QWidget *>(bar) : window);
    if (bar) {
        bar->addSeparator();
        bar->addWidget(field);
    }
    auto *focus = new QShortcut(QKeySequence(QStringLiteral("Ctrl+F")), window ? static_cast<QWidget *>(window) : field);
    focus->setObjectName(QStringLiteral("suchekurz"));
    QObject::connect(focus, &QShortcut::activated, field, [field] {
        field->setFocus(Qt::ShortcutFocusReason);
        field->selectAll();
    });
    return field;
}

} // namespace zorbo
