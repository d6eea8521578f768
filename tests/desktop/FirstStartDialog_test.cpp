#include "desktop/dialogs/FirstStartDialog.h"

#include <gtest/gtest.h>

#include "fakes/DialogRoom.h"

namespace vorlix {
namespace {

constexpr const char* kRouter = "Name oder Adresse der FRITZ!Box";
constexpr const char* kServer = "Name oder Adresse des NCID-Servers";
constexpr const char* kState = "Eigene Landesvorwahl ohne Nullen";
constexpr const char* kCity = "Eigene Ortsvorwahl ohne Null";

struct FirstStartDialogTest : testing::Test, DialogRoom {
  static std::optional<FirstStartAnswers> Ask(std::function<void()> act) {
    FirstStartDialog dialog;
    Then(std::move(act));
    return FirstStart(dialog).Run({.routerHost = "fritz.box", .serverHost = "server"});
  }
};

TEST_F(FirstStartDialogTest, TakesItsPageOnceTheFieldsCanBeUsed) {
  const auto got = Ask([] {
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
  EXPECT_FALSE(Ask([] { Press("Abbrechen"); }));
  EXPECT_FALSE(Ask([] { Top()->close(); }));
}

TEST_F(FirstStartDialogTest, EachSourceKeepsItsOwnHost) {
  const auto got = Ask([] {
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

}  // namespace
}  // namespace vorlix
