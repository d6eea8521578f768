#include "data/modNumbers.h"

#include <gtest/gtest.h>

#include "core/null_ports.h"
#include "fakes/DataRoom.h"
#include "services/ansi.h"

namespace vorlix {
namespace {

constexpr std::string_view kCache = "/vorlix/data/cache.ovw";

struct OneOwnNumber : NoOwnNumbers {
  bool IsOwnNumber(const std::string& MSN) override { return MSN == "7654321"; }
};

struct Simulation : NoSimulationWindow {
  bool open = false;
  bool IsOpen() override { return open; }
};

struct NumberRoom : DataRoom {
  NumberRoom() {
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

TEST(fVW, OneNumberComesOutTheSameInEveryFormOfEverySource) {
  struct Case {
    int source;
    const char *myVWOP, *raw, *normal;
  };
  constexpr Case kCases[] = {
      {0, "0", "0301234567", "0301234567"},
      {0, "0", "00493012345670", "03012345670"},
      {0, "0", "+49301234567#", "0301234567#"},
      {0, "0", "0043112345", "0043112345"},
      {0, "0", "+43112345", "0043112345"},
      {0, "00", "00301234567", "0301234567"},
      {0, "00", "00049301234567", "0301234567"},
      {0, "00", "+49301234567", "0301234567"},
      {0, "00", "+43112345", "0043112345"},
      {0, "", "301234567", "0301234567"},
      {0, "", "+49301234567", "0301234567"},
      {0, "", "+43112345", "0043112345"},
      {0, "", "0301234567", "00301234567"},  // a wrong prefix garbles: that is why the program asks
      {16, "", "0301234567", "0301234567"},
      {16, "00", "0049301234567", "0301234567"},
      {32, "", "+49301234567", "0301234567"},
      {32, "", "0043112345", "0043112345"},
      {16, "", "1234567", "1234567"},
      {16, "", "000", "000"},  // internal
      {16, "", "00000", "00"},
      {16, "", "7654321", "7654321"},
      {7, "0", "0301234567", "00301234567"},
  };
  NumberRoom room;
  for (const Case& one : kCases) {
    room.settings.General.myVWOP = one.myVWOP;
    room.numbers.LastPrefix = one.myVWOP;
    EXPECT_EQ(room.numbers.fVW(one.source, one.raw), one.normal) << one.source << " '" << one.myVWOP << "' " << one.raw;
  }
  EXPECT_TRUE(room.boxes.shown.empty());
  for (const char* same : {"1234", "", "Unbekannt", "xUNBEKANNTx", "7654321"}) {
    EXPECT_EQ(room.numbers.fVW(0, same), same);
  }
  room.settings.General.TKnum = 9;
  EXPECT_EQ(room.numbers.fVW(16, "004930123"), "004930123");
}

TEST(fVW, FollowsTheSpecialRulesInTheirOrder) {
  struct Case {
    int cutt;
    const char* special;
    std::string raw, normal;
  };
  const Case cases[] = {
      {2, "", "990301234567", "0301234567"},
      {0, "*1", "*14930123456", "030123456"},
      {1, "9", "990301234567", "00301234567"},
      {1, "", "+49301234567", "049301234567"},
      {9, "", "12345", ""},
      {0, "", std::string(1'000'000, '+'), "00"},
      {0, "", "0" + std::string(50, '7'), "0" + std::string(31, '7')},
      {0, "99999999999999999999999999999999999", std::string(35, '9') + "1", "00"},
  };
  NumberRoom room;
  for (const Case& one : cases) {
    room.settings.General.SpezialCutt = one.cutt;
    room.settings.General.SpezialPrefix = one.special;
    EXPECT_EQ(room.numbers.fVW(16, one.raw), one.normal) << one.raw.substr(0, 40);
  }
}

TEST(fVW, AsksBeforeItCorrectsThePrefix) {
  NumberRoom room;
  std::string changed = "nothing";
  room.numbers.PrefixChanged = [&](const std::string& prefix) { changed = prefix; };
  room.settings.General.myVWOP = "0";
  room.boxes.answer = MsgBoxAnswer::kNo;
  EXPECT_EQ(room.numbers.fVW(0, "301234\n567"), "0301234\n567");
  ASSERT_EQ(room.boxes.shown.size(), 1u);
  EXPECT_EQ(room.boxes.shown[0],
            "Vorlix 36: Die richtige Angabe des Prefixes ist entscheidend für die Erkennung!\r\n"
            "Der übermittelte Anruf kommt vermutlich aus dem Inland!?\r\n\r\n  Übermittelte Nummer: 301234 567\r\n\r\n"
            "  Empfohlener Prefix für Rufe aus dem Inland: NICHTS\r\n\r\n"
            "Die empfohlene Einstellung übernehmen?"_ansi);
  EXPECT_EQ(room.settings.General.myVWOP, "0");

  room.boxes.answer = MsgBoxAnswer::kYes;
  EXPECT_EQ(room.numbers.fVW(0, "301234567"), "301234567");
  EXPECT_EQ(room.ini.GetSettStr("General", "myVWOP", "?"), "-");
  EXPECT_EQ(room.settings.General.myVWOP + changed, "");
  EXPECT_EQ(room.numbers.fVW(0, "301234567"), "0301234567") << "now it is known for a national number";

  room.settings.General.myVWOP = "00";
  room.numbers.LastPrefix = "0";
  EXPECT_EQ(room.numbers.fVW(0, "0301234567"), "0301234567");
  EXPECT_NE(room.boxes.shown.back().find(": \"0\"\r\n"), std::string::npos);
  EXPECT_EQ(room.ini.GetSettStr("General", "myVWOP", "?") + changed, "00");

  const auto asked = room.boxes.shown.size();
  room.settings.General.myVWOP = "00";
  room.settings.General.PrefixAutoCheck = false;
  EXPECT_EQ(room.numbers.fVW(0, "0301234567"), "301234567");
  room.settings.General.PrefixAutoCheck = true;
  room.simulation.open = true;
  EXPECT_EQ(room.numbers.fVW(0, "0301234567"), "0301234567");
  EXPECT_EQ(room.boxes.shown.size(), asked);
}

TEST(GetOVW, TakesANumberApartAndNamesItsPlace) {
  const std::pair<std::string, std::string_view> cases[] = {
      {"1234", "||1234|1234|||"},
      {"", "||||||"},
      {"Unbekannt", "||Unbekannt|Unbekannt|||"},
      {"089123456", "089|123456|München 089 123456|089 123456|München|München|"_ansi},
      {"0301", "||0301|0301|||"},
      {"03012345", "0301|2345|0301 2345|0301 2345|||"},
      {"0302345", "03|02345|Drei 03 02345|03 02345|Drei|Drei|"},
      {"01234567", "||01234567|01234567|Unbekannt||"},
      {"0123456789", "01234567|89|gerade noch 01234567 89|01234567 89|gerade noch|gerade noch|"},
      {"0043123456", "00431|23456|Wien (Österreich) +43  1 23456|+43  1 23456|Wien (Österreich)|Wien|Österreich"_ansi},
      {"004321234", "00432|1234|Österreich +43  1234|+43  2 1234| (Österreich)||Österreich"_ansi},
      {"00431", "00431||Wien (Österreich) +43  1|+43  1|Wien (Österreich)|Wien|Österreich"_ansi},
      {"0043999123", "0043999|123|Nirgendwo +43999  123|+43999  123|Nirgendwo||Nirgendwo"},
      {"0043723456", "0043|723456|Österreich +43  723456|+43  723456|Österreich||Österreich"_ansi},
      {"0012125550100", "001|2125550100|USA +1  2125550100|+1  2125550100|USA||USA"},
      {"0099123456", "||0099123456|0099123456|Unbekannt||"},
      {"5551234", "||5551234|5551234|Unbekannt||"},
  };
  NumberRoom room;
  std::size_t told = 0;
  room.numbers.CountChanged = [&](std::size_t count) { told = count; };
  for (const auto& [number, shown] : cases) {
    EXPECT_EQ(room.Shown(number), shown) << number;
    EXPECT_EQ(room.Shown(number), shown) << number << " from the speed buffer";
  }
  EXPECT_EQ(room.numbers.SpeedBuffer_OVW_Count(), 10u) << "what is not found is not kept";
  EXPECT_EQ(told, 10u);
}

TEST(GetOVW, LeavesOutTheNamesThatNobodyWants) {
  NumberRoom room;
  room.settings.General.NoIVW = room.settings.General.NoNVW = true;
  EXPECT_EQ(room.Shown("0043123456"), "00431|23456|+43  1 23456|+43  1 23456|||");
  EXPECT_EQ(room.Shown("0012125550100"), "001|2125550100|+1  2125550100|+1  2125550100|||");
  EXPECT_EQ(room.Shown("089123456"), "089|123456|089 123456|089 123456|||");
  EXPECT_EQ(room.numbers.SpeedBuffer_OVW_Count(), 3u);
}

TEST(GetOVW, EndsWithTheUnknownWordWithoutTables) {
  NumberRoom room;
  room.settings.General.myVWL = "99";
  ASSERT_TRUE(room.store.Remove("/program/base/states/state.codes"));
  room.numbers.loadLVW();
  room.numbers.loadOVW("99");
  EXPECT_FALSE(room.numbers.loadAOVW("99"));
  EXPECT_TRUE(room.numbers.loadAOVW("0043"));
  for (const char* number : {"0043123456", "089123456"}) {
    EXPECT_EQ(room.numbers.GetOVW(number).VW_FormatedLocation, "Unbekannt");
  }
  EXPECT_TRUE(room.ErrorLog().empty());
}

TEST(GetOVW, TellsTheJournalWhileItLoadsAndKeepsNothingOfASimulation) {
  NumberRoom room;
  const auto noted = [&] {
    oDataCall call;
    call.DataNumber("089123456");
    room.journal.SpeedBuffer_Journal_Get(call);
    return call.VW_FormatedFull();
  };
  room.simulation.open = true;
  room.numbers.GetOVW("089123456");
  EXPECT_EQ(room.numbers.SpeedBuffer_OVW_Count(), 0u);
  room.simulation.open = false;
  room.numbers.GetOVW("089123456");
  EXPECT_EQ(noted(), "");
  room.flags.JournalLoading = true;
  room.numbers.GetOVW("089123456");
  EXPECT_EQ(noted(), "München 089 123456"_ansi) << "also from the speed buffer";
}

TEST(GetNumberFormated, ShowsEachPartInItsStyle) {
  struct Case {
    const char *state, *stateName, *city, *cityName, *number;
    int styles[3];
    const char* shown;
  };
  constexpr Case kCases[] = {
      {"0043", "", "1", "", "23456", {0, 0, 0}, "+43  1 23456"},
      {"43", "", "01", "", "23456", {1, 1, 0}, "0043  01 23456"},
      {"0043", "", "1", "", "23456", {2, 2, 0}, "00 43  (0)1 23456"},
      {"", "", "030", "", "1234567", {0, 0, 1}, "030 123 45 67"},
      {"", "", "30", "", "1234567", {0, 1, 2}, "030 12 34 56 7"},
      {"", "", "30", "", "1234567", {0, 2, 0}, "(0)30 1234567"},
      {"", "", "", "", "12345678901234567", {0, 0, 1}, "123 45 67 89 01 23 45 67"},
      {"", "", "", "", "1234567890123456789", {0, 0, 1}, "123 45 67 89 01 23 45 6789"},
      {"", "", "", "", "12345678901234567", {0, 0, 2}, "12 34 56 78 90 12 34 567"},
      {"", "", "", "", "123", {0, 0, 1}, "123"},
      {"0043", "A", "1", "Wien", "2", {0, 0, 0}, "Wien (A) +43  1 2"},
      {"0043", "A", "1", "", "2", {0, 0, 0}, "A +43  2"},
      {"0043", "", "1", "Wien", "2", {0, 0, 0}, "Wien 1 2"},
      {"0043", "A", "1", "Wien", "", {0, 0, 0}, "Wien (A) +43  1"},
      {"", "", "30", "Berlin", "2", {0, 0, 0}, "Berlin 030 2"},
      {"0043", "", "", "", "", {0, 0, 0}, "+43"},
      {"", "", "", "", " ", {0, 0, 0}, ""},
  };
  NumberRoom room;
  for (const Case& one : kCases) {
    EXPECT_EQ(room.numbers.GetNumberFormated(one.state, one.stateName, one.city, one.cityName, one.number,
                                             one.styles[0], one.styles[1], one.styles[2]),
              one.shown);
  }
  room.settings.General.NumberFormatIndexState = room.settings.General.NumberFormatIndexNumber = 2;
  EXPECT_EQ(room.numbers.GetNumberFormated("0043", "", "1", "", "2345"), "00 43  1 23 45");
}

TEST(SpeedBuffer, OutlivesTheProgramWithItsShownTexts) {
  NumberRoom room;
  for (const char* number : {"089123456", "0043123456", "0891|x", "0892\r\n089|y|z|"}) {
    room.numbers.GetOVW(number);
  }
  room.numbers.SpeedBuffer_OVW_Save();
  EXPECT_EQ(room.store.Content(std::string(kCache)),
            "089123456|München 089 123456|München|089 123456|089|\r\n"
            "0043123456|Wien (Österreich) +43  1 23456|Wien (Österreich)|+43  1 23456|00431|\r\n"_ansi);

  NumberRoom next;
  next.store.AddFile(std::string(kCache), room.store.Content(std::string(kCache)) + "no record\nLF|only|here||\n" +
                                              "030|\n||no number|||\n0301234|too|few\n089123456|second|a|b|c|");
  next.numbers.SpeedBuffer_OVW_Load();
  EXPECT_EQ(next.numbers.SpeedBuffer_OVW_Count(), 5u);
  EXPECT_EQ(next.Shown("089123456"), "089||München 089 123456|089 123456|München||"_ansi) << "the first record counts";
  EXPECT_EQ(next.numbers.GetOVW("0301234").VW_Only, "0301") << "a record without code is analysed anew";
  next.numbers.SpeedBuffer_OVW_Clear();
  EXPECT_EQ(next.numbers.GetOVW("089123456").VW_NumberOnly, "123456");

  next.store.Fail(MemoryFileStore::Operation::kOverwrite, ENOSPC);
  next.numbers.SpeedBuffer_OVW_Save();
  EXPECT_NE(next.ErrorLog().find("SpeedBuffer_OVW_Save"), std::string::npos);
}

TEST(SpeedBuffer, DeletesACacheInTheOldFormat) {
  const std::string tenLines = "0891|a; b|c|d|089|\r\n;x\r\nabc;d\r\n5;\r\n\r\n\r\n\r\n\r\n\r\n\r\n";
  const std::pair<std::string, bool> cases[] = {
      {"0891234;Berlin;x\r\n", true}, {tenLines + "030;Berlin\r\n", true}, {tenLines + "\r\n030;Berlin\r\n", false}};
  for (const auto& [text, old] : cases) {
    NumberRoom room;
    room.store.AddFile(std::string(kCache), text);
    room.numbers.SpeedBuffer_OVW_Load();
    EXPECT_EQ(room.store.Exists(std::string(kCache)), !old) << text;
    EXPECT_EQ(room.numbers.SpeedBuffer_OVW_Count(), old ? 0u : 1u);
    EXPECT_TRUE(room.boxes.shown.empty());
  }
}

TEST(Images, TheProviderTableLosesOneLeadingZeroEachTimeThatALineIsLookedAt) {
  NumberRoom room;
  room.store.AddFile(
      "/program/base/provider/provider_49.ini",
      "; networks\r\n [x]\r\n0151 = a.png=x\r\n152=b.png\r\n00160=c.png\r\n115=d.png\r\n17=gone.png\r\n");
  for (const char* image : {"a.png", "b.png", "c.png", "d.png"}) {
    room.store.AddFile(std::string("/program/base/provider/images/") + image, "x");
  }
  room.numbers.LoadProvider();
  const std::string images = "/program/base/provider/images/";
  EXPECT_EQ(room.numbers.Get_ProviderFile("0160123"), "") << "the key is 0160 so far";
  EXPECT_EQ(room.numbers.Get_ProviderFile("0160123"), images + "c.png");
  EXPECT_EQ(room.numbers.Get_ProviderFile("0151234"), images + "a.png");
  EXPECT_EQ(room.numbers.Get_ProviderFile("9152234"), images + "b.png");
  EXPECT_EQ(room.numbers.Get_ProviderFile("115"), images + "d.png");
  EXPECT_EQ(room.numbers.Get_ProviderFile("0171234"), "") << "no such image";
  EXPECT_EQ(room.numbers.Get_ProviderFile(""), "");
}

TEST(Images, AFlagIsThatOfTheLastFittingCountryThatHasOne) {
  NumberRoom room;
  const std::string images = "/program/base/states/images/";
  room.store.AddFile(images + "at.png", "x");
  EXPECT_EQ(room.numbers.Get_StateFlagFile("0043123"), images + "at.png");
  EXPECT_EQ(room.numbers.Get_StateFlagFile("0043999123"), images + "at.png");
  EXPECT_EQ(room.numbers.Get_StateFlagFile("0049123"), "");
  EXPECT_EQ(room.numbers.Get_StateFlagFile("043123"), "");
  room.store.AddFile(images + "xx.png", "x");
  EXPECT_EQ(room.numbers.Get_StateFlagFile("0043999123"), images + "xx.png");
}

}  // namespace
}  // namespace vorlix
