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
  struct Case {
    const char *country, *number, *place;
  };
  constexpr Case kCases[] = {
      {"0049", "301234567", "Berlin"},
      {"0049", "4012345", "Hamburg"},
      {"0049", "8912345", "München"},
      {"0049", "6211234", "Mannheim/Ludwigshafen am Rhein"},
      {"0049", "4651123", "Sylt"},
      {"0049", "46521", ""},
      {"0049", "7602123", "Oberried Breisgau"},
      {"0049", "760312", ""},
      {"0049", "3305212", ""},
      {"0049", "3392712", ""},
      {"0049", "3305312", "Zehlendorf Kreis Oberhavel"},
      {"0049", "1511234567", "Mobilfunk"},
      {"0049", "16312345", "Mobilfunk"},
      {"0049", "16412345", "Funkruf"},
      {"0049", "8001234567", "kostenfrei"},
      {"0049", "1805123", "Service"},
      {"0049", "321234", "Nationale Teilnehmerrufnummer"},
      {"0043", "112345", "Wien"},
      {"0043", "6641234", "Mobilfunk"},
      {"0043", "662123", "Salzburg"},
      {"0041", "441234567", "Zürich"},
      {"0041", "791234567", "Mobilfunk"},
      {"0033", "388123456", "Straßburg"},
      {"0048", "221234567", "Warschau"},
      {"001", "2125550100", "New York, NY"},
      {"0044", "2079460000", "London"},
      {"0032", "21234567", "Brüssel"},
  };
  for (const Case& each : kCases) {
    const auto areas = Areas(kBase / "areacodes" / ("area_" + std::string(each.country) + ".codes"));
    const AreaRow* row = areas.Find(each.number);
    EXPECT_EQ(row == nullptr ? "" : ToUtf8(row->Name), each.place) << each.country << " " << each.number;
  }
  const CodeTable<StateRow> states = States();
  constexpr std::pair<const char*, const char*> kCountries[] = {{"004930123", "Deutschland"},
                                                                {"0043112", "Österreich"},
                                                                {"0012125550100", "Vereinigte Staaten"},
                                                                {"0012425550", "Bahamas"},
                                                                {"0014165550", "Kanada"},
                                                                {"0074951234", "Russland"},
                                                                {"0077271234", "Kasachstan"},
                                                                {"0039066982", "Vatikanstadt"},
                                                                {"0039061234", "Italien"},
                                                                {"0088216123", "Satellitenfunk Thuraya"}};
  for (const auto& [number, country] : kCountries) {
    const StateRow* row = states.Find(number);
    EXPECT_EQ(row == nullptr ? "" : ToUtf8(row->Name), country) << number;
  }
}

TEST(ShippedTables, KnowTheNetworksOfMobileNumbers) {
  for (const auto& file : Files("provider", ".ini")) {
    std::set<std::string> keys;
    for (const std::string& line : Split(Whole(file), kLineEnd)) {
      if (line.empty() || line[0] == ';') continue;
      const auto fields = Split(line, "=");
      ASSERT_EQ(fields.size(), 2U) << file << ": " << line;
      EXPECT_TRUE(IsDigits(fields[0]) && keys.insert(fields[0]).second) << file << ": " << line;
      EXPECT_TRUE(fields[1].ends_with(".png")) << file << ": " << line;
    }
  }
  Provider germany(Whole(kBase / "provider" / "provider_49.ini"));
  EXPECT_EQ(germany.ImageOf("01711234567"), "telekom.png");
  EXPECT_EQ(germany.ImageOf("01521234567"), "lycamobile.png");
  EXPECT_EQ(germany.ImageOf("0301711234"), "");
  EXPECT_EQ(Provider(Whole(kBase / "provider" / "provider_43.ini")).ImageOf("06641234567"), "a1.png");
  EXPECT_EQ(Provider(Whole(kBase / "provider" / "provider_41.ini")).ImageOf("0791234567"), "swisscom.png");
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
              testing::ElementsAre("01.01. Neujahr", "03.04. Karfreitag", "05.04. Ostersonntag", "06.04. Ostermontag",
                                   "01.05. Tag der Arbeit", "14.05. Christi Himmelfahrt", "24.05. Pfingstsonntag",
                                   "25.05. Pfingstmontag", "03.10. Tag der Deutschen Einheit",
                                   "25.12. 1. Weihnachtstag", "26.12. 2. Weihnachtstag"));
  EXPECT_THAT(room.Load("49", false), IsSupersetOf({"16.02. Rosenmontag", "18.11. Buß- und Bettag (SN)",
                                                    "24.12. Heiligabend", "31.12. Silvester"}));
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
