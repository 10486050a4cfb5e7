#pragma once

#include "editor/bulkedit.h"
#include "editor/ui/previewdialog.h"

class QComboBox;
class QFormLayout;
class QLineEdit;
class QRadioButton;
class QSpinBox;

namespace zorbo {

// "Auswahl bearbeiten": one edit on the selected players or on all that the
// filter shows, with a preview of the first rows before and after and the
// number of players that change; "Übernehmen" makes it one step of the
// history.
class BulkEditDialog : public PreviewDialog {
    Q_OBJECT

public:
    BulkEditDialog(Shell &shell, const QList<qint64> &selected, const QList<qint64> &filtered, QWidget *parent = nullptr);

    // The edit the dialog shows.
    PlayerEdit edit() const;
    const BulkEditResult &preview() const { return m_preview; }
    void apply() override;

private:
    void refresh();
    QList<qint64> players() const;

    QList<qint64> m_selected, m_filtered;
    FacePictures m_faces;
    QRadioButton *m_onSelected, *m_onFiltered;
    QComboBox *m_kind, *m_field;
    QLineEdit *m_value;
    QSpinBox *m_steps;
    QFormLayout *m_form = nullptr;
    BulkEditResult m_preview;
};

} // namespace zorbo
