#include "resources/ui/crestpicker.h"

#include "resources/crestfiles.h"
#include "resources/ui/crestgridmodel.h"
#include "core/ui/crestview.h"
#include "resources/ui/crestimage.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPainter>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>

namespace zorbo {

namespace {

// A crest fills its cell; its number stands in the lower right corner over it.
class CrestCellDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        if (option.state & QStyle::State_Selected)
            painter->fillRect(option.rect, option.palette.highlight());
        const QPixmap pixmap = index.data(Qt::DecorationRole).value<QPixmap>();
        if (!pixmap.isNull()) {
            QSize size = pixmap.size();
            size.scale(option.rect.size() - QSize(6, 6), Qt::KeepAspectRatio);
            QRect target(QPoint(), size);
            target.moveCenter(option.rect.center());
            painter->drawPixmap(target, pixmap);
        }
        const QString text = index.data(Qt::DisplayRole).toString();
        if (text.isEmpty())
            return;
        const QRect box = option.fontMetrics.boundingRect(text).adjusted(-2, 0, 2, 0);
        QRect corner(QPoint(), box.size());
        corner.moveBottomRight(option.rect.bottomRight() - QPoint(1, 1));
        painter->fillRect(corner, QColor(255, 255, 255, 200));
        painter->setPen(Qt::black);
        painter->drawText(corner, Qt::AlignCenter, text);
    }
};

} // namespace

CrestPicker::CrestPicker(const QString &wappenFolder, QWidget *parent) : QDialog(parent), m_folder(wappenFolder)
{
    setObjectName(QStringLiteral("frmwappenauswahl"));
    setWindowTitle(QStringLiteral("Wappenauswahl"));
    setModal(true);

    auto *frame1 = new QGroupBox(QStringLiteral("Wappenauswahl"), this);
    frame1->setObjectName(QStringLiteral("Frame1"));
    m_model = new CrestGridModel(wappenFolder, this);
    m_grid = new QTableView(frame1);
    m_grid->setObjectName(QStringLiteral("flxgrdwappen"));
    m_grid->setModel(m_model);
    m_grid->horizontalHeader()->hide();
    m_grid->verticalHeader()->hide();
    m_grid->horizontalHeader()->setDefaultSectionSize(CrestGridModel::CellSize);
    m_grid->verticalHeader()->setDefaultSectionSize(CrestGridModel::CellSize);
    m_grid->setItemDelegate(new CrestCellDelegate(m_grid));
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setFixedSize(CrestGridModel::Columns * CrestGridModel::CellSize + 18, 7 * CrestGridModel::CellSize);
    (new QVBoxLayout(frame1))->addWidget(m_grid);
    connect(m_grid, &QTableView::clicked, this, &CrestPicker::flxgrdwappen_Click);

    auto *frame2 = new QGroupBox(QStringLiteral("ausgewähltes Wappen"), this);
    frame2->setObjectName(QStringLiteral("Frame2"));
    m_chosen = new CrestView(frame2);
    m_chosen->setFixedSize(70, 70);
    (new QVBoxLayout(frame2))->addWidget(m_chosen);

    auto *ok = new QPushButton(QStringLiteral("Übernehmen"), this);
    ok->setObjectName(QStringLiteral("btnok"));
    ok->setDefault(true);
    auto *cancel = new QPushButton(QStringLiteral("Abbrechen"), this);
    cancel->setObjectName(QStringLiteral("btnabbrechen"));
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto *picture = new QPushButton(QStringLiteral("Wappen aus &Bild..."), this);
    picture->setObjectName(QStringLiteral("btnbild"));
    connect(picture, &QPushButton::clicked, this, [this] {
        const int n = m_frompicture ? m_frompicture(m_wappennr.toInt()) : -1;
        if (n < 0)
            return;
        m_model->forget(n);
        QString path;
        ensurecrest(m_folder, n, path);
        m_chosen->setImage(crestimage(path));
        m_wappennr = QString::number(n);
    });

    auto *side = new QVBoxLayout;
    side->addWidget(frame2);
    side->addWidget(picture);
    side->addStretch(1);
    side->addWidget(ok);
    side->addWidget(cancel);
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(frame1);
    layout->addLayout(side);
}

void CrestPicker::prepare(const QImage &image, const QString &wappennr)
{
    m_chosen->setImage(image);
    m_wappennr = wappennr;
}

const QImage &CrestPicker::image() const
{
    return m_chosen->image();
}

void CrestPicker::flxgrdwappen_Click(const QModelIndex &index)
{
    const int n = CrestGridModel::crest(index);
    if (n < 0)
        return;
    QString path;
    ensurecrest(m_folder, n, path);
    m_chosen->setImage(crestimage(path));
    m_wappennr = QString::number(n);
}

} // namespace zorbo
