#include "exchange/ui/opendialog.h"

#include "exchange/teamfilehints.h"

#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace zorbo {

OpenDialog::OpenDialog(TeamLists *lists, QWidget *parent)
    : TargetDialog(QStringLiteral("frmopen"), {" Neuer Verein", "Verein  ersetzen"},
                   {"Erstellt ein neuen Team im ausgewählten Land", "Ersetzt den ausgewählten Verein"}, lists, parent)
{
    connect(m_cboland, &QComboBox::currentIndexChanged, this, &OpenDialog::updateok);
    connect(m_cboverein, &QComboBox::currentIndexChanged, this, &OpenDialog::updateok);
}

void OpenDialog::setfile(const QString &path)
{
    m_path = path;
    m_lblverein->setText(QFileInfo(path).completeBaseName());
    clearoptions();
    m_cboland->setCurrentIndex(-1);
    m_cboverein->setCurrentIndex(-1);
    m_cboland->hide();
    m_cboverein->hide();
    updateok();
}

void OpenDialog::optnew_Click(int index)
{
    choose(index);
    m_cboland->setVisible(index == 0);
    m_cboverein->setVisible(index == 1);
    const TeamFileHints hints = readteamfilehints(m_path);
    if (index == 0 && m_cboland->currentIndex() < 0 && m_cboland->count() > 0)
        m_cboland->setCurrentIndex(std::max(0, m_cboland->findText(hints.nation)));
    if (index == 1 && m_cboverein->count() > 0) {
        m_cboverein->setCurrentIndex(teamfileclub(clubentries(), hints));
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

void OpenDialog::updateok()
{
    const bool chosen = (m_optnew[0]->isChecked() && m_cboland->currentIndex() >= 0)
                        || (m_optnew[1]->isChecked() && m_cboverein->currentIndex() >= 0);
    m_btnok->setEnabled(chosen);
}

} // namespace zorbo
