// Message boxes of the desktop. None takes the keyboard from another program: a box gets it only where a window of ours
// has it. A modal box, and every question, is waited for while the loop runs; it holds the dialog that it belongs to
// and nothing else.
#pragma once

#include <QMessageBox>
#include <QPointer>
#include <vector>

#include "services/modAll_MsgBox.h"

namespace vorlix {

class MessageBoxes : public MsgBoxDoor {
 public:
  // More boxes than that nobody reads: the oldest goes.
  static constexpr std::size_t kMostOpen = 10;

  MessageBoxes() = default;
  ~MessageBoxes() override;
  MessageBoxes(const MessageBoxes&) = delete;
  MessageBoxes& operator=(const MessageBoxes&) = delete;

  // From here on nobody is asked or told any more: each question is left unanswered.
  void Withdraw() { isWithdrawn_ = true; }

  // A question that is left unanswered is answered with no. A box that stands already is not shown twice.
  MsgBoxAnswer Show(std::string_view text, int style, std::string_view title, bool modal) override;

 private:
  void ShowAndGoOn(QMessageBox* box);

  std::vector<QPointer<QMessageBox>> open_;
  bool isWithdrawn_ = false;
};

}  // namespace vorlix
