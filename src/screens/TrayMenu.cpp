#include "screens/TrayMenu.h"

#include <utility>

#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {
namespace {

struct CommandRow {
  MenuCommand command;
  std::string_view key, text;
  bool beginsGroup = false;
};

constexpr CommandRow kCommands[] = {
    {MenuCommand::kNewCalls, "Display_Menu_NewCalls", "Neue Anrufe"_ansi},
    {MenuCommand::kJournal, "Display_Menu_Journal", "Journal"_ansi},
    {MenuCommand::kBook, "Display_Menu_Book", "Telefonbuch"_ansi},
    {MenuCommand::kSimulation, "Display_Menu_Simulation", "Anrufsimulation"_ansi},
    {MenuCommand::kBlockAll, "Display_Menu_RejectAllAllways", "Alle Anrufe abweisen"_ansi, true},
    {MenuCommand::kBlockAllByTime, "Display_Menu_RejectAllByTime", "Alle Anrufe abweisen (nach Zeit)"_ansi},
    {MenuCommand::kSilentMode, "Display_Menu_SilentMode", "Ruhemodus"_ansi},
    {MenuCommand::kNoMail, "Display_Menu_NoMail", "Keine Mails versenden"_ansi},
    {MenuCommand::kNoProgram, "Display_Menu_NoProgram", "Keine Programme starten"_ansi},
    {MenuCommand::kCapiReset, "Display_Menu_CAPIReset", "CAPI zurücksetzen"_ansi, true},
    {MenuCommand::kBlacklist, "Display_Menu_Blacklist", "Sperrliste"_ansi, true},
    {MenuCommand::kResetDisplay, "Display_Menu_Reset", "Anzeige zurücksetzen"_ansi},
    {MenuCommand::kSettings, "Display_Menu_Settings", "Einstellungen"_ansi, true},
    {MenuCommand::kAbout, "Display_Menu_About", "Über Vorlix"_ansi, true},
    {MenuCommand::kQuit, "Display_Menu_Quit", "Beenden"_ansi},
};

}  // namespace

std::vector<MenuItem> TrayMenu::Items() const {
  return Trapped("TrayMenu.Items", [&] {
    std::vector<MenuItem> items;
    bool beginsGroup = false;
    for (const CommandRow& row : kCommands) {
      // The separator of a group whose first commands are not there stands before the first that is.
      beginsGroup = beginsGroup || row.beginsGroup;
      if (!IsThere(row.command)) continue;
      items.push_back(ItemOf(row.command, LoadLangKey(row.key, row.text)));
      items.back().beginsGroup = std::exchange(beginsGroup, false) && items.size() > 1;
    }
    return items;
  });
}

MenuItem TrayMenu::ItemOf(MenuCommand command, const std::string& text) const {
  const bool* mark = Mark(command);
  return {.command = command,
          .text = text,
          .isCheckable = mark != nullptr,
          .isChecked = mark != nullptr && *mark,
          .isEnabled = IsEnabled(command)};
}

void TrayMenu::Run(MenuCommand command) {
  Trapped(
      "TrayMenu.Run",
      [&] {
        if (!IsThere(command) || !IsEnabled(command)) return;
        const auto action = actions_.at(command);  // it may bind anew
        action();
      },
      static_cast<int>(command));
}

const bool* TrayMenu::Mark(MenuCommand command) const {
  const auto& general = ports_.settings.General;
  switch (command) {
    case MenuCommand::kBlockAll:
      return &general.BlockAll;
    case MenuCommand::kBlockAllByTime:
      return &general.BlockAllByTime;
    case MenuCommand::kSilentMode:
      return &general.SilentMode;
    case MenuCommand::kNoMail:
      return &general.MenuNoMail;
    case MenuCommand::kNoProgram:
      return &general.MenuNoBatch;
    default:
      return nullptr;
  }
}

bool TrayMenu::IsThere(MenuCommand command) const {
  if (command == MenuCommand::kCapiReset && !ports_.settings.General.CallMode_CAPI) return false;
  return actions_.contains(command);
}

bool TrayMenu::IsEnabled(MenuCommand command) const {
  return command != MenuCommand::kSimulation || !ports_.isSimulationBarred || !ports_.isSimulationBarred();
}

}  // namespace vorlix
