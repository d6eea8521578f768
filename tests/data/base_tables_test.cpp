// The tables as shipped: no row hides another, and what a user looks for is found.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/Holidays.h"
#include "data/NumberTables.h"
#include "fakes/Arrows.h"
#include "fakes/DataRoom.h"
#include "services/ansi.h"
#include "services/ini_document.h"
#include "services/text.h"

namespace vorlix {
namespace {

namespace fs = std::filesystem;

const fs::path kBase = fs::path(VORLIX_TEST_DATA) / ".." / ".." / "base";

std::string Whole(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  EXPECT_TRUE(in) << file;
  return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<fs::path> Files(const char* folder, const char* extension) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(kBase / folder)) {
    if (entry.path().extension() == extension) files.push_back(entry.path());
  }
  EXPECT_FALSE(files.empty()) << folder;
  return files;
}

CodeTable<StateRow> States() {
  return CodeTable<StateRow>(ReadStates(Whole(kBase / "states" / "state.codes")));
}
CodeTable<AreaRow> Areas(const fs::path& file) {
  return CodeTable<AreaRow>(ReadAreas(Whole(file)));
}

// True for a pair of bytes that is one letter in UTF-8 and no word of any language in single bytes.
bool LooksLikeUtf8(const std::string& line) {
  return std::ranges::adjacent_find(line, [](char a, char b) { return a == '\xC3' && (b & 0xC0) == 0x80; }) !=
         line.end();
}

TEST(ShippedTables, AreSingleByteTextInLinesThatEndWithCarriageReturns) {
  const std::string noCharacter = "\x7F\x81\x8D\x8F\x90\x9D";
  auto files = Files("areacodes", ".codes");
  for (const auto& more : {Files("states", ".codes"), Files("provider", ".ini"), Files("holidays", ".ini")})
    files.insert(files.end(), more.begin(), more.end());
  for (const auto& file : files) {
    const std::string text = Whole(file);
    EXPECT_TRUE(text.ends_with(kLineEnd)) << file;
    for (const std::string& line : Split(text, kLineEnd)) {
      EXPECT_EQ(WithoutControls(line), line) << file;
      EXPECT_EQ(line.find_first_of(noCharacter), std::string::npos) << file << ": " << line;
      EXPECT_FALSE(LooksLikeUtf8(line)) << file << ": " << line;
    }
  }
}

// Each code leads to its own row: none stands twice, and none behind the longer ones that it begins.
template <class Row>
void ExpectEachRowIsFound(const CodeTable<Row>& table, const fs::path& file) {
  EXPECT_TRUE(table.HasRecords()) << file;
  for (const Row& row : table.Rows()) {
    EXPECT_TRUE(IsDigits(row.Code)) << file << ": " << row.Code;
    EXPECT_EQ(table.Find(row.Code), &row) << file << ": " << row.Code << " is hidden";
    EXPECT_FALSE(row.Name.empty()) << file << ": " << row.Code;
  }
}

// Every line that is no comment has so many fields: a "|" in a name would give it more.
void ExpectFields(const fs::path& file, std::size_t fields) {
  for (const std::string& line : Split(Whole(file), kLineEnd)) {
    if (line.empty() || line[0] == ';') continue;
    EXPECT_EQ(Split(line, "|").size(), fields) << file << ": " << line;
  }
}

TEST(ShippedTables, NameAllCountriesOnceEachWithLettersAndFlag) {
  const CodeTable<StateRow> states = States();
  ExpectEachRowIsFound(states, "state.codes");
  ExpectFields(kBase / "states" / "state.codes", 4);
  EXPECT_GT(states.Rows().size(), 230U);
  for (const StateRow& row : states.Rows()) {
    EXPECT_TRUE(row.Code.starts_with("00")) << row.Code;
    EXPECT_TRUE(row.second.size() == 2 && Upper(row.second) == row.second) << row.Code;
    EXPECT_EQ(row.Flag, Lower(row.second) + ".png") << row.Code;
  }
}

TEST(ShippedTables, HaveAreasThatANumberCanMatchForListedCountriesOnly) {
  const CodeTable<StateRow> states = States();
  for (const auto& file : Files("areacodes", ".codes")) {
    const std::string country = file.stem().string().substr(std::string("area_").size());
    const StateRow* state = states.Find(country);
    ASSERT_TRUE(state != nullptr && state->Code == country) << file;
    ExpectFields(file, 2);
    const CodeTable<AreaRow> areas = Areas(file);
    ExpectEachRowIsFound(areas, file);
    for (const AreaRow& row : areas.Rows()) {
      EXPECT_FALSE(row.Code.starts_with('0')) << file << ": " << row.Code;
      EXPECT_LT(row.Code.size() + 1, 9U) << file << ": " << row.Code;
    }
  }
}

TEST(ShippedTables, KnowThePlacesOfNumbers) {
  // Each alphabet once, and numbers between two codes, which have no place.
  for (const auto& [number, place] :
       Arrows({"0049 301234567 -> Berlin", "0049 8912345 -> München", "0049 4651123 -> Sylt", "0049 46521 ->",
               "0049 760312 ->", "0049 3305212 ->", "0049 3305312 -> Zehlendorf Kreis Oberhavel",
               "0049 16412345 -> Funkruf", "0043 6641234 -> Mobilfunk", "0033 388123456 -> Straßburg",
               "001 2125550100 -> New York, NY"})) {
    const std::size_t blank = number.find(' ');
    const auto areas = Areas(kBase / "areacodes" / ("area_" + number.substr(0, blank) + ".codes"));
    const AreaRow* row = areas.Find(number.substr(blank + 1));
    EXPECT_EQ(row == nullptr ? "" : ToUtf8(row->Name), place) << number;
  }
  const CodeTable<StateRow> states = States();
  for (const auto& [number, country] :
       Arrows({"0012125550100 -> Vereinigte Staaten", "0014165550 -> Kanada", "0077271234 -> Kasachstan",
               "0039066982 -> Vatikanstadt", "0039061234 -> Italien"}))
    EXPECT_EQ(ToUtf8(states.Find(number)->Name), country) << number;
}

TEST(ShippedTables, KnowTheNetworksOfMobileNumbers) {
  for (const auto& file : Files("provider", ".ini")) {
    std::set<std::string> keys;
    for (const std::string& line : Split(Whole(file), kLineEnd)) {
      if (line.empty() || line[0] == ';') continue;
      const auto fields = Split(line, "=");
      EXPECT_TRUE(fields.size() == 2 && fields[1].ends_with(".png")) << file << ": " << line;
      EXPECT_TRUE(IsDigits(fields[0]) && keys.insert(fields[0]).second) << file << ": " << line;
    }
  }
  Provider germany(Whole(kBase / "provider" / "provider_49.ini"));
  EXPECT_EQ(germany.ImageOf("01521234567") + germany.ImageOf("0301711234"), "lycamobile.png");
}

struct HolidayRoom : DataRoom {
  // Observed and other holidays of 2026, "date name".
  std::vector<std::string> Load(const char* country, bool observed) {
    const std::string file = "holiday_" + std::string(country) + ".ini";
    store.AddFile("/vorlix/data/holidays/" + file, Whole(kBase / "holidays" / file));
    clock.SetNow(DateTime::FromCivil(2026, 6, 1));
    settings.General.myVWL = country;
    holidays.LoadFeiertage();
    std::vector<std::string> days;
    for (const Holiday& row : holidays.Rows()) {
      EXPECT_FALSE(row.Date.empty() || row.Name.empty()) << file << ": " << row.Source;
      if (row.Observed == observed) days.push_back(row.Date + " " + ToUtf8(row.Name));
    }
    return days;
  }
  Settings settings;
  Holidays holidays{{ini, store, folders, settings, clock}};
};

TEST(ShippedTables, HaveTheHolidaysOfTheYear) {
  using testing::Contains;
  using testing::IsSupersetOf;
  HolidayRoom room;
  EXPECT_THAT(room.Load("49", true),
              testing::AllOf(testing::SizeIs(11), IsSupersetOf({"03.04. Karfreitag", "24.05. Pfingstsonntag",
                                                                "03.10. Tag der Deutschen Einheit"})));
  EXPECT_THAT(room.Load("49", false), IsSupersetOf({"16.02. Rosenmontag", "18.11. Buß- und Bettag (SN)"}));
  EXPECT_THAT(room.Load("43", true), IsSupersetOf({"04.06. Fronleichnam", "26.10. Nationalfeiertag"}));
  EXPECT_THAT(room.Load("41", true), Contains("01.08. Bundesfeier"));
}

TEST(ShippedTables, CountTheirHolidays) {
  for (const auto& file : Files("holidays", ".ini")) {
    const auto entries = IniDocument(Whole(file)).Section("Feiertage");
    ASSERT_FALSE(entries.empty()) << file;
    EXPECT_EQ(entries[0], std::pair(std::string("count"), std::to_string(entries.size() - 1))) << file;
    for (std::size_t i = 1; i < entries.size(); ++i) {
      EXPECT_EQ(entries[i].first, Padded(static_cast<long long>(i), 2)) << file;
      const auto fields = Split(entries[i].second, ";");
      EXPECT_TRUE(fields.size() == 3 && (fields[2] == "0" || fields[2] == "1")) << file << ": " << entries[i].second;
    }
  }
}

}  // namespace
}  // namespace vorlix
