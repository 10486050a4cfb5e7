#include "editor/ui/talentgrid.h"

#include "editor/ui/mergingheader.h"
#include "platform/database.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>

namespace zorbo {

namespace {

constexpr int RowHeight = 16;
constexpr int StateColumn = 16;

QTableWidgetItem *cell(const QString &text = QString())
{
    auto *item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    return item;
}

// The focus frame shows only on the state column, where a click does something
// the user may want to see as the current cell.
class FocusOnStateDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (index.column() != 1)
            option->state &= ~QStyle::State_HasFocus;
    }
};

} // namespace

TalentGrid::TalentGrid(QWidget *parent) : QTableWidget(0, 17, parent)
{
    setObjectName(QStringLiteral("flxgrdattribute"));
    setHorizontalHeader(new MergingHeader(this));
    setHorizontalHeaderLabels({QStringLiteral(" "), QStringLiteral(" "), QStringLiteral("Talent"),
                               QStringLiteral("Talent"), QStringLiteral("Voraus."), QStringLiteral("Voraus."),
                               QStringLiteral("Voraus."), QStringLiteral("Schutz"), QStringLiteral("Schutz"),
                               QStringLiteral("Schutz")});
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(RowHeight);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setIconSize(QSize(16, 16));
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    // Tab goes on to the next control rather than from cell to cell.
    setTabKeyNavigation(false);
    setItemDelegate(new FocusOnStateDelegate(this));
    const int widths[] = {16, 16, 125, 86, 16, 16, 16, 16, 16, 16};
    for (int c = 0; c < 10; ++c)
        setColumnWidth(c, widths[c]);
    for (int c = 10; c < 17; ++c)
        setColumnHidden(c, true);
    m_learned = QIcon(QStringLiteral(":/icons/erlernt.png"));
    m_locked = QIcon(QStringLiteral(":/icons/gesperrt.png"));
}

QSize TalentGrid::minimumSizeHint() const
{
    int width = 2 * frameWidth() + verticalScrollBar()->sizeHint().width();
    for (int c = 0; c < columnCount(); ++c)
        if (!isColumnHidden(c))
            width += columnWidth(c);
    return {width, 2 * frameWidth() + horizontalHeader()->sizeHint().height() + 6 * RowHeight};
}

void TalentGrid::load_attribute(Database &db, const QString &folder)
{
    setUpdatesEnabled(false);
    m_talents = readtalents(db);
    m_pictures.clear();
    for (int i = 0; i < m_talents.size(); ++i)
        m_pictures << QIcon(talentpicture(folder, i));
    setRowCount(int(m_talents.size()));
    for (int r = 0; r < m_talents.size(); ++r) {
        const Talent &t = m_talents[r];
        auto *own = cell();
        own->setIcon(m_pictures[r]);
        own->setToolTip(t.beschreibung);
        setItem(r, 0, own);
        setItem(r, 1, cell());
        auto *name = cell(t.name);
        name->setTextAlignment(Qt::AlignCenter);
        name->setToolTip(t.beschreibung);
        setItem(r, 2, name);
        auto *text = cell(t.beschreibung);
        text->setToolTip(t.beschreibung);
        setItem(r, 3, text);
        for (int j = 0; j < 6; ++j) {
            const int other = j < 3 ? t.voraus[size_t(j)] : t.schutz[size_t(j - 3)];
            auto *pic = cell();
            auto *number = cell();
            if (other >= 0 && other < m_pictures.size()) {
                pic->setIcon(m_pictures[other]);
                pic->setToolTip(m_talents[other].beschreibung);
                number->setText(QString::number(other));
            }
            setItem(r, 4 + j, pic);
            setItem(r, 10 + j, number);
        }
        setItem(r, StateColumn, cell(QStringLiteral("0")));
    }
    setUpdatesEnabled(true);
}

void TalentGrid::showtalente(const QString &erlernt, const QString &gesperrt, int art)
{
    m_states = TalentStates::fromlists(erlernt, gesperrt);
    const int group = art > 0 ? 1 : 0;
    if (group != m_group) {
        setUpdatesEnabled(false);
        for (int r = 0; r < rowCount(); ++r)
            setRowHidden(r, !talentshown(r, art));
        setUpdatesEnabled(true);
        m_group = group;
        ++m_layoutChanges;
    }
    for (int r = 0; r < rowCount(); ++r)
        showstate(r);
}

void TalentGrid::talentsum(QString &erlernt, QString &gesperrt) const
{
    m_states.talentsum(erlernt, gesperrt);
}

void TalentGrid::showstate(int row)
{
    const TalentStates::State s = m_states.state(row);
    QTableWidgetItem *pic = item(row, 1);
    pic->setIcon(s == TalentStates::Learned ? m_learned : s == TalentStates::Locked ? m_locked : QIcon());
    pic->setToolTip(s == TalentStates::Learned  ? QStringLiteral("Erlernt")
                    : s == TalentStates::Locked ? QStringLiteral("Gesperrt")
                                                : QString());
    item(row, StateColumn)->setText(QString::number(int(s) * (row + 1)));
}

void TalentGrid::setattribute(int row, int sign)
{
    m_states.setstate(row, TalentStates::State(sign));
    showstate(row);
}

void TalentGrid::mouseReleaseEvent(QMouseEvent *event)
{
    QTableWidget::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton)
        return;
    const QModelIndex at = indexAt(event->position().toPoint());
    if (!at.isValid() || at.column() > 1)
        return;
    const TalentStates::State next = m_states.step(at.row());
    setattribute(at.row(), int(next));
    setToolTip(item(at.row(), 1)->toolTip());
}

} // namespace zorbo
