#include "core/ui/dialogs.h"

#include "core/ui/findingsdialog.h"

#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

namespace zorbo {

bool Dialogs::question(QWidget *parent, const QString &title, const QString &text)
{
    return QMessageBox::question(parent, title, text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
           == QMessageBox::Yes;
}

int Dialogs::choose(QWidget *parent, const QString &title, const QString &text, const QStringList &buttons)
{
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::NoButton, parent);
    QList<QAbstractButton *> added;
    for (const QString &caption : buttons)
        added << box.addButton(caption, added.isEmpty() ? QMessageBox::AcceptRole : QMessageBox::ActionRole);
    if (!added.isEmpty()) {
        box.setDefaultButton(qobject_cast<QPushButton *>(added.first()));
        box.setEscapeButton(added.last()); // Escape answers as the last button, mostly "Abbrechen"
    }
    box.exec();
    return int(added.indexOf(box.clickedButton()));
}

int Dialogs::choosenodefault(QWidget *parent, const QString &title, const QString &text, const QStringList &buttons)
{
    QMessageBox box(QMessageBox::Warning, title, text, QMessageBox::NoButton, parent);
    QList<QAbstractButton *> added;
    for (const QString &caption : buttons) {
        auto *button = box.addButton(caption, QMessageBox::ActionRole);
        button->setAutoDefault(false);
        added << button;
    }
    if (!added.isEmpty())
        box.setEscapeButton(added.last());
    box.exec();
    return int(added.indexOf(box.clickedButton()));
}

QString Dialogs::text(QWidget *parent, const QString &title, const QString &label)
{
    // Wide enough for its title and a name of some words.
    QInputDialog dialog(parent);
    dialog.setWindowTitle(title);
    dialog.setLabelText(label);
    dialog.setInputMode(QInputDialog::TextInput);
    dialog.setMinimumWidth(dialog.fontMetrics().horizontalAdvance(title) + 160);
    return dialog.exec() == QDialog::Accepted ? dialog.textValue() : QString();
}

void Dialogs::information(QWidget *parent, const QString &title, const QString &text)
{
    QMessageBox::information(parent, title, text);
}

void Dialogs::warning(QWidget *parent, const QString &title, const QString &text)
{
    QMessageBox::warning(parent, title, text);
}

void Dialogs::report(QWidget *parent, const QString &title, const QString &text, const QList<Finding> &findings,
                     bool failed)
{
    if (findings.isEmpty()) {
        if (failed)
            warning(parent, title, text);
        else
            information(parent, title, text);
        return;
    }
    FindingsDialog dialog(title, text, findings, failed, parent);
    dialog.exec();
}

namespace {

QString askfile(QWidget *parent, bool save, const QString &title, const QString &start, const QStringList &filters,
                int *filter)
{
    QString chosen = filters.value(filter ? *filter : 0);
    const QString joined = filters.join(QStringLiteral(";;"));
    const QString file = save ? QFileDialog::getSaveFileName(parent, title, start, joined, &chosen)
                              : QFileDialog::getOpenFileName(parent, title, start, joined, &chosen);
    if (filter)
        *filter = std::max(0, int(filters.indexOf(chosen)));
    return file;
}

} // namespace

QString Dialogs::openfile(QWidget *parent, const QString &title, const QString &start, const QStringList &filters,
                          int *filter)
{
    return askfile(parent, false, title, start, filters, filter);
}

QString Dialogs::savefile(QWidget *parent, const QString &title, const QString &start, const QStringList &filters,
                          int *filter)
{
    return askfile(parent, true, title, start, filters, filter);
}

} // namespace zorbo
