// A person's hands and ears at the widgets of an offscreen desktop, and a memory for their places.
#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <map>
#include <string>
#include <vector>

#include "desktop/WindowPlaces.h"
#include "desktop/text.h"

namespace vorlix {

struct MemoryPlaces : WindowPlaces {
  std::map<PlacedWindow, WindowPlace> places;

  std::optional<WindowPlace> Load(PlacedWindow window) override {
    const auto found = places.find(window);
    return found == places.end() ? std::nullopt : std::optional(found->second);
  }
  void Save(PlacedWindow window, const WindowPlace& place) override { places[window] = place; }
};

inline void PressKey(QWidget* widget, Qt::Key key) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
  QCoreApplication::sendEvent(widget, &press);
}

inline void Mouse(QWidget& window, QEvent::Type type, const QPoint& onScreen) {
  const bool isDown = type != QEvent::MouseButtonRelease;
  QMouseEvent event(type, window.mapFromGlobal(onScreen), onScreen, Qt::LeftButton,
                    isDown ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&window, &event);
}

inline void Drag(QWidget& window, const QPoint& from, const QPoint& to) {
  Mouse(window, QEvent::MouseButtonPress, from);
  Mouse(window, QEvent::MouseMove, (from + to) / 2);
  Mouse(window, QEvent::MouseMove, to);
  Mouse(window, QEvent::MouseButtonRelease, to);
}

// The entries as they stand, those of menus in menus behind ">".
inline std::vector<std::string> Entries(const QMenu& menu) {
  std::vector<std::string> entries;
  for (const QAction* action : menu.actions()) {
    if (action->isSeparator()) continue;
    entries.push_back(FromQString(action->text()));
    if (action->menu() == nullptr) continue;
    for (const std::string& entry : Entries(*action->menu()))
      entries.push_back(">" + entry);
  }
  return entries;
}

inline void Choose(const QMenu& menu, const std::string& entry) {
  for (QAction* action : menu.actions()) {
    if (action->menu() != nullptr) Choose(*action->menu(), entry);
    if (FromQString(action->text()) == entry) return action->trigger();
  }
}

// What of a window is shown and can be heard of by nobody, or is a control that the keyboard does not reach. The inner
// parts of the toolkit's own controls are its business.
inline std::vector<std::string> Unreached(const QWidget& window) {
  std::vector<std::string> found;
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    const bool isPart = widget->objectName().startsWith(QLatin1String("qt_")) || widget->focusProxy() != nullptr;
    if (isPart || !widget->isVisible() || widget->window() != &window) continue;
    const std::string name = FromQString(QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name));
    const bool isControl = qobject_cast<QAbstractButton*>(widget) != nullptr || widget->focusPolicy() != Qt::NoFocus;
    const auto* label = qobject_cast<const QLabel*>(widget);
    const bool isShown = label != nullptr && !(label->text().isEmpty() && label->pixmap().isNull());
    if (((isControl || isShown) && name.empty()) || (isControl && !(widget->focusPolicy() & Qt::TabFocus))) {
      found.push_back(std::string(widget->metaObject()->className()) + " " + FromQString(widget->objectName()) + name);
    }
  }
  return found;
}

}  // namespace vorlix
