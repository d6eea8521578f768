// What the dialogs have in common: texts, fields with their labels, the mark of a wrong field, letters for the
// keyboard, waiting for an answer. Colours come from the desktop's palette.
#pragma once

#include <QBoxLayout>
#include <QDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QString>
#include <string>
#include <string_view>

namespace vorlix {

// The text of a key, ready for the screen.
QString DialogText(std::string_view key, std::string_view fallback);

QString OkText();
QString CancelText();

// A text over as many lines as it takes; markup in it is shown as it stands. The parent owns what these make.
QLabel* AddNote(QLayout& layout, const QString& text = {});
// `before` stands in front of the field.
QLineEdit* AddField(QFormLayout& form, const QString& label, QWidget* before = nullptr);
QPushButton* AddButton(QLayout& layout, const QString& text);
// OK and Cancel at the end of a dialog; Cancel leaves it, OK is the default button.
QPushButton* AddOkAndCancel(QDialog& dialog, QBoxLayout& layout);

// What was typed, without blanks around it.
std::string TextOf(const QLineEdit& field);

// A wrong field gets a light green background, and a screen reader is told.
void MarkWrong(QLineEdit& field, bool isWrong);

// Gives each button and each labelled field of the window a letter that no other has: Alt and the letter reach it. May
// be called again when texts have changed.
void AssignLetters(const QWidget& window);

// Shows the dialog and lets the program's loop run until it is closed; the dialog may be destroyed meanwhile. Other
// windows can be used, calls go on. False when the dialog was left, or the program ends.
bool RunDialog(QDialog& dialog);

// Opens a window that the user has asked for, or brings it to the front.
void OpenInFront(QWidget& window);

// Brings every open dialog to the front.
void BringDialogsToFront();
// Leaves every open dialog: for the end of the program.
void CloseDialogs();

}  // namespace vorlix
