#include "desktop/dialogs/FirstStartDialog.h"

#include <gmock/gmock.h>

#include "fakes/DialogRoom.h"

namespace vorlix {
namespace {

constexpr const char* kRouter = "Name oder Adresse der FRITZ!Box";
constexpr const char* kServer = "Name oder Adresse des NCID-Servers";
constexpr const char* kState = "Eigene Landesvorwahl ohne Nullen";
constexpr const char* kCity = "Eigene Ortsvorwahl ohne Null";

class FirstStartDialogTest : public testing::Test, protected DialogRoom {
 protected:
  std::optional<FirstStartAnswers> Run(std::function<void()> act) {
    Then(std::move(act));
    return FirstStart(dialog).Run({.routerHost = "fritz.box", .serverHost = "server"});
  }

  FirstStartDialog dialog;
};

TEST_F(FirstStartDialogTest, TakesThePageOnceItsFieldsCanBeUsed) {
  const auto got = Run([] {
    Type(kState, "0049");
    Type(kCity, " 30 ");
    Press("OK");
    ASSERT_TRUE(Top());
    EXPECT_EQ(Field(kState)->palette().base().color(), QColor(0x90, 0xEE, 0x90));
    EXPECT_EQ(Field(kCity)->palette().base(), QApplication::palette().base());
    EXPECT_EQ(Top()->focusWidget(), Field(kState));
    Type(kState, "43");
    Press("OK");
  });
  ASSERT_TRUE(got);
  EXPECT_TRUE(got->CallMode_AVM && !got->CallMode_CAPI && !got->CallMode_NCID);
  EXPECT_EQ(got->Host + " " + got->myVWL + " " + got->myVWO, "fritz.box 43 30");
}

TEST_F(FirstStartDialogTest, EachSourceKeepsItsOwnHost) {
  const auto got = Run([] {
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
  EXPECT_TRUE(got->CallMode_NCID && !got->CallMode_AVM);
  EXPECT_EQ(got->Host, "ncid");
}

TEST_F(FirstStartDialogTest, LeavingItAnswersNothing) {
  EXPECT_FALSE(Run([] { Press("Abbrechen"); }));
  EXPECT_FALSE(Run([] { Top()->close(); }));
}

}  // namespace
}  // namespace vorlix
