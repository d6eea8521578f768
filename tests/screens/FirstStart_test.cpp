#include "screens/FirstStart.h"

#include <gtest/gtest.h>

#include "fakes/ScriptedQuestions.h"

namespace vorlix {
namespace {

TEST(FirstStart, TurnsTheAnswersIntoSourceHostAndCodes) {
  struct Row {
    std::deque<std::string> answers;
    const char* expected;  // modes CAPI, AVM, NCID, host, codes
  };
  const Row rows[] = {
      {{"", "", "", "30"}, "010 fritz.box 49 30"},
      {{"1", "192.168.178.1", "43", "1"}, "010 192.168.178.1 43 1"},
      {{"2", "", "49", "30"}, "001 server 49 30"},
      {{"3", "49", "30"}, "100  49 30"},
      {{"x", "9", "1", "fritz.box:1012", "", "0049", "49", "", "030", "abc", "30"}, "010 fritz.box 49 30"},
  };
  for (const Row& row : rows) {
    ScriptedQuestions view(row.answers);
    FirstStartQuestions questions(view);
    const auto got = FirstStart(questions).Run({.routerHost = "fritz.box", .serverHost = "server"});
    ASSERT_TRUE(got.has_value()) << row.expected;
    EXPECT_EQ(std::string() + (got->CallMode_CAPI ? "1" : "0") + (got->CallMode_AVM ? "1" : "0") +
                  (got->CallMode_NCID ? "1" : "0") + " " + got->Host + " " + got->myVWL + " " + got->myVWO,
              row.expected);
  }
}

TEST(FirstStart, WhatIsKnownAlreadyIsProposed) {
  const FirstStartForm known{.source = kSourceNCID, .serverHost = "server", .myVWL = "43", .myVWO = "1"};
  ScriptedQuestions view({"", "", "", ""});
  FirstStartQuestions questions(view);
  const auto got = FirstStart(questions).Run(known);
  ASSERT_TRUE(got && got->CallMode_NCID);
  EXPECT_EQ(got->Host + " " + got->myVWL + " " + got->myVWO, "server 43 1");
}

TEST(FirstStart, LeavingOffAtAnyQuestionChangesNothing) {
  const std::deque<std::string> all{"1", "", "49"};
  for (std::size_t given = 0; given <= all.size(); ++given) {
    ScriptedQuestions view({all.begin(), all.begin() + static_cast<std::ptrdiff_t>(given)});
    FirstStartQuestions questions(view);
    EXPECT_FALSE(FirstStart(questions).Run({.routerHost = "fritz.box", .serverHost = "server"}).has_value());
  }
}

}  // namespace
}  // namespace vorlix
