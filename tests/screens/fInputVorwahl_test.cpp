#include "screens/fInputVorwahl.h"

#include <deque>

#include <gmock/gmock.h>

#include "fakes/DataRoom.h"

namespace vorlix {
namespace {

class fInputVorwahlTest : public testing::Test, protected DataRoom, public Questions {
 protected:
  std::optional<std::string> Ask(const std::string&, const std::string& fallback) override {
    ++asked;
    if (whileAsking) whileAsking();
    if (answers.empty()) return std::nullopt;
    const std::string answer = answers.front();
    answers.pop_front();
    return answer.empty() ? fallback : answer;
  }
  void Tell(const std::string& text) override { told = text; }

  std::string Stored(const char* key) { return ini.GetSettStr("General", key, "none"); }

  std::deque<std::string> answers;
  int asked = 0;
  std::string told;
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
  EXPECT_EQ(Stored("myVWL") + " " + Stored("myVWO") + " " + Stored("myVWOP"), "49 30 -");
  EXPECT_EQ(reloads, 1);
}

TEST_F(fInputVorwahlTest, WithoutAnAnswerOrAnybodyNothingChanges) {
  for (const std::deque<std::string>& given : {std::deque<std::string>{}, {"49"}, {"49", ""}}) {
    answers = given;
    input.Open();
    EXPECT_EQ(settings.General.myVWL, "");
    EXPECT_EQ(Stored("myVWL"), "none");
  }
  somebodyIsThere = false;
  asked = 0;
  input.Open();
  EXPECT_EQ(asked, 0);
  EXPECT_EQ(reloads, 0);
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
  EXPECT_EQ(told,
            "\xDC"
            "bermittelte Nummer: 0030123, Empfohlener Prefix f\xFCr Rufe aus dem Inland: \"00\"");
  EXPECT_EQ(Stored("myVWOP"), "00");
}

}  // namespace
}  // namespace vorlix
