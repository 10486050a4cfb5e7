#include "editor/ui/csvimportdialog.h"

#include "core/ui/dialogs.h"
#include "core/ui/shell.h"
#include "editor/ui/changelist.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

namespace zorbo {

CsvImportDialog::CsvImportDialog(Shell &shell, const QString &path, QWidget *parent)
    : QDialog(parent), m_shell(shell), m_path(path)
{
    setObjectName(QStringLiteral("frmcsvimport"));
    setWindowTitle(QStringLiteral("CSV importieren: %1").arg(QFileInfo(path).fileName()));
    m_create = new QCheckBox(QStringLiteral("neue Spieler anlegen"), this);
    m_create->setObjectName(QStringLiteral("chkneu"));
    m_list = new ChangeList(this);
    m_summary = new QLabel(this);
    m_summary->setObjectName(QStringLiteral("lblvorschau"));
    m_summary->setWordWrap(true);
    auto *buttons = new QDialogButtonBox(this);
    m_apply = buttons->addButton(QStringLiteral("Übernehmen"), QDialogButtonBox::AcceptRole);
    m_apply->setObjectName(QStringLiteral("btnuebernehmen"));
    buttons->addButton(QStringLiteral("Abbrechen"), QDialogButtonBox::RejectRole)->setObjectName(QStringLiteral("btnabbrechen"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_summary);
    layout->addWidget(m_create);
    layout->addWidget(buttons);
    connect(m_create, &QCheckBox::toggled, this, &CsvImportDialog::refresh);
    connect(buttons, &QDialogButtonBox::accepted, this, &CsvImportDialog::apply);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    refresh();
    if (!m_preview.result.ok && m_preview.result.message.contains(QStringLiteral("Windows-1252"))) {
        m_readable = m_shell.dialogs().question(parent, windowTitle(),
                                                QStringLiteral("%1 ist keine UTF-8-Datei. Als Windows-1252 lesen?")
                                                    .arg(QFileInfo(path).fileName()));
        m_options.encoding = FileEncoding::Cp1252;
        refresh();
    }
}

void CsvImportDialog::refresh()
{
    m_options.createPlayers = m_create->isChecked();
    m_preview = m_shell.run([&](Database &db) { return importplayercsv(db, m_path, m_options, false); },
                            QStringLiteral("CSV-Import"));
    m_list->show(m_preview.preview);
    const QLocale german(QLocale::German, QLocale::Germany);
    m_summary->setText(!m_preview.result.ok ? m_preview.result.message
                       : m_preview.changed == 0
                           ? QStringLiteral("Keine Änderung: die Datei stimmt mit der Welt überein.")
                           : QStringLiteral("%1 Spieler ändern sich, davon %2 neu.")
                                 .arg(german.toString(m_preview.changed), german.toString(m_preview.created)));
    m_apply->setEnabled(m_preview.result.ok && m_preview.changed > 0);
}

void CsvImportDialog::apply()
{
    refresh();
    if (!m_apply->isEnabled())
        return;
    const auto busy = m_shell.busy(QStringLiteral("Lese CSV..."));
    const CsvImport r = runplayercsvimport(*m_shell.world(), m_path, m_options);
    if (!r.result.ok) {
        m_shell.dialogs().report(this, windowTitle(), r.result.message, r.findings, true);
        return;
    }
    m_shell.status(r.result.message);
    accept();
}

} // namespace zorbo
