#include "screens/FirstStart.h"

#include <gtest/gtest.h>

#include "fakes/ScriptedQuestions.h"

namespace vorlix {
namespace {

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

}  // namespace
}  // namespace vorlix
