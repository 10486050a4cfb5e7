#include "editor/ui/bulkeditdialog.h"

#include "core/settings.h"
#include "core/ui/dialogs.h"
#include "core/ui/shell.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QLocale>
#include <QRadioButton>
#include <QSpinBox>

namespace zorbo {

namespace {

const PlayerEdit::Kind kinds[] = {PlayerEdit::Set, PlayerEdit::StepStrength, PlayerEdit::StepMaximum,
                                  PlayerEdit::Renumber, PlayerEdit::NewFaces, PlayerEdit::ClearTalents};
const char *const kindTexts[] = {"Feld setzen", "Stärke ändern", "Maxstärke ändern", "Rückennummern neu (je Verein 1 bis n)",
                                 "Neue Gesichter", "Talente löschen"};

} // namespace

BulkEditDialog::BulkEditDialog(Shell &shell, const QList<qint64> &selected, const QList<qint64> &filtered, QWidget *parent)
    : PreviewDialog(shell, parent), m_selected(selected), m_filtered(filtered),
      m_faces(shell.settings().folder(GesichtFolder))
{
    setObjectName(QStringLiteral("frmauswahlbearbeiten"));
    setWindowTitle(QStringLiteral("Auswahl bearbeiten"));
    const QLocale german(QLocale::German, QLocale::Germany);
    m_onSelected = new QRadioButton(QStringLiteral("Ausgewählte Zeilen (%1)").arg(german.toString(selected.size())), this);
    m_onSelected->setObjectName(QStringLiteral("optauswahl"));
    m_onFiltered = new QRadioButton(QStringLiteral("Alle, die der Filter zeigt (%1)").arg(german.toString(filtered.size())), this);
    m_onFiltered->setObjectName(QStringLiteral("optfilter"));
    (selected.isEmpty() ? m_onFiltered : m_onSelected)->setChecked(true);
    m_onSelected->setEnabled(!selected.isEmpty());

    m_kind = new QComboBox(this);
    m_kind->setObjectName(QStringLiteral("cboaenderung"));
    for (const char *t : kindTexts)
        m_kind->addItem(QString::fromUtf8(t));
    m_field = new QComboBox(this);
    m_field->setObjectName(QStringLiteral("cbofeld"));
    for (const char *f : {"Land", "Position", "Resteinsätze", "Größe", "Vorname"})
        m_field->addItem(QString::fromUtf8(f));
    m_value = new QLineEdit(this);
    m_value->setObjectName(QStringLiteral("txtwert"));
    m_steps = new QSpinBox(this);
    m_steps->setObjectName(QStringLiteral("spnschritte"));
    m_steps->setRange(-12, 12);
    m_steps->setValue(1);
    auto *form = new QFormLayout;
    form->addRow(QStringLiteral("Spieler:"), m_onSelected);
    form->addRow(QString(), m_onFiltered);
    form->addRow(QStringLiteral("Änderung:"), m_kind);
    form->addRow(QStringLiteral("Feld:"), m_field);
    form->addRow(QStringLiteral("Wert:"), m_value);
    form->addRow(QStringLiteral("Um halbe Sterne:"), m_steps);
    m_form = form;
    arrange(form, nullptr);

    connect(m_onSelected, &QRadioButton::toggled, this, &BulkEditDialog::refresh);
    connect(m_kind, &QComboBox::currentIndexChanged, this, &BulkEditDialog::refresh);
    connect(m_field, &QComboBox::currentIndexChanged, this, &BulkEditDialog::refresh);
    connect(m_value, &QLineEdit::textChanged, this, &BulkEditDialog::refresh);
    connect(m_steps, &QSpinBox::valueChanged, this, &BulkEditDialog::refresh);
    refresh();
}

PlayerEdit BulkEditDialog::edit() const
{
    const PlayerEdit::Kind kind = kinds[std::max(0, m_kind->currentIndex())];
    switch (kind) {
    case PlayerEdit::Set: return PlayerEdit::set(m_field->currentText(), m_value->text());
    case PlayerEdit::StepStrength: return PlayerEdit::strength(m_steps->value());
    case PlayerEdit::StepMaximum: return PlayerEdit::maximum(m_steps->value());
    default: return PlayerEdit::of(kind);
    }
}

QList<qint64> BulkEditDialog::players() const
{
    return m_onSelected->isChecked() ? m_selected : m_filtered;
}

void BulkEditDialog::refresh()
{
    const PlayerEdit e = edit();
    m_form->setRowVisible(m_field, e.kind == PlayerEdit::Set);
    m_form->setRowVisible(m_value, e.kind == PlayerEdit::Set);
    m_form->setRowVisible(m_steps, e.kind == PlayerEdit::StepStrength || e.kind == PlayerEdit::StepMaximum);
    const QList<qint64> chosen = players();
    m_preview = m_shell.run([&](Database &db) { return bulkedit(db, chosen, {e}, m_faces, false, 50); },
                            QStringLiteral("Vorschau"));
    const QLocale german(QLocale::German, QLocale::Germany);
    showpreview(m_preview.result, m_preview.preview, m_preview.changed,
                m_preview.changed == 0 ? QStringLiteral("Keine Änderung.")
                                       : QStringLiteral("%1 Spieler ändern sich%2.")
                                             .arg(german.toString(m_preview.changed),
                                                  m_preview.changed > m_preview.preview.size()
                                                      ? QStringLiteral("; die Liste zeigt die ersten %1").arg(m_preview.preview.size())
                                                      : QString()));
}

void BulkEditDialog::apply()
{
    refresh();
    if (!applicable())
        return;
    const auto busy = m_shell.busy(QStringLiteral("Bearbeite Spieler..."));
    const BulkEditResult r = runbulkedit(*m_shell.world(), players(), {edit()}, m_faces);
    finish(r.result, r.findings);
}

} // namespace zorbo
