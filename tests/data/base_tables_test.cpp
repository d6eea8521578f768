// The tables as shipped: no row hides another, and what a user looks for is found.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "data/Holidays.h"
#include "data/NumberTables.h"
#include "fakes/DataRoom.h"
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
  auto files = Files("areacodes", ".codes");
  for (const auto& more : {Files("states", ".codes"), Files("provider", ".ini"), Files("holidays", ".ini")})
    files.insert(files.end(), more.begin(), more.end());
  for (const auto& file : files) {
    const std::string text = Whole(file);
    EXPECT_TRUE(text.ends_with(kLineEnd)) << file;
    for (const std::string& line : Split(text, kLineEnd)) {
      EXPECT_EQ(WithoutControls(line), line) << file;
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

TEST(ShippedTables, NameAllCountriesOnceEachWithLettersAndFlag) {
  const CodeTable<StateRow> states = States();
  ExpectEachRowIsFound(states, "state.codes");
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
    const CodeTable<AreaRow> areas = Areas(file);
    ExpectEachRowIsFound(areas, file);
    for (const AreaRow& row : areas.Rows()) {
      EXPECT_FALSE(row.Code.starts_with('0')) << file << ": " << row.Code;
      EXPECT_LT(row.Code.size() + 1, 9U) << file << ": " << row.Code;
    }
  }
}

TEST(ShippedTables, CountTheirHolidaysAndHaveADayForEach) {
  for (const auto& file : Files("holidays", ".ini")) {
    const std::string country = file.stem().string().substr(std::string("holiday_").size());
    const auto entries = IniDocument(Whole(file)).Section("Feiertage");
    ASSERT_FALSE(entries.empty()) << file;
    EXPECT_EQ(entries[0], std::pair(std::string("count"), std::to_string(entries.size() - 1))) << file;
    for (std::size_t i = 1; i < entries.size(); ++i)
      EXPECT_TRUE(entries[i].second.ends_with(";0") || entries[i].second.ends_with(";1")) << file << " " << i;
    DataRoom room;
    Settings settings;
    settings.General.myVWL = country;
    room.store.AddFile("/vorlix/data/holidays/" + file.filename().string(), Whole(file));
    Holidays holidays({room.ini, room.store, room.folders, settings, room.clock});
    holidays.LoadFeiertage();
    for (const Holiday& row : holidays.Rows())
      EXPECT_FALSE(row.Date.empty() || row.Name.empty()) << file << ": " << row.Source;
  }
}

}  // namespace
}  // namespace vorlix
