#include "data/modNumbers.h"

#include <array>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/null_ports.h"
#include "fakes/Arrows.h"
#include "fakes/DataRoom.h"
#include "services/ansi.h"

namespace vorlix {
namespace {

const std::string kCache = "/vorlix/data/cache.ovw";

struct OneOwnNumber : NoOwnNumbers {
  bool IsOwnNumber(const std::string& MSN) override { return MSN == "7654321"; }
};

struct Simulation : NoSimulationWindow {
  bool open = false;
  bool IsOpen() override { return open; }
};

class NumbersTest : public testing::Test, protected DataRoom {
 protected:
  NumbersTest() {
    store.AddFile(
        "/program/base/states/state.codes",
        "; code|iso|name|flag\r\n001|US|USA|us.png\r\n0043|AT|\xD6sterreich|at.png\r\n0049|DE|Deutschland|\r\n"
        "0043999|XX|Nirgendwo|xx.png\r\n");
    store.AddFile("/program/base/areacodes/area_0043.codes", "1|Wien\r\n2|\r\n");
    store.AddFile("/program/base/areacodes/area_0049.codes",
                  "30|Berlin\r\n3|Drei\r\n301|\r\n89|M\xFCnchen\r\n1234567|gerade noch\r\n12345678|lang\r\n");
    settings.General.myVWL = "49";
    settings.General.myVWO = "30";
    numbers.loadOVW("49");
    numbers.loadLVW();
  }
  std::string Shown(const std::string& number) {
    const NumberTexts texts = numbers.GetOVW(number);
    return texts.VW_Only + "|" + texts.VW_NumberOnly + "|" + texts.VW_FormatedFull + "|" + texts.VW_FormatedNumber +
           "|" + texts.VW_FormatedLocation + "|" + texts.VW_CityName + "|" + texts.VW_StateName;
  }

