#pragma once

#include "editor/playercsv.h"
#include "editor/ui/previewdialog.h"

class QCheckBox;

namespace zorbo {

// "CSV importieren": what the file would change, player by player and
// field by field, before "Übernehmen" writes it as one step of the history.
// A file that isn't UTF-8 is read as Windows-1252 when the user says so.
class CsvImportDialog : public PreviewDialog {
    Q_OBJECT

public:
    CsvImportDialog(Shell &shell, const QString &path, QWidget *parent = nullptr);

    // False when the user declined to read the file as Windows-1252.
    bool readable() const { return m_readable; }
    const CsvImport &preview() const { return m_preview; }
    void apply() override;

private:
    void refresh();

    QString m_path;
    CsvOptions m_options;
    bool m_readable = true;
    QCheckBox *m_create;
    CsvImport m_preview;
};

} // namespace zorbo
