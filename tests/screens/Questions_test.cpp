// What the program asks a person: at its first start, for codes that are missing, for entries that the book has
// already, and whether errors may be reported.
#include <deque>

#include <gmock/gmock.h>

#include "fakes/DataRoom.h"
#include "screens/DoubleItemsQuestion.h"
#include "screens/ErrorMessage.h"
#include "screens/FirstStart.h"
#include "screens/fInputVorwahl.h"
#include "services/text.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

// Answers in a given order, and then no more.
class ScriptedQuestions : public Questions {
 public:
  explicit ScriptedQuestions(std::deque<std::string> given = {}) : answers(std::move(given)) {}

  std::optional<std::string> Ask(const std::string&, const std::string& fallback) override {
    if (answers.empty()) return std::nullopt;
    std::string answer = answers.front();
    answers.pop_front();
    return answer.empty() ? fallback : answer;
  }
  void Tell(const std::string& text) override { told.push_back(text); }

  std::deque<std::string> answers;
  std::vector<std::string> told;
};

const FirstStartForm kNew{.routerHost = "fritz.box", .serverHost = "server"};
const FirstStartForm kKnown{.source = kSourceNCID, .serverHost = "server", .myVWL = "43", .myVWO = "1"};

std::optional<FirstStartAnswers> AnswersOf(const FirstStartForm& form, const std::deque<std::string>& answers) {
  ScriptedQuestions view(answers);
  FirstStartQuestions questions(view);
  return FirstStart(questions).Run(form);
}

TEST(FirstStart, TurnsTheAnswersIntoSourceHostAndCodes) {
  // Answers; modes CAPI, AVM, NCID, host, codes.
  const std::tuple<FirstStartForm, std::deque<std::string>, std::string> rows[] = {
      {kNew, {"", "", "", "30"}, "010 fritz.box 49 30"},
      {kNew, {"2", "", "49", "30"}, "001 server 49 30"},
      {kNew, {"3", "49", "30"}, "100  49 30"},
      {kNew, {"x", "9", "1", "fritz.box:1012", "", "0049", "49", "", "030", "abc", "30"}, "010 fritz.box 49 30"},
      {kKnown, {"", "", "", ""}, "001 server 43 1"},
  };
  for (const auto& [form, answers, expected] : rows) {
    const auto got = AnswersOf(form, answers);
    ASSERT_TRUE(got.has_value()) << expected;
    EXPECT_EQ(std::string() + (got->CallMode_CAPI ? "1" : "0") + (got->CallMode_AVM ? "1" : "0") +
                  (got->CallMode_NCID ? "1" : "0") + " " + got->Host + " " + got->myVWL + " " + got->myVWO,
              expected);
  }
}

TEST(FirstStart, LeavingOffAtAnyQuestionChangesNothing) {
  for (const std::deque<std::string>& given : {std::deque<std::string>{}, {"1"}, {"1", ""}, {"1", "", "49"}})
    EXPECT_FALSE(AnswersOf(kNew, given).has_value()) << given.size();
}

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

DoubleItem Answer(AskForDoubleItems& asked) {
  std::string name = "Neu", address = "Ulm";
  return asked.ShowDialog("0171", "Alt", "Bonn", name, address);
}

TEST(DoubleItemsQuestionTest, OnlyAClearAnswerPutsTheNewEntryInPlace) {
  const std::pair<std::deque<std::string>, DoubleItem> rows[] = {
      {{"1"}, DoubleItem::kSetItem}, {{"4"}, DoubleItem::kAuto}, {{""}, DoubleItem::kNothing},
      {{"x"}, DoubleItem::kNothing}, {{}, DoubleItem::kNothing},
  };
  for (const auto& [answers, expected] : rows) {
    ScriptedQuestions view(answers);
    DoubleItemsQuestion question(view, [] { return true; });
    EXPECT_EQ(Answer(question), expected) << (answers.empty() ? "nobody" : answers.front());
    EXPECT_THAT(view.told, ElementsAre(HasSubstr("0171"), HasSubstr("Neu, Ulm"), HasSubstr("Alt, Bonn")));
  }
  ScriptedQuestions nobody({"1"});
  DoubleItemsQuestion question(nobody, [] { return false; });
  EXPECT_EQ(Answer(question), DoubleItem::kNothing);
  EXPECT_TRUE(nobody.told.empty());
}

TEST(DoubleItemsBoxTest, CancelEndsTheQuestions) {
  NotedBoxes door;
  for (const auto& [answer, expected] :
       {std::pair(MsgBoxAnswer::kYes, DoubleItem::kSetItem), std::pair(MsgBoxAnswer::kNo, DoubleItem::kNothing),
        std::pair(MsgBoxAnswer::kCancel, DoubleItem::kAuto)}) {
    door.answer = answer;
    DoubleItemsBox box(door);
    EXPECT_EQ(Answer(box), expected);
    EXPECT_THAT(door.shown.back(), HasSubstr("Neu, Ulm"));
  }
}

struct ErrorMessageTest : testing::Test, protected DataRoom {
  Settings settings;
  modSettings module{{ini, store, folders, clock, messages, {}}, settings};
  std::vector<std::string> started;
  bool canStart = true;
  ErrorMessage dialog{{files, folders, settings, module, messages,
                       [this](const std::string& file, const std::string& argument) {
                         started.push_back(file + " " + argument);
                         return canStart;
                       },
                       [] { return std::string("maker/2.0"); }}};
};

TEST_F(ErrorMessageTest, AsksOnlyWhenWantedWithEnoughErrorsAndAReportProgram) {
  store.AddFile("/vorlix/log/error.log", Replace(std::string(30, 'x'), "x", "x\r\n"));
  dialog.Check();  // no report program
  store.AddFile("/program/errorreport", "program");
  settings.General.ErrorCount = 31;
  dialog.Check();
  settings.General.ErrorCount = 24;
  settings.ErrorMessage.Show = false;
  dialog.Check();
  EXPECT_TRUE(boxes.shown.empty());
  settings.ErrorMessage.Show = true;
  dialog.Check();
  ASSERT_EQ(boxes.shown.size(), 1u);
  EXPECT_THAT(boxes.shown[0], HasSubstr(" 20 "));
  EXPECT_THAT(boxes.shown[0], HasSubstr("[ErrorMessage] Show=0, /vorlix/data/Vorlix.ini"));
  EXPECT_EQ(ini.GetSettLng("General", "ErrorCount", 0), 10);
  EXPECT_TRUE(started.empty());
  boxes.answer = MsgBoxAnswer::kYes;
  dialog.Check();
  EXPECT_THAT(started, ElementsAre("/program/errorreport mode=1|user=|mail=|ver=3.0|hw=(CAPI:maker/2.0)"));
  canStart = false;
  dialog.Check();
  EXPECT_THAT(boxes.shown.back(), HasSubstr("Datei nicht gefunden!\r\n/program/errorreport"));
}

}  // namespace
}  // namespace vorlix
