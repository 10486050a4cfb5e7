#include "editor/ui/csvimportdialog.h"

#include "core/ui/dialogs.h"
#include "core/ui/shell.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QLocale>

namespace zorbo {

CsvImportDialog::CsvImportDialog(Shell &shell, const QString &path, QWidget *parent)
    : PreviewDialog(shell, parent), m_path(path)
{
    setObjectName(QStringLiteral("frmcsvimport"));
    setWindowTitle(QStringLiteral("CSV importieren: %1").arg(QFileInfo(path).fileName()));
    m_create = new QCheckBox(QStringLiteral("neue Spieler anlegen"), this);
    m_create->setObjectName(QStringLiteral("chkneu"));
    arrange(nullptr, m_create);
    connect(m_create, &QCheckBox::toggled, this, &CsvImportDialog::refresh);
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
    const QLocale german(QLocale::German, QLocale::Germany);
    showpreview(m_preview.result, m_preview.preview, m_preview.changed,
                m_preview.changed == 0 ? QStringLiteral("Keine Änderung: die Datei stimmt mit der Welt überein.")
                                       : QStringLiteral("%1 Spieler ändern sich, davon %2 neu.")
                                             .arg(german.toString(m_preview.changed), german.toString(m_preview.created)));
}

void CsvImportDialog::apply()
{
    refresh();
    if (!applicable())
        return;
    const auto busy = m_shell.busy(QStringLiteral("Lese CSV..."));
    const CsvImport r = runplayercsvimport(*m_shell.world(), m_path, m_options);
    finish(r.result, r.findings);
}

} // namespace zorbo
