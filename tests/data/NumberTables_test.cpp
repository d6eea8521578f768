#include "data/NumberTables.h"

#include <random>

#include <gtest/gtest.h>

#include "fakes/DataRoom.h"

namespace vorlix {
namespace {

// What the table has to answer, in its plainest form.
const AreaRow* Walk(const std::vector<AreaRow>& rows, std::string_view number, std::size_t longest) {
  for (std::size_t i = rows.size(); i-- > 0;) {
    if (rows[i].Code.size() <= longest && number.starts_with(rows[i].Code)) return &rows[i];
  }
  return nullptr;
}

std::string RandomText(std::mt19937& random, std::string_view alphabet, std::size_t longest) {
  std::string text(random() % (longest + 1), ' ');
  for (char& character : text)
    character = alphabet[random() % alphabet.size()];
  return text;
}

TEST(NumberTables, TheOrderOfTheRowsDecidesAsInAWalkFromTheEnd) {
  std::mt19937 random(7);
  for (const std::string_view alphabet :
       {std::string_view("01"), std::string_view("0123456789"), std::string_view("1a|\0\xFF", 5)}) {
    for (int round = 1; round < 60; ++round) {
      const std::size_t longest = round % 3 == 0 ? 7 : std::string::npos;
      std::vector<std::string> numbers;
      std::vector<AreaRow> rows;
      for (int i = 0; i < round; ++i) {
        rows.push_back({RandomText(random, alphabet, 11), {}});
        numbers.push_back(rows.back().Code);
      }
      for (int i = 0; i < 100; ++i)
        numbers.push_back(RandomText(random, alphabet, 14));
      const CodeTable<AreaRow> table(rows, longest);
      for (const std::string& number : numbers)
        ASSERT_EQ(table.Find(number), Walk(table.Rows(), number, longest)) << number;
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
  EXPECT_FALSE(CodeTable(ReadAreas("; nothing\r\n")).HasRecords());
}

TEST(ForeignAreas, ReadsAFileOnceUntilItChanges) {
  DataRoom room;
  ForeignAreas areas(room.files, room.folders);
  const std::string path = "/program/base/areacodes/area_0043.codes";
  const auto name = [&] {
    const CodeTable<AreaRow>* table = areas.Load("0043");
    const AreaRow* row = table == nullptr ? nullptr : table->Find("1234");
    return row == nullptr ? "nothing" : row->Name;
  };
  EXPECT_EQ(name(), "nothing");
  room.store.AddFile(path, "1|Wien\r\n");
  EXPECT_EQ(name(), "Wien");
  EXPECT_EQ(areas.Load("43"), areas.Load("0043"));
  EXPECT_EQ(room.store.Count(MemoryFileStore::Operation::kRead), 1);

  room.store.AddFile(path, "1|Vienna\r\n");
  EXPECT_EQ(name(), "Vienna");
  ASSERT_TRUE(room.store.Remove(path));
  EXPECT_EQ(name(), "nothing");
  room.store.AddFile(path, "1|Wien\r\n");
  room.store.Fail(MemoryFileStore::Operation::kRead, EIO, {}, 1);
  EXPECT_EQ(name(), "nothing");
  EXPECT_EQ(name(), "Wien") << "a file that could not be read is tried again";
  EXPECT_EQ(areas.Load("00../x"), nullptr);
}

}  // namespace
}  // namespace vorlix
