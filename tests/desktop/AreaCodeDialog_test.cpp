#include "desktop/dialogs/AreaCodeDialog.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "fakes/DataRoom.h"
#include "fakes/DialogRoom.h"

namespace vorlix {
namespace {

constexpr const char* kState = "Eigene Landesvorwahl ohne Nullen";
constexpr const char* kCity = "Eigene Ortsvorwahl ohne Null";

struct AreaCodeDialogTest : testing::Test, DialogRoom, DataRoom {
  Settings settings;
  modSettings settingsStore{{ini, store, folders, clock, messages, {}}, settings};
};

TEST_F(AreaCodeDialogTest, TheCodesAreStoredWhereTheyAreRightAndADriverGetsATestCall) {
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

}  // namespace
}  // namespace vorlix
