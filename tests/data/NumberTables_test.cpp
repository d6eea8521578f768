#include "data/NumberTables.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "fakes/DataRoom.h"

namespace vorlix {
namespace {

// What the index has to answer, in its plainest form.
std::size_t Walk(const std::vector<std::string>& codes, std::string_view number, std::size_t longest) {
  for (std::size_t i = codes.size(); i-- > 0;) {
    if (codes[i].size() <= longest && number.starts_with(codes[i])) return i;
  }
  return PrefixIndex::kNoRow;
}

std::string RandomText(std::mt19937& random, std::string_view alphabet, std::size_t longest) {
  std::string text(random() % (longest + 1), ' ');
  for (char& character : text)
    character = alphabet[random() % alphabet.size()];
  return text;
}

void ExpectTheWalk(const std::vector<std::string>& codes, const std::vector<std::string>& numbers,
                   std::size_t longest = std::string::npos) {
  std::vector<AreaRow> rows;
  for (const std::string& code : codes)
    rows.push_back({code, {}});
  const CodeTable<AreaRow> table(rows, longest);
  for (const std::string& number : numbers) {
    const AreaRow* row = table.Find(number);
    const std::size_t walked = Walk(codes, number, longest);
    ASSERT_EQ(row, walked == PrefixIndex::kNoRow ? nullptr : &table.Rows()[walked]) << number;
  }
}

TEST(NumberTables, TheOrderOfTheRowsDecidesAsInAWalkFromTheEnd) {
  const std::vector<std::string> numbers = {
      "", "0", "3", "30", "301", "3012345", "33", "ab", "abc", "\xE4", "301234", "30123456", std::string("30\0", 3)};
  ExpectTheWalk({}, numbers);
  ExpectTheWalk({"30", "3", "301", "30"}, numbers);
  ExpectTheWalk({"301", "30", "3", ""}, numbers);
  ExpectTheWalk({"", "30", "a", "ab", "\xE4", "x", std::string("30\0", 3), "30"}, numbers);
  ExpectTheWalk({"1234567", "12345678", "123456781", "123456789"},
                {"1234567815", "123456780", "12345678", "123456789"});
  ExpectTheWalk({"3012345", "30123456", "301234567", "3"}, numbers, 7);
}

TEST(NumberTables, ShuffledAndOverlappingTablesGiveTheAnswerOfTheWalk) {
  std::mt19937 random(7);
  for (const std::string_view alphabet :
       {std::string_view("01"), std::string_view("0123456789"), std::string_view("1a|\0\xFF", 5)}) {
    for (int round = 0; round < 60; ++round) {
      std::vector<std::string> codes, numbers;
      for (int i = 0; i < round; ++i)
        codes.push_back(RandomText(random, alphabet, 11));
      for (int i = 0; i < 100; ++i)
        numbers.push_back(RandomText(random, alphabet, 14));
      numbers.insert(numbers.end(), codes.begin(), codes.end());
      ExpectTheWalk(codes, numbers, round % 3 == 0 ? 7 : std::string::npos);
    }
  }
}

TEST(NumberTables, ReadsWhatAHandHasWritten) {
  const auto rows = ReadAreas(
      "\xEF\xBB\xBF; a comment\r\n30|Berlin\n\n 40 | Hamburg |more\r\n;50|no\r\n89\r\n|nameless\r\n\x01|a\tb\rc|\r\n"
      "7|cut");
  std::string read;
  for (const AreaRow& row : rows)
    read += row.Code + "=" + row.Name + " ";
  EXPECT_EQ(read, "30=Berlin 40=Hamburg 89= 7=cut ");

  const auto states = ReadStates("0049|DE| Deutschland |de.png|x\r\n0033\r\n");
  ASSERT_EQ(states.size(), 2u);
  EXPECT_EQ(states[0].second + states[0].Name + states[0].Flag, "DEDeutschlandde.png");
  EXPECT_EQ(states[1].Code + states[1].Flag, "0033");

  EXPECT_EQ(ReadAreas("1|" + std::string(1'000'000, 'x') + "\n2|b").size(), 2u);
}

TEST(NumberTables, ATableWithoutRecordsHasOneEmptyRowThatNoNumberFinds) {
  for (const auto& table : {CodeTable<AreaRow>(), CodeTable(ReadAreas("; nothing\r\n"))}) {
    ASSERT_EQ(table.Rows().size(), 1u);
    EXPECT_EQ(table.Find("030123"), nullptr);
    EXPECT_FALSE(table.HasRecords());
  }
}

TEST(ForeignAreas, ReadsAFileOnceUntilItChanges) {
  DataRoom room;
  ForeignAreas areas(room.files, room.folders);
  const std::string path = "/program/base/areacodes/area_0043.codes";
  const auto name = [&](std::string_view number) {
    const CodeTable<AreaRow>* table = areas.Load("0043");
    const AreaRow* row = table == nullptr ? nullptr : table->Find(number);
    return row == nullptr ? "nothing" : row->Name;
  };
  EXPECT_EQ(name("1234"), "nothing");
  room.store.AddFile(path, "1|Wien\r\n");
  EXPECT_EQ(name("1234"), "Wien");
  EXPECT_EQ(areas.Load("43"), areas.Load("0043"));
  EXPECT_EQ(room.store.Count(MemoryFileStore::Operation::kRead), 1);

  room.store.AddFile(path, "1|Vienna\r\n");
  EXPECT_EQ(name("1234"), "Vienna");
  ASSERT_TRUE(room.store.Remove(path));
  EXPECT_EQ(name("1234"), "nothing");

  room.store.AddFile(path, "1|Wien\r\n");
  room.store.Fail(MemoryFileStore::Operation::kRead, EIO, {}, 1);
  EXPECT_EQ(name("1234"), "nothing");
  EXPECT_EQ(name("1234"), "Wien") << "a file that could not be read is tried again";
  room.store.AddFile(path, "; no row\r\n");
  EXPECT_EQ(areas.Load("43"), nullptr);
  EXPECT_EQ(areas.Load("00../x"), nullptr);
}

}  // namespace
}  // namespace vorlix
