#include "desktop/dialogs/BlacklistWindow.h"

#include <QTreeWidget>

#include <gmock/gmock.h>

#include "fakes/DataRoom.h"
#include "fakes/DialogRoom.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kFile = "/vorlix/data/blacklist.dat";

class BlacklistWindowTest : public testing::Test, protected DialogRoom, protected DataRoom {
 protected:
  BlacklistWindowTest() {
    store.AddFile(kFile, "0172||Bert\r\n0171|7|Carl\r\n");
    window.Attach(presenter);
    window.Open();
    list = Top()->findChild<QTreeWidget*>();
  }

  std::vector<std::string> Shown() const {
    std::vector<std::string> lines;
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
      const auto* item = list->topLevelItem(i);
      lines.push_back(FromQString(item->text(0) + "/" + item->text(1) + "/" + item->text(2)));
    }
    return lines;
  }
  void Trigger(int action) const { list->actions().at(action)->trigger(); }

  Settings settings;
  modSettings settingsStore{{ini, store, folders, clock, messages, {}}, settings};
  Blacklist blacklist{{files, folders, messages}};
  BlacklistWindow window{{settings.Dimensions.BlacklistLeft, settings.Dimensions.BlacklistTop,
                          settings.Dimensions.BlacklistWidth, settings.Dimensions.BlacklistHeight}};
  fEditBlacklist presenter{{window, blacklist, settingsStore, messages}};
  QTreeWidget* list = nullptr;
};

TEST_F(BlacklistWindowTest, EditsAddsRemovesAndSaves) {
  Press("Neu");
  Type("Name", "An|na");
  Press("OK");
  EXPECT_TRUE(IsMarked("Rufnummer"));
  Type("Rufnummer", "0800");
  Press("OK");
  Q_EMIT list->itemDoubleClicked(list->topLevelItem(1), 0);
  EXPECT_EQ(Field("bei Anruf an MSN")->text(), "7");
  Type("Name", "Karl");
  Press("OK");
  list->setCurrentItem(list->topLevelItem(0));
  Press("Entfernen");
  Press("OK");
  EXPECT_FALSE(Top());
  EXPECT_EQ(store.Content(kFile), "0171|7|Karl\r\n0800||An na\r\n");
  EXPECT_GT(settings.Dimensions.BlacklistWidth, 0);
}

TEST_F(BlacklistWindowTest, TheListsMenuDoesWhatTheMouseDoesAndLeavingItSavesNothing) {
  Trigger(3);  // by number
  EXPECT_THAT(Shown(), ElementsAre("0171/Carl/7", "0172/Bert/alle"));
  list->setCurrentItem(list->topLevelItem(1));
  Trigger(1);
  EXPECT_EQ(Field("Rufnummer")->text(), "0172");
  Press("Abbrechen");
  Trigger(2);
  EXPECT_THAT(Shown(), ElementsAre("0171/Carl/7"));
  Press("Info");
  EXPECT_THAT(boxes.shown, ElementsAre(HasSubstr(kFile)));
  Top()->close();
  EXPECT_FALSE(Top() || presenter.IsOpen());
  EXPECT_THAT(store.Content(kFile), HasSubstr("Bert"));
}

TEST_F(BlacklistWindowTest, NoTwoControlsHaveTheSameLetter) {
  Press("Neu");
  QStringList letters;
  for (const QWidget* one : Top()->findChildren<QWidget*>()) {
    const QString text = one->property("text").toString();
    if (text.contains('&')) letters << text.section('&', 1).left(1).toLower();
  }
  EXPECT_EQ(letters.size(), 5);
  EXPECT_EQ(letters.removeDuplicates(), 0);
}

}  // namespace
}  // namespace vorlix
