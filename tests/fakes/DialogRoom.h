// A hand at the dialogs of an offscreen desktop: finds controls by what a user reads or hears, and uses them.
#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <functional>
#include <string>

#include "desktop/text.h"
#include "fakes/OffscreenApplication.h"

namespace vorlix {

struct DialogRoom : OffscreenApplication {
  // The dialog on top: the one that was opened last.
  static QDialog* Top() {
    QDialog* top = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      auto* dialog = qobject_cast<QDialog*>(widget);
      if (dialog && dialog->isVisible() && (!top || top->isAncestorOf(dialog) || dialog->parentWidget())) top = dialog;
    }
    return top;
  }

  static std::string Name(QWidget* control) {
    return FromQString(QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name));
  }

  template <typename Control>
  static Control* Find(const std::string& name) {
    for (auto* control : Top()->findChildren<Control*>()) {
      if (Name(control) == name && control->window() == Top()) return control;
    }
    ADD_FAILURE() << "no " << name;
    return nullptr;
  }
  static QLineEdit* Field(const std::string& name) { return Find<QLineEdit>(name); }
  static void Type(const std::string& name, const std::string& text) { Field(name)->setText(ToQString(text)); }
  static void Press(const std::string& name) { Find<QAbstractButton>(name)->click(); }
  // As a field that cannot be used as it is.
  static bool IsMarked(const std::string& name) {
    return Field(name)->palette().base().color() == QColor(0x90, 0xEE, 0x90);
  }

  // Runs once the dialog that is opened next waits.
  static void Then(std::function<void()> act) { QTimer::singleShot(0, std::move(act)); }
};

}  // namespace vorlix
