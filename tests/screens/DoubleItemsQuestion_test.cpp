#include "screens/DoubleItemsQuestion.h"

#include <gmock/gmock.h>

#include "fakes/DataRoom.h"
#include "fakes/ScriptedQuestions.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

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

}  // namespace
}  // namespace vorlix
