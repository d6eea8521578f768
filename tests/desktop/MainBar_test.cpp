#include "desktop/MainBar.h"

#include <QWindow>

#include <gmock/gmock.h>

#include "desktop/DesktopViews.h"
#include "desktop/line_menu.h"
#include "fakes/DesktopHands.h"
#include "fakes/DisplayRoom.h"
#include "fakes/OffscreenApplication.h"

namespace vorlix {
namespace {

using testing::Contains;
using testing::ElementsAre;

const std::string kIcons = std::string(VORLIX_TEST_DATA) + "/../../base/icons";

class MainBarTest : public testing::Test, protected OffscreenApplication {
 protected:
  MainBarTest() {
    room.settings.General.CallMode_CAPI = true;
    gestures = GesturesOf(room.screen, menu);
    bar.Open(places, {"no such family", 8, false}, true);
    room.Show();
  }

  // A call with its stop button.
  auto Ring(int PLCI, const std::string& number, const std::string& name = {}) {
    auto call = room.Ring(PLCI, number, name);
    room.screen.display.ButtonEnableHangUp(static_cast<int>(room.screen.display.Content().lines.size()) - 1,
                                           HangUpMode::kStop, true);
    room.screen.display.ButtonEnableBell(0, true);
    return call;
  }
  std::vector<BarLine*> Lines() {
    std::vector<BarLine*> lines;
    for (QObject* child : bar.children()) {
      auto* line = dynamic_cast<BarLine*>(child);
      if (line != nullptr && line->isVisible()) lines.push_back(line);
    }
    return lines;
  }
  std::vector<std::string> Texts() {
    std::vector<std::string> texts;
    for (const BarLine* line : Lines())
      texts.push_back(FromQString(line->findChild<QLabel*>(QStringLiteral("text"))->text()));
    return texts;
  }
  std::vector<std::string> Tape() { return room.world.Taken(); }
  // Of another bar that opens where this one was left.
  QRect FoundAgain() {
    MainBar again(gestures, kIcons, {});
    again.Open(places, {}, true);
    return again.geometry();
  }
  QPoint Grip() { return bar.geometry().topLeft() + QPoint(9, 10); }
  bool RefusesFocus() { return bar.windowHandle()->flags().testFlag(Qt::WindowDoesNotAcceptFocus); }

