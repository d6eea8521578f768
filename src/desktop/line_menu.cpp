#include "desktop/line_menu.h"

#include "desktop/text.h"
#include "services/ansi.h"
#include "services/modLanguage.h"

namespace vorlix {
namespace {

QAction* Add(QMenu& menu, const std::string& text, std::function<void()> run) {
  QAction* const action = menu.addAction(ToMenuText(text));
  QObject::connect(action, &QAction::triggered, action, [run = std::move(run)] { run(); });
  return action;
}

// While the menu is open the calls may move up: the command keeps to the call that it was offered for.
template <class Gesture>
std::function<void()> ForCall(const DisplayContent& content, const DisplayLine& call, const Gesture& gesture) {
  return [&content, &gesture, PLCI = call.PLCI, rang = call.rang] {
    for (std::size_t position = 0; position < content.lines.size(); ++position) {
      const DisplayLine& line = content.lines[position];
      if (line.isCall && line.PLCI == PLCI && line.rang == rang) return PassOn(gesture, position);
    }
  };
}

}  // namespace

std::string BellText() {
  return LoadLangKey("Display_Menu_StopBell", "Klingeln abstellen"_ansi);
}

std::string HangUpText(HangUpMode button) {
  return button == HangUpMode::kEraser ? LoadLangKey("Display_Menu_Reset", "Anzeige zurücksetzen"_ansi)
                                       : LoadLangKey("Display_Menu_Refuse", "Anruf abweisen"_ansi);
}

void AddLineCommands(QMenu& menu, const DisplayContent& content, std::size_t position,
                     const DisplayGestures& gestures) {
  const DisplayLine& line = content.lines[position];
  if (line.hangUp == HangUpMode::kStop && line.hangUpEnabled) {
    Add(menu, HangUpText(line.hangUp), ForCall(content, line, gestures.hangUp));
  }
  if (line.bellEnabled) Add(menu, BellText(), [&gestures] { PassOn(gestures.bell); });
  if (line.isCall) {
    Add(menu, LoadLangKey("Display_Menu_ToBlacklist", "Nummer auf die Sperrliste"_ansi),
        ForCall(content, line, gestures.blacklist));
  }
}

void AddCalls(QMenu& menu, const DisplayContent& content, const DisplayGestures& gestures) {
  for (std::size_t position = 0; position < content.lines.size(); ++position) {
    const DisplayLine& line = content.lines[position];
    if (line.isCall) AddLineCommands(*menu.addMenu(ToMenuText(line.text)), content, position, gestures);
  }
}

void AddCommands(QMenu& menu, const DisplayGestures& gestures) {
  if (!gestures.menuItems) return;
  if (!menu.isEmpty()) menu.addSeparator();
  for (const MenuItem& item : gestures.menuItems()) {
    if (item.beginsGroup) menu.addSeparator();
    QAction* const action =
        Add(menu, item.text, [&gestures, command = item.command] { PassOn(gestures.runCommand, command); });
    action->setCheckable(item.isCheckable);
    action->setChecked(item.isChecked);
    action->setEnabled(item.isEnabled);
  }
}

}  // namespace vorlix
