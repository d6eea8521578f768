#include "desktop/dialogs/SimulationDialog.h"

#include <gmock/gmock.h>

#include "fakes/DialogRoom.h"
#include "fakes/FakeClock.h"
#include "fakes/LineFakes.h"

namespace vorlix {
namespace {

using testing::ElementsAre;

constexpr const char* kNumber = "Rufnummer ohne f\xFChrende Nullen";
constexpr const char* kWrite = "Simulierte Anrufe im Journal festhalten";

struct SimulationDialogTest : testing::Test, DialogRoom {
  FakeClock clock;
  Settings settings;
};

TEST_F(SimulationDialogTest, RingsAndHangsUpAndEndsWithItsWindow) {
  settings.General.CallMode_CAPI = false;
  settings.General.CallMode_AVM = settings.General.SimWrite = true;
  fakes::Tape tape;
  fakes::FewOwnNumbers ownNumbers;
  fSimulation simulation{{clock, settings, ownNumbers, [](int) {},
                          [&](const std::string& line) { tape.push_back(line.substr(20)); }, [](const std::string&) {},
                          [] { return 0; }, [] {}, [&] { tape.push_back("saved"); }}};
  int left = 0, top = 0, width = 0, height = 0;
  SimulationDialog dialog{simulation, {left, top, width, height}};
  dialog.Open();
  Field(kNumber)->insert("12;3\n");  // cannot be dialled
  Field(kNumber)->insert("30123");
  Type("Angerufene eigene Nummer", "77");
  Press("Anrufen");
  Press("aus dem Ausland");
  Press("Anrufen");
  EXPECT_FALSE(Find<QAbstractButton>("Anrufen")->isEnabled());
  Press("Leitung 2: Trennen");
  EXPECT_TRUE(Find<QAbstractButton>("Anrufen")->isEnabled());
  simulation.cmdTrennen_Click(0);  // the program has refused the call
  EXPECT_FALSE(Find<QAbstractButton>("Leitung 1: Trennen")->isEnabled());
  EXPECT_TRUE(Find<QAbstractButton>(kWrite)->isChecked());
  Press(kWrite);
  EXPECT_FALSE(settings.General.SimWrite);
  EXPECT_THAT(tape, ElementsAre("RING;0;030123;77;ISDN;", "RING;0;0030123;77;ISDN;", "DISCONNECT;0;15;",
                                "DISCONNECT;0;15;", "saved"));
  Top()->resize(640, 480);
  Top()->close();
  EXPECT_FALSE(simulation.IsOpen());
  dialog.Open();
  EXPECT_EQ(Top()->width(), 640);
  simulation.cmdCancel_Click();
  EXPECT_FALSE(Top());
}

}  // namespace
}  // namespace vorlix
