#include "desktop/dialogs/AreaCodeDialog.h"

#include <gmock/gmock.h>

#include "desktop/dialogs/dialog_parts.h"
#include "fakes/DataRoom.h"
#include "fakes/DialogRoom.h"

namespace vorlix {
namespace {

constexpr const char* kState = "Eigene Landesvorwahl ohne Nullen";
constexpr const char* kCity = "Eigene Ortsvorwahl ohne Null";

class AreaCodeDialogTest : public testing::Test, protected DialogRoom, protected DataRoom {
 protected:
  std::string Stored() {
    return ini.GetSettStr("General", "myVWL", "none") + " " + ini.GetSettStr("General", "myVWO", "none") + " " +
           ini.GetSettStr("General", "myVWOP", "none");
  }
  static void FillIn(const std::string& state, const std::string& city) {
    Type(kState, state);
    Type(kCity, city);
    Press("OK");
  }

  Settings settings;
  modSettings settingsStore{{ini, store, folders, clock, messages, {}}, settings};
  AreaCodeDialog dialog;
  fInputVorwahl input{{dialog, [] { return true; }, settings, settingsStore, [] {}}};
};

TEST_F(AreaCodeDialogTest, MarksTheWrongFieldAndStoresTheRightOnes) {
  settings.General.CallMode_CAPI = false;
  settings.General.myVWL = "49";
  input.Open();
  EXPECT_EQ(Field(kState)->text(), "49");
  FillIn("49", "030");
  EXPECT_EQ(Top()->focusWidget(), Field(kCity));
  EXPECT_EQ(Field(kCity)->palette().base().color(), QColor(0x90, 0xEE, 0x90));
  EXPECT_EQ(Field(kState)->palette().base(), QApplication::palette().base());
  FillIn("49", "30");
  EXPECT_FALSE(Top());
  EXPECT_EQ(Stored(), "49 30 -");
}

TEST_F(AreaCodeDialogTest, ADriverGetsATestCallOnTheSecondPage) {
  settings.General.CallMode_CAPI = true;
  for (const bool isLeft : {false, true}) {
    input.Open();
    FillIn("49", "30");
    ASSERT_TRUE(input.IsAsking());
    input.DataToPrefixCheck("0030123", "0", "0");
    const auto labels = Top()->findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
      return label->isVisible() && label->text().contains("0030123");
    }));
    isLeft ? static_cast<void>(Top()->close()) : Press("OK");
    EXPECT_FALSE(input.IsAsking());
    EXPECT_FALSE(Top());
    EXPECT_EQ(Stored(), "49 30 00");
  }
}

TEST_F(AreaCodeDialogTest, LeavingItStoresNothingAndItCanBeOpenedAgain) {
  for (const auto& leave : {std::function<void()>([] { Press("Abbrechen"); }), {[] { CloseDialogs(); }}}) {
    input.Open();
    ASSERT_TRUE(Top());
    leave();
    EXPECT_FALSE(Top());
    EXPECT_EQ(Stored(), "none none none");
  }
}

}  // namespace
}  // namespace vorlix