  MemoryPlaces places;
  DisplayGestures gestures;
  DisplayRoom<MainBar> room{gestures, kIcons, [this](QMenu& all) { AddCommands(all, gestures); }};
  TrayMenu menu{TrayMenu::Ports{.settings = room.settings, .isSimulationBarred = {}}};
  MainBar& bar = room.bar;
};

TEST_F(MainBarTest, HasALineForEachCallAndGrowsByTheHeightOfALine) {
  const int idle = bar.height();
  const auto first = Ring(1, "030123456", "M\xFCller & S\xF6hne");
  EXPECT_EQ(bar.height(), idle);
  Ring(2, "089654321");
  EXPECT_EQ(bar.height(), idle + Lines().front()->LineHeight());
  EXPECT_THAT(Texts(), ElementsAre("M\xFCller & S\xF6hne", "089654321 Ort"));
  room.End(*first);
  EXPECT_EQ(bar.height(), idle);
  EXPECT_THAT(Texts(), ElementsAre("089654321 Ort"));
}

TEST_F(MainBarTest, ButtonsAndKeysReachThePresentersOfTheirLine) {
  Ring(1, "030123456");
  Ring(2, "089654321");
  Tape();
  Lines().at(1)->findChild<QAbstractButton*>(QStringLiteral("hangUp"))->click();
  EXPECT_THAT(Tape(), ElementsAre("refuse 2"));
  PressKey(Lines().at(0), Qt::Key_Delete);
  EXPECT_THAT(Tape(), ElementsAre("refuse 1"));
  PressKey(Lines().at(0), Qt::Key_Delete);  // the button is not enabled any more
  PressKey(Lines().at(0), Qt::Key_Return);
  EXPECT_THAT(Tape(), ElementsAre("open 1"));
  PressKey(Lines().at(0), Qt::Key_Space);
  EXPECT_FALSE(bar.Content().lines.at(0).bellEnabled);
}

TEST_F(MainBarTest, ClickOnTheTimeAndDoubleClickOnTheTextOpenWhatTheSettingsSay) {
  room.settings.General.TimeClick = 3;
  Ring(1, "030123456");
  Tape();
  const auto at = [&](const char* part) {
    const auto* label = Lines().at(0)->findChild<QLabel*>(QLatin1String(part));
    return label->mapToGlobal(label->rect().center());
  };
  Mouse(bar, QEvent::MouseButtonPress, at("time"));
  Mouse(bar, QEvent::MouseButtonRelease, at("time"));
  EXPECT_THAT(Tape(), ElementsAre("open 3"));
  Mouse(bar, QEvent::MouseButtonDblClick, at("text"));
  EXPECT_THAT(Tape(), ElementsAre("open 1"));
}

TEST_F(MainBarTest, ACommandOfAnOpenMenuKeepsToItsCallWhenTheCallsMoveUp) {
  const auto first = Ring(1, "030123456");
  Ring(2, "089654321");
  QMenu calls;
  AddLineCommands(calls, bar.Content(), 1, gestures);
  Choose(calls, "Nummer auf die Sperrliste");
  EXPECT_THAT(Tape(), Contains("list 089654321 "));
  room.End(*first);
  Tape();
  Choose(calls, "Nummer auf die Sperrliste");
  EXPECT_THAT(Tape(), ElementsAre("list 089654321 "));
  QMenu gone;
  AddLineCommands(gone, bar.Content(), 0, gestures);
  room.state.ActiveCallList.RemoveByKeyName("2");
  room.Show();
  Choose(gone, "Nummer auf die Sperrliste");
  EXPECT_THAT(Tape(), testing::Not(Contains("list 089654321 ")));
}

TEST_F(MainBarTest, WhatACallerIsCalledIsNoMarkup) {
  Ring(1, "030123456", "<img src=x> & \"Co\"");
  EXPECT_TRUE(Lines().at(0)->toolTip().contains(QLatin1String("&lt;img src=x&gt; &amp;")));
  QMenu calls;
  AddCalls(calls, bar.Content(), gestures);
  EXPECT_THAT(Entries(calls), Contains("<img src=x> && \"Co\""));
}

TEST_F(MainBarTest, IsDraggedToAnEdgeMadeNarrowerAndFoundThereAgain) {
  const QRect area = bar.screen()->availableGeometry();
  Drag(bar, Grip(), area.topLeft() + QPoint(15, 14));
  EXPECT_EQ(bar.geometry().topLeft(), area.topLeft());
  const QPoint end = bar.geometry().topRight() + QPoint(-1, 10);
  Drag(bar, end, end - QPoint(100, 0));
  EXPECT_EQ(bar.geometry().topLeft(), area.topLeft());
  EXPECT_EQ(FoundAgain(), bar.geometry());
  Ring(1, "030123456");
  Ring(2, "089654321");
  Drag(bar, Grip(), QPoint(area.left() + 200, area.bottom()));
  EXPECT_EQ(FoundAgain().bottom(), area.bottom());
  EXPECT_LT(FoundAgain().height(), bar.height());  // without the second line
}

TEST_F(MainBarTest, HiddenAStripStaysOrNothingAndItComesBackWhereItWas) {
  const QRect whole = bar.geometry();
  bar.SetPlace(BarPlace::kStrip);
  EXPECT_TRUE(bar.width() < 20 && Lines().empty());
  bar.SetPlace(BarPlace::kTray);
  EXPECT_FALSE(bar.isVisible());
  bar.SetPlace(BarPlace::kShown);
  EXPECT_TRUE(bar.geometry() == whole && Lines().size() == 1);
}

TEST_F(MainBarTest, TakesTheKeyboardOnlyWhenAPersonActivatesItOrWithoutATray) {
  EXPECT_TRUE(bar.testAttribute(Qt::WA_ShowWithoutActivating) && RefusesFocus());
  bar.Activate();
  EXPECT_FALSE(RefusesFocus());
  QEvent left(QEvent::WindowDeactivate);
  QCoreApplication::sendEvent(&bar, &left);
  EXPECT_TRUE(RefusesFocus());
  const QRect before = bar.geometry();
  for (const bool hasTray : {false, true}) {
    bar.SetTray(hasTray);
    EXPECT_TRUE(bar.isVisible() && RefusesFocus() == hasTray);
    EXPECT_EQ(bar.geometry(), before);
  }
}

}  // namespace
}  // namespace vorlix
