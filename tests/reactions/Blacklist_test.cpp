#include "reactions/Blacklist.h"

#include <array>
#include <random>

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
  EXPECT_THAT(Read(""), ElementsAre("//"));
  EXPECT_THAT(Read("0171|1|A"), ElementsAre("//"));  // no line end at all
  EXPECT_THAT(Read("0171|\r\n"), ElementsAre("0171//"));
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
  store.Fail(MemoryFileStore::Operation::kRead, EIO);
  list.Load();
  store.FailNothing();
  list.FuncBlackList_NumberToList("0172", "");
  EXPECT_EQ(store.Content(kFile), "0171||A\r\n");
  EXPECT_THAT(list.Items(), SizeIs(2));
  list.Load();
  store.Fail(MemoryFileStore::Operation::kOverwrite, ENOSPC);
  list.FuncBlackList_NumberToList("0172", "");
  EXPECT_EQ(store.Content(kFile), "0171||A\r\n");
  EXPECT_THAT(boxes.shown, SizeIs(2));
}

// The entry that was found and the kind of its match: 'p' plain, '*', '?'; "-" for none.
std::string Text(const std::optional<BlacklistMatch>& match) {
  return match ? std::to_string(match->index) + "p*?"[static_cast<int>(match->kind)] : "-";
}

// The rule as people tell it: entry after entry, first match wins.
std::optional<BlacklistMatch> Walk(const std::vector<BlacklistItem>& items, const std::string& number,
                                   const std::string& MSN) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    const std::string& entry = items[i].Number;
    if (entry.empty() || (!items[i].MSN.empty() && items[i].MSN.find(MSN) == std::string::npos)) continue;
    if (entry[0] == '*' && !number.empty() && number.find(entry.substr(1)) != std::string::npos) {
      return BlacklistMatch{i, BlacklistKind::kAnywhere};
    }
    if (entry[0] == '?') {
      const auto count = static_cast<std::size_t>(std::count(entry.begin(), entry.end(), '?'));
      const std::size_t found = count > number.size() ? std::string::npos : number.find(entry.substr(count), count - 1);
      if (found == count) return BlacklistMatch{i, BlacklistKind::kBehindFree};
    }
    if (number.starts_with(entry)) return BlacklistMatch{i, BlacklistKind::kPlain};
  }
  return std::nullopt;
}

TEST(BlacklistIndex, KnowsTheThreeKindsOfEntries) {
  using Row = std::array<const char*, 5>;  // entry with its own number, number and own number of the call, match
  for (const auto& [entry, entryMSN, number, MSN, match] : {
           Row{"0171", "", "0171555", "1", "0p"},
           Row{"0171", "", "490171", "1", "-"},
           Row{"*", "", "0", "1", "0*"},
           Row{"*", "", "", "1", "-"},
           Row{"*55", "", "0171555", "1", "0*"},
           Row{"?", "", "1", "1", "-"},
           Row{"?", "", "?1", "1", "0p"},
           Row{"?11", "", "1115", "1", "-"},
           Row{"?11", "", "2115", "1", "0?"},
           Row{"?1?2", "", "xx?2", "1", "0?"},
           Row{"????1", "", "123", "1", "-"},
           Row{"0171", "123;456", "0171", "456", "0p"},
           Row{"0171", "12", "0171", "123", "-"},
           Row{"0171", "12", "0171", "", "0p"},
       }) {
    const std::vector<BlacklistItem> items{{entryMSN, entry, ""}};
    EXPECT_EQ(Text(BlacklistIndex(items).Find(number, MSN)), match) << entry << " " << number;
  }
}

TEST(BlacklistIndex, GivesTheAnswerOfAWalkOverTheList) {
  std::mt19937 random(7);
  const auto text = [&random](std::size_t longest, std::string_view letters) {
    std::string result(random() % (longest + 1), '0');
    for (char& c : result)
      c = letters[random() % letters.size()];
    return result;
  };
  for (int round = 0; round < 400; ++round) {
    std::vector<BlacklistItem> items(random() % 12);
    for (BlacklistItem& item : items)
      item = {text(2, "12"), (random() % 3 == 0 ? "*" : random() % 2 == 0 ? "?" : "") + text(4, "012?*"), ""};
    const BlacklistIndex index(items);
    for (int call = 0; call < 40; ++call) {
      const std::string number = text(6, "012?"), MSN = text(1, "12");
      ASSERT_EQ(Text(index.Find(number, MSN)), Text(Walk(items, number, MSN))) << number;
    }
  }
}

}  // namespace
}  // namespace vorlix
