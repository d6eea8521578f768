#include "screens/DoubleItemsQuestion.h"

#include <gmock/gmock.h>

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
  struct Row {
    std::deque<std::string> answers;
    DoubleItem expected;
  };
  const Row rows[] = {
      {{"1"}, DoubleItem::kSetItem}, {{"2"}, DoubleItem::kNothing}, {{"4"}, DoubleItem::kAuto},
      {{""}, DoubleItem::kNothing},  {{"x"}, DoubleItem::kNothing}, {{}, DoubleItem::kNothing},
  };
  for (const Row& row : rows) {
    ScriptedQuestions view(row.answers);
    DoubleItemsQuestion question(view, [] { return true; });
    EXPECT_EQ(Answer(question), row.expected) << (row.answers.empty() ? "nobody" : row.answers.front());
    EXPECT_THAT(view.told, ElementsAre(HasSubstr("0171"), HasSubstr("Neu, Ulm"), HasSubstr("Alt, Bonn")));
  }
}

TEST(DoubleItemsQuestionTest, WhereNobodyIsThereNothingIsAsked) {
  ScriptedQuestions view({"1"});
  DoubleItemsQuestion question(view, [] { return false; });
  EXPECT_EQ(Answer(question), DoubleItem::kNothing);
  EXPECT_TRUE(view.told.empty());
}

TEST(DoubleItemsBoxTest, CancelEndsTheQuestions) {
  class Door : public MsgBoxDoor {
   public:
    MsgBoxAnswer Show(std::string_view text, int style, std::string_view, bool modal) override {
      EXPECT_THAT(std::string(text), HasSubstr("Neu, Ulm"));
      EXPECT_TRUE(modal);
      EXPECT_EQ(style & 0xF, kMsgYesNoCancel);
      return answer;
    }
    MsgBoxAnswer answer{};
  } door;
  for (const auto& [answer, expected] :
       {std::pair(MsgBoxAnswer::kYes, DoubleItem::kSetItem), std::pair(MsgBoxAnswer::kNo, DoubleItem::kNothing),
        std::pair(MsgBoxAnswer::kCancel, DoubleItem::kAuto)}) {
    door.answer = answer;
    DoubleItemsBox box(door);
    EXPECT_EQ(Answer(box), expected);
  }
}

}  // namespace
}  // namespace vorlix
