#include "anstoss/ui/a4opendialog.h"

#include "anstoss/aetfile.h"
#include "anstoss/preselect.h"
#include "core/teamlists.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace zorbo {

A4OpenDialog::A4OpenDialog(TeamLists *lists, QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frma4open"));
    setWindowTitle(QStringLiteral("Öffnen..."));
    auto *layout = new QVBoxLayout(this);
    m_lblverein = new QLabel(this);
    m_lblverein->setObjectName(QStringLiteral("lblverein"));
    layout->addWidget(m_lblverein);

    const char *captions[2] = {"Freie Spieler", "Verein  ersetzen"};
    const char *tips[2] = {"Importiert alle Spiele in 'Freie Spieler'", "Ersetzt den ausgewählten Verein"};
    for (int i = 0; i < 2; ++i) {
        m_optnew[i] = new QRadioButton(QString::fromUtf8(captions[i]), this);
        m_optnew[i]->setObjectName(QStringLiteral("optnew(%1)").arg(i));
        m_optnew[i]->setToolTip(QString::fromUtf8(tips[i]));
        m_optnew[i]->setAutoExclusive(false); // the dialog starts with neither chosen
        layout->addWidget(m_optnew[i]);
        connect(m_optnew[i], &QRadioButton::clicked, this, [this, i] { optnew_Click(i); });
    }
    m_cboverein = new QComboBox(this);
    m_cboverein->setObjectName(QStringLiteral("cboverein"));
    m_cboverein->setModel(lists->vereine());
    m_cboland = new QComboBox(this);
    m_cboland->setObjectName(QStringLiteral("cboland"));
    m_cboland->setModel(lists->laender());
    m_cboland->hide();
    layout->addWidget(m_cboverein);
    layout->addWidget(m_cboland);
    connect(m_cboverein, &QComboBox::currentIndexChanged, this, &A4OpenDialog::updateok);

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

void A4OpenDialog::setfile(const QString &path, const QString &clubname)
{
    m_path = path;
    m_lblverein->setText(clubname);
    for (QRadioButton *o : m_optnew)
        o->setChecked(false);
    m_cboverein->setCurrentIndex(-1);
    m_cboverein->setEnabled(false);
    m_btnok->setEnabled(false);
}

void A4OpenDialog::optnew_Click(int index)
{
    m_optnew[index]->setChecked(true);
    m_optnew[1 - index]->setChecked(false);
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
    if (file.load(m_path)) {
        land = file.value(QStringLiteral("Team"), QStringLiteral("Land"));
        name = file.value(QStringLiteral("Team"), QStringLiteral("Name"));
        stadt = file.value(QStringLiteral("Team"), QStringLiteral("Stadt"));
    }
    QStringList entries;
    for (int i = 0; i < m_cboverein->count(); ++i)
        entries << m_cboverein->itemText(i);
    m_cboverein->setCurrentIndex(-1);
    m_cboverein->setCurrentIndex(a4preselect(entries, name, stadt, land));
    updateok();
}

bool A4OpenDialog::freeplayers() const
{
    return m_optnew[0]->isChecked();
}

qint64 A4OpenDialog::club() const
{
    const QVariant data = m_cboverein->currentData(Qt::UserRole);
    return data.isValid() ? data.toLongLong() : -1;
}

void A4OpenDialog::updateok()
{
    if (m_optnew[1]->isChecked())
        m_btnok->setEnabled(m_cboverein->currentIndex() >= 0);
}

} // namespace zorbo
