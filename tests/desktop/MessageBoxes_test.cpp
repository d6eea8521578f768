#include "desktop/dialogs/MessageBoxes.h"

#include <gmock/gmock.h>

#include "desktop/dialogs/dialog_parts.h"
#include "fakes/DialogRoom.h"
#include "services/ansi.h"

namespace vorlix {
namespace {

class MessageBoxesTest : public testing::Test, protected DialogRoom {
 protected:
  static std::size_t Open() {
    std::size_t open = 0;
    for (const QWidget* widget : QApplication::topLevelWidgets()) {
      if (qobject_cast<const QMessageBox*>(widget) && widget->isVisible()) ++open;
    }
    return open;
  }

  MessageBoxes boxes;
};

TEST_F(MessageBoxesTest, WaitsForTheAnswerOfAQuestionAndOfAModalBox) {
  // Style, modal, button ("": the frame's), answer.
  const std::tuple<int, bool, std::string, MsgBoxAnswer> rows[] = {
      {kMsgYesNo + kMsgQuestion, true, "Ja", MsgBoxAnswer::kYes},
      {kMsgYesNo, false, "Nein", MsgBoxAnswer::kNo},
      {kMsgYesNo + kMsgWarning, true, "", MsgBoxAnswer::kNo},
      {kMsgError, true, "OK", MsgBoxAnswer::kOk},
      {kMsgYesNoCancel + kMsgQuestion, true, "Abbrechen", MsgBoxAnswer::kCancel},
      {kMsgYesNoCancel, true, "", MsgBoxAnswer::kNo},
      {kMsgInformation, true, "", MsgBoxAnswer::kOk},
  };
  for (const auto& [style, modal, button, answer] : rows) {
    Then([&name = button] { name.empty() ? static_cast<void>(Top()->close()) : Press(name); });
    EXPECT_EQ(boxes.Show("Wirklich?", style, "Vorlix", modal), answer) << style;
    EXPECT_EQ(Open(), 0U);
  }
}

TEST_F(MessageBoxesTest, OthersStandAsPlainTextAndDoNotPileUp) {
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(boxes.Show("<b>\xDC</b>\r\nzwei", kMsgWarning, "Titel", false), MsgBoxAnswer::kOk);
  ASSERT_EQ(Open(), 1U);
  auto* box = qobject_cast<QMessageBox*>(Top());
  EXPECT_EQ(box->text(), QString::fromUtf8("<b>Ü</b>\nzwei"));
  EXPECT_EQ(box->textFormat(), Qt::PlainText);
  EXPECT_EQ(box->icon(), QMessageBox::Warning);
  EXPECT_TRUE(box->testAttribute(Qt::WA_ShowWithoutActivating));
  for (int i = 0; i < 30; ++i)
    boxes.Show(std::to_string(i), kMsgOk, "Titel", false);
  EXPECT_EQ(Open(), MessageBoxes::kMostOpen);
}

}  // namespace
}  // namespace vorlix
