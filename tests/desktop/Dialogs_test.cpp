// The windows whose presenters are tested elsewhere: their controls reach them, and show what they say.
#include <QTreeWidget>

#include <gmock/gmock.h>

#include "desktop/dialogs/AreaCodeDialog.h"
#include "desktop/dialogs/BlacklistWindow.h"
#include "desktop/dialogs/FirstStartDialog.h"
#include "desktop/dialogs/SimulationDialog.h"
#include "fakes/DataRoom.h"
#include "fakes/DialogRoom.h"
#include "fakes/LineFakes.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kRouter = "Name oder Adresse der FRITZ!Box";
constexpr const char* kServer = "Name oder Adresse des NCID-Servers";
constexpr const char* kState = "Eigene Landesvorwahl ohne Nullen";
constexpr const char* kCity = "Eigene Ortsvorwahl ohne Null";
constexpr const char* kNumber = "Rufnummer ohne f\xFChrende Nullen";
constexpr const char* kWrite = "Simulierte Anrufe im Journal festhalten";

struct DialogsTest : testing::Test, DialogRoom, DataRoom {
  std::optional<FirstStartAnswers> AskAtFirstStart(std::function<void()> act) {
    FirstStartDialog dialog;
    Then(std::move(act));
    return FirstStart(dialog).Run({.routerHost = "fritz.box", .serverHost = "server"});
  }

  Settings settings;
  modSettings settingsStore{{ini, store, folders, clock, messages, {}}, settings};
};

TEST_F(DialogsTest, TheFirstStartTakesItsPageOnceTheFieldsCanBeUsed) {
  const auto got = AskAtFirstStart([] {
    Type(kRouter, "router");
    Type(kState, "0049");
    Type(kCity, " 30 ");
    Press("OK");
    ASSERT_TRUE(Top());
    EXPECT_TRUE(Top()->focusWidget() == Field(kState) && IsMarked(kState) && !IsMarked(kCity));
    Type(kState, "43");
    Press("OK");
  });
  ASSERT_TRUE(got);
  EXPECT_TRUE(got->CallMode_AVM && !got->CallMode_CAPI && !got->CallMode_NCID);
  EXPECT_EQ(got->Host + " " + got->myVWL + " " + got->myVWO, "router 43 30");
  EXPECT_FALSE(AskAtFirstStart([] { Press("Abbrechen"); }));
  EXPECT_FALSE(AskAtFirstStart([] { Top()->close(); }));
}

TEST_F(DialogsTest, EachSourceOfTheFirstStartKeepsItsOwnHost) {
  const auto got = AskAtFirstStart([] {
    Type(kRouter, "router");
    Type(kCity, "30");
    Press("CAPI 2.0");
    EXPECT_FALSE(Field(kRouter)->isEnabled());
    Press("NCID-Server");
    EXPECT_EQ(Field(kServer)->text(), "server");
    Type(kServer, "");
    Press("OK");
    EXPECT_EQ(Top()->focusWidget(), Field(kServer));
    Press("FRITZ!Box (Anrufmonitor)");
    EXPECT_EQ(Field(kRouter)->text(), "router");
    Press("NCID-Server");
    Type(kServer, "ncid");
    Press("OK");
  });
  ASSERT_TRUE(got);
  EXPECT_TRUE(got->CallMode_NCID && !got->CallMode_AVM && got->Host == "ncid");
}

TEST_F(DialogsTest, TheCodesAreStoredWhereTheyAreRightAndADriverGetsATestCall) {
  AreaCodeDialog dialog;
  fInputVorwahl input{{dialog, [] { return true; }, settings, settingsStore, [] {}}};
  const auto fillIn = [](const std::string& state, const std::string& city) {
    Type(kState, state);
    Type(kCity, city);
    Press("OK");
  };
  const auto stored = [&] { return ini.GetSettStr("General", "myVWL", "") + ini.GetSettStr("General", "myVWOP", ""); };
  input.Open();
  fillIn("49", "030");
  EXPECT_TRUE(IsMarked(kCity) && !IsMarked(kState));
  Press("Abbrechen");
  EXPECT_FALSE(Top());
  EXPECT_EQ(stored(), "");
  for (const auto& end : {std::function<void()>([] { Press("OK"); }), {[] { Top()->close(); }}}) {
    settings.General.CallMode_CAPI = true;
    input.Open();
    fillIn("49", "30");
    ASSERT_TRUE(input.IsAsking());
    input.DataToPrefixCheck("0030123", "0", "0");
    const auto labels = Top()->findChildren<QLabel*>();
    EXPECT_TRUE(std::ranges::any_of(labels, [](const QLabel* label) { return label->text().contains("0030123"); }));
    end();
    EXPECT_FALSE(input.IsAsking() || Top());
    EXPECT_EQ(stored(), "4900");
  }
}

TEST_F(DialogsTest, TheSimulationRingsAndHangsUpAndEndsWithItsWindow) {
  settings.General.CallMode_CAPI = false;
  settings.General.CallMode_AVM = settings.General.SimWrite = true;
  fakes::Tape tape;
  fakes::FewOwnNumbers ownNumbers;
  fSimulation simulation{{clock, settings, ownNumbers, [](int) {},
                          [&](const std::string& line) { tape.push_back(line.substr(20)); }, [](const std::string&) {},
                          [] { return 0; }, [] {}, [&] { tape.push_back("saved"); }}};
  int left = 0, top = 0, width = 0, height = 0;
  SimulationDialog dialog{simulation, {left, top, width, height}};
  dialog.Open();
  Field(kNumber)->insert("12;3\n");  // cannot be dialled
  Field(kNumber)->insert("30123");
  Type("Angerufene eigene Nummer", "77");
  Press("Anrufen");
  Press("aus dem Ausland");
  Press("Anrufen");
  EXPECT_FALSE(Find<QAbstractButton>("Anrufen")->isEnabled());
  Press("Leitung 2: Trennen");
  EXPECT_TRUE(Find<QAbstractButton>("Anrufen")->isEnabled());
  simulation.cmdTrennen_Click(0);  // the program has refused the call
  EXPECT_FALSE(Find<QAbstractButton>("Leitung 1: Trennen")->isEnabled());
  EXPECT_TRUE(Find<QAbstractButton>(kWrite)->isChecked());
  Press(kWrite);
  EXPECT_FALSE(settings.General.SimWrite);
  EXPECT_THAT(tape, ElementsAre("RING;0;030123;77;ISDN;", "RING;0;0030123;77;ISDN;", "DISCONNECT;0;15;",
                                "DISCONNECT;0;15;", "saved"));
  Top()->resize(640, 480);
  Top()->close();
  EXPECT_FALSE(simulation.IsOpen());
  dialog.Open();
  EXPECT_EQ(Top()->width(), 640);
  simulation.cmdCancel_Click();
  EXPECT_FALSE(Top());
}

class BlacklistWindowTest : public DialogsTest {
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

  static constexpr const char* kFile = "/vorlix/data/blacklist.dat";
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
