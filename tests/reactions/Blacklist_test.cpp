#include "reactions/Blacklist.h"

#include <array>

#include <gmock/gmock.h>

#include "fakes/DataRoom.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

constexpr const char* kFile = "/vorlix/data/blacklist.dat";

class BlacklistTest : public testing::Test, protected DataRoom {
 protected:
  BlacklistTest() {
    list.ReloadWindow([this] { ++reloads; });
  }
  std::vector<std::string> Read(const std::string& text) {
    store.AddFile(kFile, text);
    list.Load();
    std::vector<std::string> items;
    for (const BlacklistItem& item : list.Items()) {
      items.push_back(item.Number + "/" + item.MSN + "/" + item.Name);
    }
    return items;
  }

  int reloads = 0;
  Blacklist list{{files, folders, messages}};
};

TEST_F(BlacklistTest, ReadsTheFileWithItsOldHabits) {
  EXPECT_THAT(Read("0171|1|A"), ElementsAre("//"));  // no line end at all
  EXPECT_THAT(Read("0171|1|A|x|y\r\n*55||B\r\n"), ElementsAre("0171/1/A", "*55//B"));
  EXPECT_THAT(Read("0171|1|A\r\n0172\r\n"), ElementsAre("0171/1/A", "0172/alle/A"));
  EXPECT_EQ(ErrorLog(), "");
  EXPECT_THAT(Read("0172\r\n0171|1|A\r\n"), ElementsAre("0172/alle/", "0171/1/A"));
  EXPECT_THAT(ErrorLog(), HasSubstr(" + 9 + a number without fields"));
  // A blank line costs the last entry.
  EXPECT_THAT(Read("1||A\r\n\r\n2||B\r\n3||C\r\n"), ElementsAre("1//A", "//", "2//B"));
  EXPECT_THAT(Read(std::string("\0\xFF|\n|\r\n", 7)), SizeIs(2));  // LF alone ends a line too
}

TEST_F(BlacklistTest, WritesNumbersOnlyAndNoFieldCanForgeAnother) {
  list.Replace({{"alle", "0171", "A"}, {"", "", "no number"}, {"1;2", "*5|5", "x\r\n0800||y"}});
  EXPECT_EQ(store.Content(kFile), "0171||A\r\n*5 5|1;2|x  0800  y\r\n");
  EXPECT_EQ(list.Items().front().MSN, "");
}

TEST_F(BlacklistTest, ANumberIsAddedOnce) {
  list.FuncBlackList_NumberToList("", "nobody");
  EXPECT_FALSE(store.Exists(kFile));
  list.FuncBlackList_NumberToList("0171", std::string(31, 'n'));
  EXPECT_EQ(store.Content(kFile), "0171||" + std::string(30, 'n') + "\r\n");
  EXPECT_TRUE(list.Find("01715", "1"));
  list.FuncBlackList_NumberToList("0171", "again");
  EXPECT_THAT(list.Items(), SizeIs(1));
  EXPECT_THAT(boxes.shown, ElementsAre(HasSubstr("Blacklist 48: Ein Eintrag mit dieser Telefonnummer")));
  EXPECT_EQ(reloads, 2);
}

TEST_F(BlacklistTest, AFileThatCannotBeReadOrWrittenIsToldAndKept) {
  Read("0171||A\r\n");
  for (const auto fault : {MemoryFileStore::Operation::kRead, MemoryFileStore::Operation::kOverwrite}) {
    store.Fail(fault, EIO);
    list.Load();
    if (fault == MemoryFileStore::Operation::kRead) store.FailNothing();
    list.FuncBlackList_NumberToList("0172", "");
    EXPECT_EQ(store.Content(kFile), "0171||A\r\n");
    store.FailNothing();
  }
  EXPECT_THAT(boxes.shown, SizeIs(2));
}

TEST(BlacklistIndex, TheFirstEntryThatMatchesDecides) {
  const std::vector<BlacklistItem> items{{"12", "0171", ""}, {"", "*55", ""},   {"", "?11", ""},
                                         {"", "?", ""},      {"", "????1", ""}, {"123;456", "0171", ""},
                                         {"", "?1?2", ""},   {"", "01715", ""}, {"", "", ""}};
  const BlacklistIndex index(items);
  using Row = std::array<const char*, 3>;  // number and own number of a call; entry, plain text or its kind of pattern
  for (const auto& [number, MSN, match] :
       {Row{"0171", "1", "0p"}, Row{"0171", "", "0p"}, Row{"0171", "123", "5p"}, Row{"0171555", "456", "1*"},
        Row{"01715", "9", "7p"}, Row{"490171", "456", "-"}, Row{"2115", "9", "2?"}, Row{"1115", "9", "-"},
        Row{"12341", "9", "4?"}, Row{"123", "9", "-"}, Row{"?1?2", "9", "3p"}, Row{"xx?2", "9", "6?"},
        Row{"*55", "9", "1*"}, Row{"", "9", "-"}}) {
    const auto found = index.Find(number, MSN);
    EXPECT_EQ(found ? std::to_string(found->index) + "p*?"[static_cast<int>(found->kind)] : "-", match) << number;
  }
}

}  // namespace
}  // namespace vorlix
