#include "screens/fInputVorwahl.h"

#include <gmock/gmock.h>

#include "fakes/DataRoom.h"
#include "fakes/ScriptedQuestions.h"

namespace vorlix {
namespace {

using testing::HasSubstr;

class fInputVorwahlTest : public testing::Test, protected DataRoom, public ScriptedQuestions {
 protected:
  std::optional<std::string> Ask(const std::string& question, const std::string& fallback) override {
    ++asked;
    if (whileAsking) whileAsking();
    return ScriptedQuestions::Ask(question, fallback);
  }

  std::string Stored() {
    return ini.GetSettStr("General", "myVWL", "none") + " " + ini.GetSettStr("General", "myVWO", "none") + " " +
           ini.GetSettStr("General", "myVWOP", "none");
  }

  int asked = 0;
  std::function<void()> whileAsking;
  bool somebodyIsThere = true;
  int reloads = 0;
  Settings settings;
  modSettings settingsStore{{ini, store, folders, clock, messages, {}}, settings};
  AreaCodeQuestions questions{*this};
  fInputVorwahl input{{questions, [this] { return somebodyIsThere; }, settings, settingsStore, [this] { ++reloads; }}};
};

TEST_F(fInputVorwahlTest, AsksUntilTheCodesCanBeUsedAndStoresThem) {
  settings.General.CallMode_CAPI = false;
  answers = {"0049", "30", "49", "030", "4x", "30", "49", "30"};
  input.Open();
  EXPECT_EQ(asked, 8);
  EXPECT_EQ(reloads, 1);
  EXPECT_EQ(Stored(), "49 30 -");
}

TEST_F(fInputVorwahlTest, WithoutAnAnswerOrAnybodyNothingChanges) {
  for (const std::deque<std::string>& given : {std::deque<std::string>{}, {"49"}, {"49", ""}}) {
    answers = given;
    input.Open();
    EXPECT_EQ(settings.General.myVWL + Stored(), "none none none");
  }
  somebodyIsThere = false;
  const int before = asked;
  input.Open();
  EXPECT_EQ(asked, before);
}

TEST_F(fInputVorwahlTest, OnlyTheTestCallOfADriverHidesCallsAndItFindsThePrefix) {
  settings.General.CallMode_CAPI = true;
  answers = {"49", "30", ""};
  std::string asking;
  whileAsking = [&] {
    asking += input.IsAsking() ? "1" : "0";
    if (input.IsAsking()) input.DataToPrefixCheck("0030123", "0", "0");
    input.Open();  // a second source has finished its start
  };
  input.Open();
  EXPECT_EQ(asking, "001");
  EXPECT_FALSE(input.IsAsking());
  EXPECT_THAT(told.back(), HasSubstr("bermittelte Nummer: 0030123, Empfohlener Prefix"));
  EXPECT_EQ(Stored(), "49 30 00");
}

}  // namespace
}  // namespace vorlix
