#include "editor/ui/newentrydialog.h"

#include "core/schema.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace zorbo {

NewEntryDialog::NewEntryDialog(QAbstractItemModel *laender, QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmneu"));
    setWindowTitle(QStringLiteral("Neu..."));
    setModal(true);

    const QString captions[2] = {QStringLiteral("Land"), QStringLiteral("Verein")};
    const QString tips[2] = {QStringLiteral("Erstellt ein neues Land ohne Spieler"),
                             QStringLiteral("Erstellt einen neuen Verein mit 20 Spielern")};
    auto *options = new QHBoxLayout;
    for (int i = 0; i < 2; ++i) {
        m_opt[i] = new QRadioButton(captions[i], this);
        m_opt[i]->setObjectName(QStringLiteral("optnew(%1)").arg(i));
        m_opt[i]->setToolTip(tips[i]);
        connect(m_opt[i], &QRadioButton::clicked, this, [this, i] { optnew_Click(i); });
        options->addWidget(m_opt[i]);
    }

    m_kontinent = new QComboBox(this);
    m_kontinent->setObjectName(QStringLiteral("cbokontinent"));
    m_kontinent->addItems(kontinente());
    m_kontinent->setCurrentIndex(-1);
    m_land = new QComboBox(this);
    m_land->setObjectName(QStringLiteral("cboland"));
    m_land->setModel(laender);
    m_land->setCurrentIndex(-1);
    connect(m_kontinent, &QComboBox::currentIndexChanged, this, &NewEntryDialog::updateok);
    connect(m_land, &QComboBox::currentIndexChanged, this, &NewEntryDialog::updateok);

    m_ok = new QPushButton(QStringLiteral("Übernehmen"), this);
    m_ok->setObjectName(QStringLiteral("btnok"));
    m_ok->setDefault(true);
    auto *cancel = new QPushButton(QStringLiteral("Abbrechen"), this);
    cancel->setObjectName(QStringLiteral("btnabbrechen"));
    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_ok);
    buttons->addWidget(cancel);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(options);
    layout->addWidget(m_kontinent);
    layout->addWidget(m_land);
    layout->addLayout(buttons);

    m_opt[Verein]->setChecked(true);
    optnew_Click(Verein);
}

void NewEntryDialog::optnew_Click(int index)
{
    m_opt[index]->setChecked(true);
    const bool land = index == Land;
    m_kontinent->setVisible(land);
    m_land->setVisible(!land);
    QComboBox *list = land ? m_kontinent : m_land;
    if (list->currentIndex() < 0 && list->count() > 0)
        list->setCurrentIndex(0);
    updateok();
}

NewEntryDialog::Kind NewEntryDialog::kind() const
{
    return m_opt[Land]->isChecked() ? Land : Verein;
}

QString NewEntryDialog::choice() const
{
    return kind() == Land ? m_kontinent->currentText() : m_land->currentText();
}

void NewEntryDialog::updateok()
{
    m_ok->setEnabled((kind() == Land ? m_kontinent : m_land)->currentIndex() >= 0);
}

} // namespace zorbo
