#include "core/ui/targetdialog.h"

#include "core/teamlists.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace zorbo {

TargetDialog::TargetDialog(const QString &name, const std::array<const char *, 2> &captions,
                           const std::array<const char *, 2> &tips, TeamLists *lists, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(name);
    setWindowTitle(QStringLiteral("Öffnen..."));
    auto *layout = new QVBoxLayout(this);
    m_lblverein = new QLabel(this);
    m_lblverein->setObjectName(QStringLiteral("lblverein"));
    layout->addWidget(m_lblverein);

    for (int i = 0; i < 2; ++i) {
        m_optnew[i] = new QRadioButton(QString::fromUtf8(captions[size_t(i)]), this);
        m_optnew[i]->setObjectName(QStringLiteral("optnew(%1)").arg(i));
        m_optnew[i]->setToolTip(QString::fromUtf8(tips[size_t(i)]));
        m_optnew[i]->setAutoExclusive(false); // the dialog starts with neither chosen
        layout->addWidget(m_optnew[i]);
        connect(m_optnew[i], &QRadioButton::clicked, this, [this, i] { optnew_Click(i); });
    }
    m_cboland = new QComboBox(this);
    m_cboland->setObjectName(QStringLiteral("cboland"));
    m_cboland->setModel(lists->laender());
    m_cboverein = new QComboBox(this);
    m_cboverein->setObjectName(QStringLiteral("cboverein"));
    m_cboverein->setModel(lists->vereine());
    // As wide as their longest entry, not as the file's name.
    for (QComboBox *list : {m_cboland, m_cboverein})
        list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    layout->addWidget(m_cboland);
    layout->addWidget(m_cboverein);

    auto *buttons = new QHBoxLayout;
    m_btnok = new QPushButton(QStringLiteral("Übernehmen"), this);
    m_btnok->setObjectName(QStringLiteral("btnok"));
    auto *cancel = new QPushButton(QStringLiteral("Abbrechen"), this);
    cancel->setObjectName(QStringLiteral("btnabbrechen"));
    buttons->addWidget(m_btnok);
    buttons->addWidget(cancel);
    layout->addLayout(buttons);
    connect(m_btnok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

qint64 TargetDialog::club() const
{
    const QVariant data = m_cboverein->currentData(Qt::UserRole);
    return data.isValid() ? data.toLongLong() : -1;
}

void TargetDialog::clearoptions()
{
    for (QRadioButton *o : m_optnew)
        o->setChecked(false);
}

void TargetDialog::choose(int index)
{
    m_optnew[index]->setChecked(true);
    m_optnew[1 - index]->setChecked(false);
}

QStringList TargetDialog::clubentries() const
{
    QStringList entries;
    for (int i = 0; i < m_cboverein->count(); ++i)
        entries << m_cboverein->itemText(i);
    return entries;
}

} // namespace zorbo
