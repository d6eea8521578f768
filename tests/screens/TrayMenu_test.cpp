#include "screens/TrayMenu.h"

#include <gmock/gmock.h>

#include "services/ansi.h"

namespace vorlix {
namespace {

using testing::ElementsAre;

class TrayMenuTest : public testing::Test {
 protected:
  // The menu as one reads it: "-" begins a group, "[x]" a mark, "(...)" what is not enabled.
  std::vector<std::string> Menu() const {
    std::vector<std::string> texts;
    for (const MenuItem& item : menu.Items()) {
      std::string text = item.isCheckable ? (item.isChecked ? "[x] " : "[ ] ") + item.text : item.text;
      if (!item.isEnabled) text = "(" + text + ")";
      texts.push_back(ToUtf8(item.beginsGroup ? "-" + text : text));
    }
    return texts;
  }
  void BindAll() {
    for (int command = 0; command <= static_cast<int>(MenuCommand::kQuit); ++command)
      menu.Bind(static_cast<MenuCommand>(command), [this, command] { run.push_back(command); });
  }

  Settings settings;
  bool isSimulating = false;
  std::vector<int> run;
  TrayMenu menu{{settings, [this] { return isSimulating; }}};
};

TEST_F(TrayMenuTest, KeepsItsOrderAndShowsWhatIsOn) {
  BindAll();
  settings.General.CallMode_CAPI = true;
  settings.General.BlockAll = settings.General.MenuNoMail = true;
  isSimulating = true;
  EXPECT_THAT(Menu(), ElementsAre("Neue Anrufe", "Journal", "Telefonbuch", "(Anrufsimulation)",
                                  "-[x] Alle Anrufe abweisen", "[ ] Alle Anrufe abweisen (nach Zeit)", "[ ] Ruhemodus",
                                  "[x] Keine Mails versenden", "[ ] Keine Programme starten", "-CAPI zurücksetzen",
                                  "-Sperrliste", "Anzeige zurücksetzen", "-Einstellungen", "-Über Vorlix", "Beenden"));
}

TEST_F(TrayMenuTest, OnlyWhatStandsThereAndIsEnabledRuns) {
  menu.Run(MenuCommand::kQuit);
  menu.Bind(MenuCommand::kQuit, [] {});
  menu.Bind(MenuCommand::kSilentMode, [] {});
  EXPECT_THAT(Menu(), ElementsAre("[ ] Ruhemodus", "-Beenden"));
  BindAll();
  settings.General.CallMode_CAPI = false;
  isSimulating = true;
  for (const MenuCommand command : {MenuCommand::kSimulation, MenuCommand::kCapiReset, MenuCommand::kAbout})
    menu.Run(command);
  EXPECT_THAT(run, ElementsAre(static_cast<int>(MenuCommand::kAbout)));
}

}  // namespace
}  // namespace vorlix
