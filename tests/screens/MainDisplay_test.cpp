#include "screens/MainDisplay.h"

#include <gmock/gmock.h>

#include "core/RejectReason.h"
#include "fakes/DisplayRoom.h"
#include "screens/display_texts.h"

namespace vorlix {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class MainDisplayTest : public testing::Test, public DisplayRoom<RecordingBar> {
 protected:
  std::vector<std::string> Texts() {
    std::vector<std::string> texts;
    for (const DisplayLine& line : bar.content.lines)
      texts.push_back(line.text);
    return texts;
  }
  const DisplayLine& Line(std::size_t line = 0) { return bar.content.lines.at(line); }
};

TEST_F(MainDisplayTest, EveryCallHasItsLineMovesUpAndIsFoundByItsNumber) {
  const auto first = Ring(7, "0171555");
  Ring(8, "0301234");
  EXPECT_THAT(Texts(), ElementsAre("0171555 Ort", "0301234 Ort"));
  EXPECT_THAT(world.tape, Contains("search 0301234 1"));
  screen.display.ButtonEnableBell(1, true);
  End(*first);
  screen.display.DisplayCallerUpdateByNumber("0171555", "Zu Spät", "", true);
  screen.display.DisplayCallerUpdateByNumber("0301234", "Meier", "Berlin", true);
  EXPECT_THAT(Texts(), ElementsAre("Meier"));
  EXPECT_EQ(Line().PLCI, 8);
  EXPECT_TRUE(Line().bellEnabled);  // the button goes with its call
  world.Taken();
  Ring(9, "0899");
  EXPECT_THAT(Texts(), ElementsAre("Meier", "0899 Ort"));
  EXPECT_THAT(world.Taken(), Not(Contains("search 0301234 0")));
}

TEST_F(MainDisplayTest, ACallThatNobodyIsToSeeComesOutWithNoOther) {
  settings.General.RejectedCallsDontShow = true;
  ownNumbers.silent = "99";
  Take(1, "0190")->Blocked = true;
  Take(2, "0191")->MSN = "99";
  Show();
  EXPECT_FALSE(Line().isCall);
  const auto seen = Ring(3, "0171555");
  screen.display.ButtonEnableBell(2, true);
  EXPECT_THAT(Texts(), ElementsAre("0171555 Ort"));
  EXPECT_TRUE(Line().bellEnabled);
  End(*seen);
  EXPECT_THAT(Texts(), ElementsAre("0171555 Ort"));
  EXPECT_TRUE(!Line().bellEnabled && Line().hangUp == HangUpMode::kEraser && Line().hangUpEnabled);
  screen.clicks.ResetClick();
  EXPECT_FALSE(Line().isCall);
}

TEST_F(MainDisplayTest, ACallRefusedByHandComesToItsEndWhereItIsShown) {
  settings.General.RejectedCallsDontShow = true;
  const auto call = Ring(1, "0171555");
  call->Blocked = true;
  call->BlockFunction = kRejectUser;
  Show();
  EXPECT_TRUE(Line().isActive && Line().isRefused);
  End(*call);
  EXPECT_TRUE(!Line().isActive && Line().hangUp == HangUpMode::kEraser);
}

TEST_F(MainDisplayTest, OfTwoCallsFromOneNumberOnlyTheFirstShowsTheResult) {
  Ring(1, "0171555");
  Ring(2, "0171555");
  screen.display.DisplayCallerUpdateByNumber("0171555", "-", "", true);
  screen.display.DisplayCallerUpdateByNumber("0171555", "Meier", "", false);
  screen.display.DisplayCallerUpdateByNumber("", "Meier", "", true);
  EXPECT_THAT(Texts(), ElementsAre("0171555 Ort", "0171555 Ort"));
  screen.display.DisplayCallerUpdateByNumber("0171555", "Meier", "", true);
  EXPECT_THAT(Texts(), ElementsAre("Meier", "0171555 Ort"));
}

TEST_F(MainDisplayTest, ANameStandsForTheNumberAsTheSettingsSay) {
  const std::tuple<bool, bool, bool, const char*, const char*> rows[] = {
      {true, false, false, "Meier", "Meier an Praxis"},
      {true, true, false, "Meier (0171555)", "Meier (0171555) an Praxis"},
      {true, true, true, "Meier (0171555)", "Meier  Berlin (0171555) an Praxis"},
      {false, true, false, "0171555 Ort", "0171555 Ort an Praxis"},
  };
  const auto call = Take(1, "0171555", "Meier");
  call->Address("Berlin");
  call->MutableCard().BookVCbCallActive = true;
  for (const auto& [nameView, nameViewNumber, nameViewAdress, text, tip] : rows) {
    settings.General.NameView = nameView;
    settings.General.NameViewNumber = nameViewNumber;
    settings.General.NameViewAdress = nameViewAdress;
    Show();
    EXPECT_EQ(Line().text, text);
    EXPECT_EQ(Line().tip, tip);
  }
  EXPECT_THAT(world.Taken(), testing::Each("no card"));
  settings.General.DisplayDateHide = settings.vCards.byCall = true;
  Show();
  EXPECT_THAT(world.Taken(), ElementsAre("card Meier"));
  EXPECT_EQ(Line().date + Line().time, "12:00:00");
}

TEST_F(MainDisplayTest, SearchesAndPicturesAreForStrangersFromOutside) {
  // Number, name mode, wanted for the call, by the settings, no pictures of networks; what comes of it.
  const std::tuple<std::string, int, bool, bool, bool, bool, std::string> rows[] = {
      {"1234", 0, true, true, false, false, ""},
      {"12345", 0, true, true, false, true, "/flags/1234.png"},
      {"12345", 0, false, true, false, false, "/flags/1234.png"},
      {"12345", 0, true, false, false, false, "/flags/1234.png"},
      {"12345", 2, true, true, true, false, ""},
      {"0171555", 0, true, true, true, true, "/mine.jpg"},
      {"Unbekannt", 0, true, true, false, false, "/flags/Unbe.png"},
  };
  world.pictures["0171555"] = "/mine.jpg";
  for (const auto& [number, nameMode, search, autoSearch, noIVW, isSearched, logo] : rows) {
    state.ActiveCallList.Clear();
    Take(1, number)->NameMode = static_cast<std::int16_t>(nameMode);
    settings.General.AutoSearch = autoSearch;
    settings.General.NoIVW = noIVW;
    Show(search);
    EXPECT_EQ(testing::Value(world.Taken(), Contains("search " + number + " 0")), isSearched) << number;
    EXPECT_EQ(Line().logo, logo) << number;
  }
}

TEST_F(MainDisplayTest, WithoutACallTheStateOfTheSourcesInUseIsShown) {
  const std::pair<LineStates, const char*> rows[] = {
      {{.CAPI = {true, true}, .AVM = {true, false}, .NCID = {}}, "CAPI2.0 Init OK/AVM Fehler"},
      {{.CAPI = {true, false}, .AVM = {}, .NCID = {true, true}}, "CAPI2.0 Init Fehler/NCID OK"},
      {{}, "kein Anruf"},
  };
  for (const auto& [states, text] : rows) {
    world.states = states;
    screen.display.Display_NoCall(true);
    EXPECT_THAT(Texts(), ElementsAre(text));
    EXPECT_EQ(tray.tip, text);
    EXPECT_FALSE(IsCallInDisplay(text));
  }
  EXPECT_TRUE(IsCallInDisplay("Meier/AVM OK"));
}

TEST_F(MainDisplayTest, ALostLineDoesNotWriteOverACaller) {
  Ring(1, "0171555");
  world.states.AVM.up = false;
  screen.display.ChangeDisplayData("CAPI2.0 wurde nicht gefunden!");
  EXPECT_THAT(Texts(), ElementsAre("0171555 Ort"));
  EXPECT_EQ(bar.content.lineState, "CAPI2.0 wurde nicht gefunden!");
  Show();
  EXPECT_EQ(bar.content.lineState, "AVM Fehler");
}

TEST_F(MainDisplayTest, ALineTakesTheColourOfItsOwnNumber) {
  const auto call = Take(1, "0171555");
  const auto colours = [&](std::uint32_t color) {
    call->MSNColor = color;
    Show();
    return std::pair(Line().background, Line().textColor);
  };
  EXPECT_EQ(colours(0x0000FF), std::pair(0x808080U, 0xFFFFFFU));
  settings.General.MSNColorInDispaly = true;
  EXPECT_EQ(colours(0x0000FF), std::pair(0xFF0000U, 0xFFFFFFU));
  EXPECT_EQ(colours(0x80FFFF), std::pair(0xFFFF80U, 0x000000U));
  EXPECT_EQ(colours(kMSNColorUnknown), std::pair(0x808080U, 0xFFFFFFU));
}

TEST_F(MainDisplayTest, ACallStaysBeyondItsEndUntilTheDisplayIsReset) {
  const auto call = Ring(1, "0171555");
  screen.display.ButtonEnableHangUp(0, HangUpMode::kStop, true);
  End(*call);
  EXPECT_THAT(Texts(), ElementsAre("0171555 Ort"));
  EXPECT_TRUE(!Line().isActive && Line().hangUp == HangUpMode::kEraser);
  // Its id is given to the next call, which is not shown.
  loop.Advance(std::chrono::seconds(5));
  Take(1, "0301234");
  screen.display.DisplayResize();
  screen.display.MarkBlocked(1, "list");
  EXPECT_FALSE(Line().isActive || Line().isBlockMarked);
  state.ActiveCallList.Clear();
  world.Taken();
  screen.clicks.HangUpClick(0);
  EXPECT_THAT(Texts(), ElementsAre("AVM OK"));
  EXPECT_EQ(Line().hangUp, HangUpMode::kNone);
  EXPECT_THAT(world.Taken(), ElementsAre("no card", "no new calls"));
  screen.display.DisplayReset(true);
  EXPECT_THAT(world.Taken(), IsEmpty());
}

TEST_F(MainDisplayTest, TheMarkOfARefusedCallOutlastsAnotherCall) {
  const auto call = Take(5, "0190");
  call->Blocked = true;
  call->BlockFunction = 6;
  Show();
  EXPECT_EQ(Line().blockReason, "reason 6");
  screen.display.MarkBlocked(5, "list");
  screen.display.MarkBlocked(4, "other");
  EXPECT_EQ(Line().blockReason, "list");
  Ring(6, "0171555");
  EXPECT_TRUE(Line(0).isBlockMarked && !Line(1).isBlockMarked);
}

TEST_F(MainDisplayTest, AChangedBookGivesTheLinesTheirNamesAndTheyKeepThem) {
  Ring(1, "0171555");
  Ring(2, "0301234");
  screen.display.DisplayCallerUpdateByNumber("0301234", "Aus der Suche", "", true);
  world.names["0171555"] = "Meier";
  screen.display.DisplayCallerUpdateWithBook();
  world.Taken();
  Ring(3, "0190");
  EXPECT_THAT(Texts(), ElementsAre("Meier", "Aus der Suche", "0190 Ort"));
  EXPECT_THAT(world.Taken(), Not(Contains(HasSubstr("search 0171555"))));
}

TEST_F(MainDisplayTest, SilentModeHidesTheWindowsAndDoesNotBringTheBarToTheTop) {
  Ring(1, "0171555");
  const int tops = std::exchange(bar.tops, 0);
  screen.commands.mnuSilentMode_Click();
  Show();
  EXPECT_TRUE(tops > 0 && bar.tops == 0);
  EXPECT_THAT(world.tape, Contains("windows hidden"));
}

TEST_F(MainDisplayTest, TheClockRunsInTheIdleLineOnly) {
  screen.display.RunClock();
  Show();
  loop.Advance(std::chrono::seconds(2));
  EXPECT_EQ(bar.clock, "13.03.2024 12:00:02");
  Ring(1, "0171555");
  loop.Advance(std::chrono::seconds(2));
  EXPECT_EQ(bar.clock, "13.03.2024 12:00:02");
}

TEST_F(MainDisplayTest, NothingFromTheNetworkReachesAViewAsAControl) {
  settings.General.AsBaloon = settings.General.MaxiDisplayView = true;
  Ring(1, "01\x1B[2J\r71", "Me\tier\n<b>");
  for (const std::string& text :
       {Line().text, Line().tip, Line().caller, maxi.content.name, tray.balloons.at(0).title}) {
    EXPECT_EQ(text.find_first_of("\x1B\r\n\t"), std::string::npos) << text;
  }
  EXPECT_EQ(tray.balloons.at(0).text.find('\x1B'), std::string::npos);
}

}  // namespace
}  // namespace vorlix
