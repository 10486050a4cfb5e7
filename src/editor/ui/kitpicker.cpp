#include "editor/ui/kitpicker.h"

#include "editor/ui/kitgridmodel.h"
#include "editor/ui/kittarget.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace zorbo {

namespace {

constexpr int cellWidth = 61;
constexpr int cellHeight = 70;

} // namespace

KitPicker::KitPicker(const QString &kitFolder, ColourLookup colours, QWidget *parent)
    : QDialog(parent), m_colours(std::move(colours))
{
    setObjectName(QStringLiteral("frmtrikotauswahl"));
    setWindowTitle(QStringLiteral("Trikotauswahl"));
    setModal(true);

    auto *frame = new QGroupBox(QStringLiteral("Trikotauswahl"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    m_model = new KitGridModel(kitFolder, this);
    m_grid = new QTableView(frame);
    m_grid->setObjectName(QStringLiteral("flxgrdtrikot"));
    m_grid->setModel(m_model);
    m_grid->horizontalHeader()->hide();
    m_grid->verticalHeader()->hide();
    m_grid->horizontalHeader()->setDefaultSectionSize(cellWidth);
    m_grid->verticalHeader()->setDefaultSectionSize(cellHeight);
    m_grid->setIconSize(QSize(cellWidth - 2, cellHeight - 2));
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setSpan(KitGridModel::Rows - 1, KitGridModel::CaptionColumn, 1, 3);
    m_grid->setFixedSize(KitGridModel::Columns * cellWidth + 16, 490 + 4);
    m_grid->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_grid->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    (new QVBoxLayout(frame))->addWidget(m_grid);
    connect(m_grid, &QTableView::clicked, this, &KitPicker::flxgrdtrikot_Click);

    auto *ok = new QPushButton(QStringLiteral("Übernehmen"), this);
    ok->setObjectName(QStringLiteral("btnok"));
    ok->setDefault(true);
    auto *cancel = new QPushButton(QStringLiteral("Abbrechen"), this);
    cancel->setObjectName(QStringLiteral("btnabbrechen"));
    connect(ok, &QPushButton::clicked, this, &KitPicker::btnok_Click);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addLayout(buttons);
}

void KitPicker::prepare(KitTarget *target, int slot)
{
    m_target = target;
    m_slot = slot;
    m_model->setChosen(target ? target->kitart(slot) : 0);
    m_grid->setCurrentIndex(m_model->index(KitGridModel::Rows - 1, KitGridModel::Columns - 1));
}

void KitPicker::flxgrdtrikot_Click(const QModelIndex &index)
{
    const int art = KitGridModel::art(index);
    if (art < 0)
        return;
    m_model->setChosen(art);
    m_grid->setCurrentIndex(m_model->index(KitGridModel::Rows - 1, KitGridModel::Columns - 1));
}

void KitPicker::btnok_Click()
{
    if (m_target)
        m_target->showkit(m_slot, m_model->chosen(), m_colours ? m_colours(m_model->chosen()) : std::nullopt);
    accept();
}

} // namespace zorbo
