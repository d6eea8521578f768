// The menu of bar and tray: every command of the program, so that a desktop that delivers no clicks on the tray icon
// still reaches all. A command that nothing stands behind is not in it.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "data/Settings.h"

namespace vorlix {

// In the menu's order.
enum class MenuCommand {
  kNewCalls,
  kJournal,
  kBook,
  kSimulation,
  kBlockAll,
  kBlockAllByTime,
  kSilentMode,
  kNoMail,
  kNoProgram,
  kCapiReset,
  kBlacklist,
  kResetDisplay,
  kSettings,
  kAbout,
  kQuit,
};

struct MenuItem {
  MenuCommand command{};
  std::string text;
  bool isCheckable = false;
  bool isChecked = false;
  bool isEnabled = true;
  bool beginsGroup = false;  // a separator stands before it
};

class TrayMenu {
 public:
  struct Ports {
    Settings& settings;                        // the check marks live here and are saved when the program ends
    std::function<bool()> isSimulationBarred;  // it runs already, or would take the end of a real call
  };

  // All ports must outlive the object.
  explicit TrayMenu(Ports ports) : ports_(std::move(ports)) {}

  // What a command does, and with it that the command is there at all. One with a check mark changes the mark itself.
  void Bind(MenuCommand command, std::function<void()> action) { actions_[command] = std::move(action); }

  // The menu as it stands now: asked for whenever it opens.
  std::vector<MenuItem> Items() const;
  // Does nothing for a command that is not in the menu or not enabled.
  void Run(MenuCommand command);

 private:
  MenuItem ItemOf(MenuCommand command, const std::string& text) const;
  const bool* Mark(MenuCommand command) const;
  bool IsThere(MenuCommand command) const;
  bool IsEnabled(MenuCommand command) const;

  Ports ports_;
  std::map<MenuCommand, std::function<void()>> actions_;
};

}  // namespace vorlix
