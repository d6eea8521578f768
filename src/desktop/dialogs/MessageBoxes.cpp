#include "desktop/dialogs/MessageBoxes.h"

#include <QApplication>
#include <QTimer>
#include <algorithm>
#include <chrono>

#include "desktop/dialogs/dialog_parts.h"
#include "desktop/text.h"
#include "services/ansi.h"
#include "services/clsErrorHandling.h"

namespace vorlix {
namespace {

constexpr int kIcons = 0x70;
constexpr std::chrono::seconds kMostThought{60};

QMessageBox::Icon IconOf(int style) {
  switch (style & kIcons) {
    case kMsgError:
      return QMessageBox::Critical;
    case kMsgQuestion:
      return QMessageBox::Question;
    case kMsgWarning:
      return QMessageBox::Warning;
    case kMsgInformation:
      return QMessageBox::Information;
    default:
      return QMessageBox::NoIcon;
  }
}

// Yes and no get buttons that Escape and closing answer with no.
void AddButtons(QMessageBox& box, int style) {
  if (!IsQuestion(style)) {
    box.addButton(QMessageBox::Ok)->setText(OkText());
    return;
  }
  box.addButton(QMessageBox::Yes)->setText(DialogText("Button_Yes", "Ja"_ansi));
  box.addButton(QMessageBox::No)->setText(DialogText("Button_No", "Nein"_ansi));
  if ((style & kMsgButtons) == kMsgYesNoCancel) box.addButton(QMessageBox::Cancel)->setText(CancelText());
  box.setDefaultButton(QMessageBox::No);
  box.setEscapeButton(QMessageBox::No);
}

// A box that was left, or is gone, says no.
MsgBoxAnswer AnswerOf(const QPointer<QMessageBox>& box) {
  const QAbstractButton* pressed = box ? box->clickedButton() : nullptr;
  if (pressed == nullptr) return MsgBoxAnswer::kNo;
  if (pressed == box->button(QMessageBox::Yes)) return MsgBoxAnswer::kYes;
  return pressed == box->button(QMessageBox::Cancel) ? MsgBoxAnswer::kCancel : MsgBoxAnswer::kNo;
}

QMessageBox* MakeBox(std::string_view text, int style, std::string_view title) {
  QWidget* active = QApplication::activeWindow();
  auto* box = new QMessageBox(qobject_cast<QDialog*>(active));
  box->setAttribute(Qt::WA_ShowWithoutActivating, active == nullptr);
  box->setIcon(IconOf(style));
  box->setWindowTitle(ToQString(title));
  box->setTextFormat(Qt::PlainText);
  box->setText(ToQString(text).replace("\r\n", "\n"));
  box->setTextInteractionFlags(Qt::TextSelectableByMouse);
  AddButtons(*box, style);
  AssignLetters(*box);
  return box;
}

}  // namespace

MessageBoxes::~MessageBoxes() {
  for (const auto& box : open_) {
    delete box;
  }
}

MsgBoxAnswer MessageBoxes::Show(std::string_view text, int style, std::string_view title, bool modal) {
  return Trapped("MessageBoxes.Show", [&] {
    if (isWithdrawn_) return IsQuestion(style) ? MsgBoxAnswer::kNo : MsgBoxAnswer::kOk;
    const QPointer<QMessageBox> box = MakeBox(text, style, title);
    if (!modal && !IsQuestion(style)) {
      ShowAndGoOn(box);
      return MsgBoxAnswer::kOk;
    }
    box->setWindowModality(box->parentWidget() != nullptr ? Qt::WindowModal : Qt::NonModal);
    // A question in the middle of a call must not keep the next ones waiting for ever.
    if (IsQuestion(style)) QTimer::singleShot(kMostThought, box.data(), [box] { box->reject(); });
    RunDialog(*box);
    const MsgBoxAnswer answer = IsQuestion(style) ? AnswerOf(box) : MsgBoxAnswer::kOk;
    delete box;
    return answer;
  });
}

void MessageBoxes::ShowAndGoOn(QMessageBox* box) {
  std::erase_if(open_, [](const auto& one) { return !one || !one->isVisible(); });
  const bool stands = std::any_of(open_.begin(), open_.end(), [&](const auto& one) {
    return one->text() == box->text() && one->windowTitle() == box->windowTitle();
  });
  if (stands) {
    delete box;
    return;
  }
  if (open_.size() == kMostOpen) open_.front()->close();
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setModal(false);
  open_.emplace_back(box);
  box->show();
}

}  // namespace vorlix
