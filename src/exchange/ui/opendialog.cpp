#include "exchange/ui/opendialog.h"

#include "core/teamlists.h"
#include "exchange/teamfilehints.h"

#include <QComboBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace zorbo {

OpenDialog::OpenDialog(TeamLists *lists, QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmopen"));
    setWindowTitle(QStringLiteral("Öffnen..."));
    auto *layout = new QVBoxLayout(this);
    m_lblverein = new QLabel(this);
    m_lblverein->setObjectName(QStringLiteral("lblverein"));
    layout->addWidget(m_lblverein);

    const char *captions[2] = {" Neuer Verein", "Verein  ersetzen"};
    const char *tips[2] = {"Erstellt ein neuen Team im ausgewählten Land", "Ersetzt den ausgewählten Verein"};
    for (int i = 0; i < 2; ++i) {
        m_optnew[i] = new QRadioButton(QString::fromUtf8(captions[i]), this);
        m_optnew[i]->setObjectName(QStringLiteral("optnew(%1)").arg(i));
        m_optnew[i]->setToolTip(QString::fromUtf8(tips[i]));
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
    layout->addWidget(m_cboland);
    layout->addWidget(m_cboverein);
    connect(m_cboland, &QComboBox::currentIndexChanged, this, &OpenDialog::updateok);
    connect(m_cboverein, &QComboBox::currentIndexChanged, this, &OpenDialog::updateok);

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

void OpenDialog::setfile(const QString &path)
{
    m_path = path;
    m_lblverein->setText(QFileInfo(path).completeBaseName());
    for (QRadioButton *o : m_optnew)
        o->setChecked(false);
    m_cboland->setCurrentIndex(-1);
    m_cboverein->setCurrentIndex(-1);
    m_cboland->hide();
    m_cboverein->hide();
    updateok();
}

void OpenDialog::optnew_Click(int index)
{
    m_optnew[index]->setChecked(true);
    m_optnew[1 - index]->setChecked(false);
    m_cboland->setVisible(index == 0);
    m_cboverein->setVisible(index == 1);
    const TeamFileHints hints = readteamfilehints(m_path);
    if (index == 0 && m_cboland->currentIndex() < 0 && m_cboland->count() > 0)
        m_cboland->setCurrentIndex(std::max(0, m_cboland->findText(hints.nation)));
    if (index == 1 && m_cboverein->count() > 0) {
        QStringList entries;
        for (int i = 0; i < m_cboverein->count(); ++i)
            entries << m_cboverein->itemText(i);
        m_cboverein->setCurrentIndex(teamfileclub(entries, hints));
    }
    updateok();
}

bool OpenDialog::newclub() const
{
    return m_optnew[0]->isChecked();
}

QString OpenDialog::country() const
{
    return m_cboland->currentText();
}

qint64 OpenDialog::club() const
{
    const QVariant data = m_cboverein->currentData(Qt::UserRole);
    return data.isValid() ? data.toLongLong() : -1;
}

void OpenDialog::updateok()
{
    const bool chosen = (m_optnew[0]->isChecked() && m_cboland->currentIndex() >= 0)
                        || (m_optnew[1]->isChecked() && m_cboverein->currentIndex() >= 0);
    m_btnok->setEnabled(chosen);
}

} // namespace zorbo
