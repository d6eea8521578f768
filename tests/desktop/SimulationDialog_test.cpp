#include "desktop/dialogs/SimulationDialog.h"

#include <gmock/gmock.h>

#include "fakes/DialogRoom.h"
#include "fakes/FakeClock.h"
#include "fakes/LineFakes.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kNumber = "Rufnummer ohne f\xFChrende Nullen";

class SimulationDialogTest : public testing::Test, protected DialogRoom {
 protected:
  SimulationDialogTest() {
    settings.General.CallMode_CAPI = false;
    settings.General.CallMode_AVM = true;
    clock.SetNow(DateTime::FromCivil(2026, 11, 21, 8, 5, 0));
    const auto row = std::make_shared<oDataMSN>();
    row->Key = row->MSN = "77";
    ownNumbers.table.Add(row);
  }

  fakes::Tape tape;
  FakeClock clock;
  Settings settings;
  fakes::FewOwnNumbers ownNumbers;
  int saved = 0;
  fSimulation simulation{{clock, settings, ownNumbers, [](int) {},
                          [this](const std::string& line) { tape.push_back(line.substr(20)); },
                          [](const std::string&) {}, [] { return 0; }, [] {}, [this] { ++saved; }}};
  int left = 0, top = 0, width = 0, height = 0;
  SimulationDialog dialog{simulation, {left, top, width, height}};
};

TEST_F(SimulationDialogTest, RingsAndHangsUpAsLongAsALineIsFree) {
  dialog.Open();
  Type(kNumber, "30123");
  Press("Anrufen");
  Press("aus dem Ausland");
  Type("Angerufene eigene Nummer", "78");
  Press("Anrufen");
  EXPECT_THAT(tape, ElementsAre("RING;0;030123;77;ISDN;", "RING;0;0030123;78;ISDN;"));
  EXPECT_FALSE(Find<QAbstractButton>("Anrufen")->isEnabled());
  Press("Leitung 2: Trennen");
  EXPECT_EQ(tape.back(), "DISCONNECT;0;15;");
  EXPECT_TRUE(Find<QAbstractButton>("Anrufen")->isEnabled());
  simulation.cmdTrennen_Click(0);  // the program has refused the call
  EXPECT_FALSE(Find<QAbstractButton>("Leitung 1: Trennen")->isEnabled());
}

TEST_F(SimulationDialogTest, TakesOnlyWhatCanBeDialled) {
  dialog.Open();
  Field(kNumber)->insert("12;3\n");
  EXPECT_EQ(Field(kNumber)->text(), "");
  Field(kNumber)->insert("*#12");
  EXPECT_EQ(Field(kNumber)->text(), "*#12");
}

TEST_F(SimulationDialogTest, TheWindowAndTheSimulationEndTogether) {
  dialog.Open();
  EXPECT_TRUE(simulation.IsOpen());
  Top()->resize(640, 480);
  Top()->close();
  EXPECT_FALSE(simulation.IsOpen());
  EXPECT_EQ(width, 640);
  dialog.Open();
  EXPECT_EQ(Top()->width(), 640);
  simulation.cmdCancel_Click();
  EXPECT_FALSE(Top());
}

TEST_F(SimulationDialogTest, TheCheckBoxIsTheSetting) {
  settings.General.SimWrite = true;
  dialog.Open();
  EXPECT_TRUE(Find<QAbstractButton>("Simulierte Anrufe im Journal festhalten")->isChecked());
  Press("Simulierte Anrufe im Journal festhalten");
  EXPECT_FALSE(settings.General.SimWrite);
  EXPECT_EQ(saved, 1);
}

}  // namespace
}  // namespace vorlix
