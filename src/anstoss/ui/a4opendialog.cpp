#include "anstoss/ui/a4opendialog.h"

#include "anstoss/aetfile.h"
#include "anstoss/preselect.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace zorbo {

A4OpenDialog::A4OpenDialog(TeamLists *lists, QWidget *parent)
    : TargetDialog(QStringLiteral("frma4open"), {"Freie Spieler", "Verein  ersetzen"},
                   {"Importiert alle Spiele in 'Freie Spieler'", "Ersetzt den ausgewählten Verein"}, lists, parent)
{
    m_cboland->hide();
    connect(m_cboverein, &QComboBox::currentIndexChanged, this, &A4OpenDialog::updateok);
}

void A4OpenDialog::setfile(const QString &path, const QString &clubname, FileEncoding encoding)
{
    m_path = path;
    m_encoding = encoding;
    m_lblverein->setText(clubname);
    clearoptions();
    m_cboverein->setCurrentIndex(-1);
    m_cboverein->setEnabled(false);
    m_btnok->setEnabled(false);
}

void A4OpenDialog::optnew_Click(int index)
{
    choose(index);
    m_cboland->hide();
    m_cboverein->show();
    m_cboverein->setEnabled(index == 1);
    if (index == 0) {
        m_btnok->setEnabled(true);
        return;
    }
    m_btnok->setEnabled(false);
    if (m_cboverein->count() == 0)
        return;
    AetFile file;
    QString name, stadt, land;
    if (file.load(m_path, AetKind::Club, m_encoding)) {
        land = file.value(QStringLiteral("Team"), QStringLiteral("Land"));
        name = file.value(QStringLiteral("Team"), QStringLiteral("Name"));
        stadt = file.value(QStringLiteral("Team"), QStringLiteral("Stadt"));
    }
    m_cboverein->setCurrentIndex(-1);
    m_cboverein->setCurrentIndex(a4preselect(clubentries(), name, stadt, land));
    updateok();
}

bool A4OpenDialog::freeplayers() const
{
    return m_optnew[0]->isChecked();
}

void A4OpenDialog::updateok()
{
    if (m_optnew[1]->isChecked())
        m_btnok->setEnabled(m_cboverein->currentIndex() >= 0);
}

} // namespace zorbo