  Settings settings;
  OneOwnNumber ownNumbers;
  Simulation simulation;
  JournalCache journal;
  JournalFlags flags;
  modNumbers numbers{{files, folders, ini, settings, ownNumbers, simulation, messages, journal, flags}};
};

TEST_F(NumbersTest, OneNumberComesOutTheSameInEveryFormOfEverySource) {
  const auto expect = [this](int source, const char* myVWOP, std::initializer_list<std::string> forms) {
    settings.General.myVWOP = numbers.LastPrefix = myVWOP;
    for (const auto& [raw, normal] : Arrows(forms))
      EXPECT_EQ(numbers.fVW(source, raw), normal) << source << " '" << myVWOP << "' " << raw;
  };
  expect(0, "0",
         {"0301234567 -> 0301234567", "00493012345670 -> 03012345670", "+49301234567# -> 0301234567#",
          "0043112345 -> 0043112345", "+43112345 -> 0043112345"});
  expect(0, "00", {"00301234567 -> 0301234567", "00049301234567 -> 0301234567", "+49301234567 -> 0301234567"});
  expect(0, "",
         {"301234567 -> 0301234567", "+49301234567 -> 0301234567", "+43112345 -> 0043112345",
          "0301234567 -> 00301234567"});  // a wrong prefix garbles: that is why the program asks
  expect(16, "00", {"0049301234567 -> 0301234567"});
  expect(16, "", {"0301234567 -> 0301234567", "1234567 -> 1234567", "7654321 -> 7654321", "000 -> 000", "00000 -> 00"});
  expect(32, "", {"+49301234567 -> 0301234567", "0043112345 -> 0043112345"});
  expect(7, "0", {"0301234567 -> 00301234567"});
  expect(0, "0", {"1234 -> 1234", "->", "Unbekannt -> Unbekannt", "xUNBEKANNTx -> xUNBEKANNTx", "7654321 -> 7654321"});
  EXPECT_TRUE(boxes.shown.empty());
  settings.General.TKnum = 9;
  expect(16, "0", {"004930123 -> 004930123"});
}

TEST_F(NumbersTest, FollowsTheSpecialRulesInTheirOrder) {
  using Case = std::tuple<int, const char*, std::string, std::string>;
  for (const auto& [cutt, special, raw, normal] :
       {Case{2, "", "990301234567", "0301234567"}, Case{0, "*1", "*14930123456", "030123456"},
        Case{1, "9", "990301234567", "00301234567"}, Case{1, "", "+49301234567", "049301234567"},
        Case{9, "", "12345", ""}, Case{0, "", std::string(1'000'000, '+'), "00"},
        Case{0, "", "0" + std::string(50, '7'), "0" + std::string(31, '7')},
        Case{0, "99999999999999999999999999999999999", std::string(35, '9') + "1", "00"}}) {
    settings.General.SpezialCutt = cutt;
    settings.General.SpezialPrefix = special;
    EXPECT_EQ(numbers.fVW(16, raw), normal) << raw.substr(0, 40);
  }
}

TEST_F(NumbersTest, AsksBeforeItCorrectsThePrefix) {
  std::string changed = "nothing";
  numbers.PrefixChanged = [&](const std::string& prefix) { changed = prefix; };
  settings.General.myVWOP = "0";
  boxes.answer = MsgBoxAnswer::kNo;
  EXPECT_EQ(numbers.fVW(0, "301234\n567"), "0301234\n567");
  EXPECT_THAT(boxes.shown, testing::ElementsAre(testing::HasSubstr("Nummer: 301234 567\r\n")));
  EXPECT_EQ(settings.General.myVWOP + changed, "0nothing");

  boxes.answer = MsgBoxAnswer::kYes;
  EXPECT_EQ(numbers.fVW(0, "301234567"), "301234567");
  EXPECT_EQ(ini.GetSettStr("General", "myVWOP", "?"), "-");
  EXPECT_EQ(settings.General.myVWOP + changed, "");
  EXPECT_EQ(numbers.fVW(0, "301234567"), "0301234567") << "now it is known for a national number";

  settings.General.myVWOP = "00";
  numbers.LastPrefix = "0";
  EXPECT_EQ(numbers.fVW(0, "0301234567"), "0301234567");
  EXPECT_EQ(ini.GetSettStr("General", "myVWOP", "?") + changed, "00");

  const auto asked = boxes.shown.size();
  settings.General.myVWOP = "00";
  settings.General.PrefixAutoCheck = false;
  EXPECT_EQ(numbers.fVW(0, "0301234567"), "301234567");
  settings.General.PrefixAutoCheck = true;
  EXPECT_EQ(numbers.fVW(16, "301234567"), "301234567") << "a router's number says nothing about the driver's prefix";
  simulation.open = true;
  EXPECT_EQ(numbers.fVW(0, "0301234567"), "0301234567");
  EXPECT_EQ(boxes.shown.size(), asked);
}

TEST_F(NumbersTest, TakesANumberApartAndNamesItsPlace) {
  const std::pair<std::string, std::string_view> cases[] = {
      {"1234", "||1234|1234|||"},
      {"Unbekannt", "||Unbekannt|Unbekannt|||"},
      {"089123456", "089|123456|München 089 123456|089 123456|München|München|"_ansi},
      {"0301", "||0301|0301|||"},
      {"03012345", "0301|2345|0301 2345|0301 2345|||"},
      {"01234567", "||01234567|01234567|Unbekannt||"},
      {"0123456789", "01234567|89|gerade noch 01234567 89|01234567 89|gerade noch|gerade noch|"},
      {"0043123456", "00431|23456|Wien (Österreich) +43  1 23456|+43  1 23456|Wien (Österreich)|Wien|Österreich"_ansi},
      {"004321234", "00432|1234|Österreich +43  1234|+43  2 1234| (Österreich)||Österreich"_ansi},
      {"0043723456", "0043|723456|Österreich +43  723456|+43  723456|Österreich||Österreich"_ansi},
      {"0012125550100", "001|2125550100|USA +1  2125550100|+1  2125550100|USA||USA"},
      {"0099123456", "||0099123456|0099123456|Unbekannt||"},
      {"5551234", "||5551234|5551234|Unbekannt||"},
  };
  std::size_t told = 0;
  numbers.CountChanged = [&](std::size_t count) { told = count; };
  for (const auto& [number, shown] : cases) {
    EXPECT_EQ(Shown(number), shown) << number;
    EXPECT_EQ(Shown(number), shown) << number << " from the speed buffer";
  }
  EXPECT_EQ(numbers.SpeedBuffer_OVW_Count(), 7u) << "what is not found is not kept";
  EXPECT_EQ(told, 7u);
  numbers.SpeedBuffer_OVW_Clear();
  settings.General.NoIVW = settings.General.NoNVW = true;  // names that nobody wants
  EXPECT_EQ(Shown("0043123456"), "00431|23456|+43  1 23456|+43  1 23456|||");
  EXPECT_EQ(Shown("089123456"), "089|123456|089 123456|089 123456|||");
}

TEST_F(NumbersTest, TellsTheJournalWhileItLoadsAndKeepsNothingOfASimulation) {
  oDataCall call;
  call.DataNumber("089123456");
  for (const bool isSimulated : {true, false}) {
    simulation.open = isSimulated;
    numbers.GetOVW("089123456");
    EXPECT_EQ(numbers.SpeedBuffer_OVW_Count(), isSimulated ? 0u : 1u);
    journal.SpeedBuffer_Journal_Get(call);
    EXPECT_EQ(call.VW_FormatedFull(), "");
  }
  flags.JournalLoading = true;
  numbers.GetOVW("089123456");
  journal.SpeedBuffer_Journal_Get(call);
  EXPECT_EQ(call.VW_FormatedFull(), "München 089 123456"_ansi) << "also from the speed buffer";
}

TEST_F(NumbersTest, ShowsEachPartInItsStyle) {
  using Case = std::tuple<std::array<const char*, 5>, std::array<int, 3>, const char*>;
  for (const auto& [part, style, shown] :
       {Case{{"43", "", "01", "", "23456"}, {1, 1, 0}, "0043  01 23456"},
        Case{{"0043", "", "1", "", "23456"}, {2, 2, 0}, "00 43  (0)1 23456"},
        Case{{"", "", "030", "", "1234567"}, {0, 0, 1}, "030 123 45 67"},
        Case{{"", "", "30", "", "1234567"}, {0, 1, 2}, "030 12 34 56 7"},
        Case{{"", "", "30", "", "1234567"}, {0, 2, 0}, "(0)30 1234567"},
        Case{{"", "", "", "", "1234567890123456789"}, {0, 0, 1}, "123 45 67 89 01 23 45 6789"},
        Case{{"", "", "", "", "12345678901234567"}, {0, 0, 2}, "12 34 56 78 90 12 34 567"},
        Case{{"0043", "A", "1", "Wien", "2"}, {0, 0, 0}, "Wien (A) +43  1 2"},
        Case{{"0043", "A", "1", "", "2"}, {0, 0, 0}, "A +43  2"},
        Case{{"0043", "", "1", "Wien", "2"}, {0, 0, 0}, "Wien 1 2"}, Case{{"", "", "", "", " "}, {0, 0, 0}, ""}})
    EXPECT_EQ(numbers.GetNumberFormated(part[0], part[1], part[2], part[3], part[4], style[0], style[1], style[2]),
              shown);
  settings.General.NumberFormatIndexState = settings.General.NumberFormatIndexNumber = 2;
  EXPECT_EQ(numbers.GetNumberFormated("0043", "", "1", "", "2345"), "00 43  1 23 45");
}

TEST_F(NumbersTest, TheSpeedBufferOutlivesTheProgramWithItsShownTexts) {
  for (const char* number : {"089123456", "0043123456", "0891|x", "0892\r\n089|y|z|"})
    numbers.GetOVW(number);
  numbers.SpeedBuffer_OVW_Save();
  EXPECT_EQ(store.Content(kCache),
            "089123456|München 089 123456|München|089 123456|089|\r\n"
            "0043123456|Wien (Österreich) +43  1 23456|Wien (Österreich)|+43  1 23456|00431|\r\n"_ansi);
  store.AddFile(kCache, store.Content(kCache) +
                            "no record\nLF|only|here||\n030|\n||no number|||\n0301234|too|few\n"
                            "089123456|second|a|b|c|");
  numbers.SpeedBuffer_OVW_Clear();
  numbers.SpeedBuffer_OVW_Load();
  EXPECT_EQ(numbers.SpeedBuffer_OVW_Count(), 5u);
  EXPECT_EQ(Shown("089123456"), "089||München 089 123456|089 123456|München||"_ansi) << "the first record counts";
  EXPECT_EQ(numbers.GetOVW("0301234").VW_Only, "0301") << "a record without code is analysed anew";
}

TEST_F(NumbersTest, TheProviderTableLosesOneLeadingZeroEachTimeThatALineIsLookedAt) {
  const std::string base = "/program/base/provider/";
  store.AddFile(base + "provider_49.ini",
                "; networks\r\n [x]\r\n0151 = a.png=x\r\n152=b.png\r\n00160=c.png\r\n17=gone.png\r\n");
  for (const char* image : {"a.png", "b.png", "c.png"})
    store.AddFile(base + "images/" + image, "x");
  numbers.LoadProvider();
  EXPECT_EQ(numbers.Get_ProviderFile("0160123"), "") << "the key is 0160 so far";
  for (const auto& [number, image] :
       Arrows({"0160123 -> c.png", "0151234 -> a.png", "9152234 -> b.png", "0171234 ->", "->"}))
    EXPECT_EQ(numbers.Get_ProviderFile(number), image.empty() ? "" : base + "images/" + image) << number;
}

TEST_F(NumbersTest, AFlagIsThatOfTheLastFittingCountryThatHasOne) {
  const std::string images = "/program/base/states/images/";
  store.AddFile(images + "at.png", "x");
  for (const auto& [number, flag] : Arrows({"0043999123 -> at.png", "0049123 ->", "043123 ->"}))
    EXPECT_EQ(numbers.Get_StateFlagFile(number), flag.empty() ? "" : images + flag) << number;
  store.AddFile(images + "xx.png", "x");
  EXPECT_EQ(numbers.Get_StateFlagFile("0043999123"), images + "xx.png");
}

}  // namespace
}  // namespace vorlix
