#include "screens/fEditBlacklist.h"

#include <gmock/gmock.h>

#include "fakes/DataRoom.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kFile = "/vorlix/data/blacklist.dat";
constexpr const char* kThree = "0172||Bert\r\n*55|7|anna\r\n0171||Carl\r\n";

class fEditBlacklistTest : public testing::Test, protected DataRoom, public fEditBlacklistView {
 protected:
  fEditBlacklistTest() {
    store.AddFile(kFile, kThree);
    list.ReloadWindow([this] { window.LoadBlackList(); });
    window.Form_Load();
  }

  void ShowLines(const std::vector<Line>& lines, int selection) override {
    shown.clear();
    for (const Line& line : lines) {
      shown.push_back(line[0] + "/" + line[1] + "/" + line[2]);
    }
    selected = selection;
  }
  void OpenInput(const std::string& text, int index) override { input = std::to_string(index) + " " + text; }
  void Close() override { window.Form_Unload(); }

  std::string Saved() {
    window.cmdEdit(fEditBlacklist::kOK);
    return store.Content(kFile);
  }
  void Remove(int line) {
    window.Select(line);
    window.DeleteKey();
  }

  std::vector<std::string> shown;
  int selected = 0;
  std::string input;
  Settings settings;
  modSettings settingsStore{{ini, store, folders, clock, messages, {}}, settings};
  Blacklist list{{files, folders, messages}};
  fEditBlacklist window{{*this, list, settingsStore, messages}};
};

TEST_F(fEditBlacklistTest, ShowsTheListAndEditsOneOfItsLines) {
  EXPECT_THAT(shown, ElementsAre("0172/Bert/alle", "*55/anna/7", "0171/Carl/alle"));
  window.cmdBlackList(fEditBlacklist::kEdit);
  EXPECT_EQ(input, "");  // no line is selected
  window.DoubleClick(1);
  EXPECT_EQ(input, "1 *55|7|anna");
  EXPECT_FALSE(window.InputReturn("|7|anna", 1));
  EXPECT_TRUE(window.InputReturn("*56\r\n", 1));
  EXPECT_EQ(Saved(), "0172||Bert\r\n*56  ||\r\n0171||Carl\r\n");
}

TEST_F(fEditBlacklistTest, ANewNumberIsTakenOnceAndWithItsWholeName) {
  window.cmdBlackList(fEditBlacklist::kNew);
  EXPECT_EQ(input, "-1 ");
  EXPECT_FALSE(window.InputReturn("0171", kNoLine));
  EXPECT_THAT(boxes.shown, ElementsAre(HasSubstr("bereits vorhanden")));
  EXPECT_FALSE(window.InputReturn("", kNoLine));
  const std::string name(31, 'n');
  EXPECT_TRUE(window.InputReturn("0800|alle|" + name + "|more", kNoLine));
  EXPECT_EQ(selected, 3);
  EXPECT_EQ(store.Content(kFile), kThree);
  EXPECT_EQ(Saved(), kThree + std::string("0800||") + name + "\r\n");
}

TEST_F(fEditBlacklistTest, AnEditFindsItsEntryInAListThatHasMovedMeanwhile) {
  window.ColumnClick(fEditBlacklist::kNumber);
  window.DoubleClick(1);
  EXPECT_EQ(input, "1 0171|alle|Carl");
  list.FuncBlackList_NumberToList("0800", "Dora");
  EXPECT_EQ(shown.back(), "0800/Dora/alle");
  EXPECT_TRUE(window.InputReturn("0173||Carl", 1));
  EXPECT_EQ(Saved(), "0172||Bert\r\n*55|7|anna\r\n0173||Carl\r\n0800||Dora\r\n");
  window.Form_Load();
  window.DoubleClick(0);
  Remove(0);
  EXPECT_TRUE(window.InputReturn("0174||Bert", 0));
  EXPECT_THAT(shown, ElementsAre("*55/anna/7", "0173/Carl/alle", "0800/Dora/alle", "0174/Bert/alle"));
}

TEST_F(fEditBlacklistTest, TheSelectionStaysWhereALineWasRemoved) {
  Remove(2);
  EXPECT_EQ(selected, 1);
  Remove(0);
  EXPECT_EQ(selected, 0);
  EXPECT_THAT(shown, ElementsAre("*55/anna/7"));
  Remove(0);
  EXPECT_EQ(selected, kNoLine);
  window.DeleteKey();
  EXPECT_EQ(Saved(), "");
}

TEST_F(fEditBlacklistTest, OnlyAChangeAndOnlyOKWriteTheFile) {
  window.ColumnClick(fEditBlacklist::kName);
  window.cmdEdit(fEditBlacklist::kOK);
  window.Form_Load();
  Remove(0);
  window.cmdEdit(fEditBlacklist::kCancel);
  EXPECT_EQ(store.Content(kFile), kThree);
  EXPECT_EQ(store.Count(MemoryFileStore::Operation::kOverwrite, "blacklist.dat"), 0);
}

TEST_F(fEditBlacklistTest, AColumnSortsWithoutCaseAndTurnsRoundTheSecondTime) {
  window.Select(0);
  window.ColumnClick(fEditBlacklist::kName);
  EXPECT_THAT(shown, ElementsAre("*55/anna/7", "0172/Bert/alle", "0171/Carl/alle"));
  EXPECT_EQ(selected, 1);
  window.ColumnClick(fEditBlacklist::kName);
  EXPECT_THAT(shown, ElementsAre("0171/Carl/alle", "0172/Bert/alle", "*55/anna/7"));
  window.ColumnClick(fEditBlacklist::kNumber);
  EXPECT_EQ(shown.front(), "*55/anna/7");
}

}  // namespace
}  // namespace vorlix
