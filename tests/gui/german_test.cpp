// Qt's own dialogs speak German, whatever the system's language, and the
// title is the program's with nothing put behind it.
#include <QFileDialog>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>
#include <gtest/gtest.h>

TEST(German, MessageBoxButtonsAndTheFileDialogSpeakGerman)
{
    QMessageBox box(QMessageBox::Question, "Programmende", "Programm beenden", QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(box.button(QMessageBox::Yes)->text().remove('&'), "Ja");
    EXPECT_EQ(box.button(QMessageBox::No)->text().remove('&'), "Nein");

    QFileDialog dialog(nullptr, "Speichern...");
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    EXPECT_EQ(dialog.labelText(QFileDialog::FileName).remove('&'), "Dateiname:");
    EXPECT_EQ(dialog.labelText(QFileDialog::Reject).remove('&'), "Abbrechen");
}

TEST(German, TheTitleGetsNoSecondName)
{
    // The window system puts a display name, when one is set, behind every
    // title; without one the application name stands for it.
    EXPECT_EQ(QGuiApplication::applicationDisplayName(), QGuiApplication::applicationName());
}
