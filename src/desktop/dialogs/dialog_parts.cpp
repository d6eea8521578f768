#include "desktop/dialogs/dialog_parts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QPointer>
#include <QSet>

#include "desktop/text.h"
#include "screens/FirstStart.h"
#include "services/ansi.h"
#include "services/modLanguage.h"

namespace vorlix {
namespace {

// Light green with dark text is readable on a dark desktop too.
constexpr QRgb kWrongBackground = qRgb(0x90, 0xEE, 0x90);

// The text without the mark of its letter.
QString Unmarked(QString text) {
  static const QChar kBoth(0xE000);
  return text.replace("&&", QString(kBoth)).remove('&').replace(kBoth, "&");
}

// Prefers the beginning of a word.
QString Marked(const QString& text, QSet<QChar>& taken) {
  for (const bool wordsOnly : {true, false}) {
    for (qsizetype i = 0; i < text.size(); ++i) {
      const bool beginsWord = i == 0 || text[i - 1].isSpace();
      const QChar letter = text[i].toLower();
      if ((wordsOnly && !beginsWord) || !letter.isLetterOrNumber() || taken.contains(letter)) continue;
      taken.insert(letter);
      return QString(text.left(i)).replace("&", "&&") + "&" + QString(text.mid(i)).replace("&", "&&");
    }
  }
  return QString(text).replace("&", "&&");
}

QList<QPointer<QDialog>> OpenDialogs() {
  QList<QPointer<QDialog>> dialogs;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (auto* dialog = qobject_cast<QDialog*>(widget); dialog && dialog->isVisible()) dialogs << dialog;
  }
  return dialogs;
}

}  // namespace

QString DialogText(std::string_view key, std::string_view fallback) {
  return ToQString(LoadLangKey(key, fallback));
}

QString OkText() {
  return DialogText("Button_OK", "OK"_ansi);
}

QString CancelText() {
  return DialogText("Button_Cancel", "Abbrechen"_ansi);
}

QLabel* AddNote(QLayout& layout, const QString& text) {
  auto* note = new QLabel(text);
  note->setTextFormat(Qt::PlainText);
  note->setWordWrap(true);
  layout.addWidget(note);
  return note;
}

QLineEdit* AddField(QFormLayout& form, const QString& label, QWidget* before) {
  auto* field = new QLineEdit;
  auto* caption = new QLabel(label);
  caption->setTextFormat(Qt::PlainText);
  caption->setBuddy(field);
  field->setAccessibleName(label);
  field->setMinimumWidth(field->fontMetrics().averageCharWidth() * 28);
  form.setRowWrapPolicy(QFormLayout::WrapLongRows);
  form.setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
  if (before == nullptr) {
    form.addRow(caption, field);
    return field;
  }
  auto* row = new QHBoxLayout;
  row->addWidget(before);
  row->addWidget(field);
  form.addRow(caption, row);
  return field;
}

QPushButton* AddButton(QLayout& layout, const QString& text) {
  auto* button = new QPushButton(text);
  button->setAutoDefault(false);
  button->setAccessibleName(Unmarked(text));
  layout.addWidget(button);
  return button;
}

QPushButton* AddOkAndCancel(QDialog& dialog, QBoxLayout& layout) {
  auto* row = new QHBoxLayout;
  row->addStretch();
  QPushButton* ok = AddButton(*row, OkText());
  ok->setDefault(true);
  QObject::connect(AddButton(*row, CancelText()), &QPushButton::clicked, &dialog, [&dialog] { dialog.reject(); });
  layout.addLayout(row);
  return ok;
}

std::string TextOf(const QLineEdit& field) {
  return FromQString(field.text().trimmed());
}

void MarkWrong(QLineEdit& field, bool isWrong) {
  QPalette palette;
  if (isWrong) {
    palette.setColor(QPalette::Base, QColor(kWrongBackground));
    palette.setColor(QPalette::Text, Qt::black);
  }
  field.setPalette(palette);
  field.setAccessibleDescription(isWrong ? ToQString(FirstStart::WrongNote()) : QString());
}

void AssignLetters(const QWidget& window) {
  QSet<QChar> taken;
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    if (widget->window() != &window) continue;
    if (auto* button = qobject_cast<QAbstractButton*>(widget); button && !button->text().isEmpty()) {
      button->setText(Marked(Unmarked(button->text()), taken));
    } else if (auto* label = qobject_cast<QLabel*>(widget); label && label->buddy()) {
      label->setText(Marked(Unmarked(label->text()), taken));
    }
  }
}

bool RunDialog(QDialog& dialog) {
  const QPointer<QDialog> alive(&dialog);
  QEventLoop loop;
  QObject::connect(&dialog, &QDialog::finished, &loop, &QEventLoop::quit);
  QObject::connect(&dialog, &QObject::destroyed, &loop, &QEventLoop::quit);
  dialog.setResult(QDialog::Rejected);
  dialog.show();
  loop.exec();
  if (alive) alive->hide();
  return alive && alive->result() == QDialog::Accepted;
}

void OpenInFront(QWidget& window) {
  window.show();
  window.raise();
  window.activateWindow();
}

void BringDialogsToFront() {
  for (const auto& dialog : OpenDialogs())
    OpenInFront(*dialog);
}

void CloseDialogs() {
  for (const auto& dialog : OpenDialogs()) {
    // One may take others with it.
    if (dialog && dialog->isVisible()) dialog->reject();
  }
}

}  // namespace vorlix
