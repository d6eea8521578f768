// The only ways of showing a message box. How a box looks is the view's: it sits behind MsgBoxDoor.
#pragma once

#include <string>
#include <string_view>

namespace vorlix {

// Style values of a box: buttons, plus an icon.
enum MsgBoxStyle : int {
  kMsgOk = 0,
  kMsgYesNoCancel = 3,
  kMsgYesNo = 4,
  kMsgError = 16,
  kMsgQuestion = 32,
  kMsgWarning = 48,
  kMsgInformation = 64,
};

inline constexpr int kMsgButtons = 0x0F;
constexpr bool IsQuestion(int style) {
  return (style & kMsgButtons) != kMsgOk;
}

enum class MsgBoxAnswer { kOk = 1, kCancel = 2, kYes = 6, kNo = 7 };

// Shows one box. `modal` asks to return only once it is answered; a view that cannot wait answers kOk, or kNo to a
// question.
class MsgBoxDoor {
 public:
  virtual ~MsgBoxDoor() = default;
  virtual MsgBoxAnswer Show(std::string_view text, int style, std::string_view title, bool modal) = 0;
};

class modAll_MsgBox {
 public:
  static constexpr std::string_view kProgramName = "Vorlix";

  explicit modAll_MsgBox(MsgBoxDoor& door) : door_(door) {}

  // An empty title is filled in with the program's name.
  MsgBoxAnswer MsgBoxForward(std::string_view text, int style = kMsgOk, std::string_view title = {});
  // The program's own box; with `silent` nothing is shown and the answer is kOk.
  MsgBoxAnswer MsgBoxNew(std::string_view text, int style = kMsgOk, std::string_view title = {}, bool silent = false);
  MsgBoxAnswer MsgBoxModal(std::string_view text, int style = kMsgOk, std::string_view title = {});
  MsgBoxAnswer MsgBoxLock(std::string_view text, int style = kMsgOk, std::string_view title = {});

 private:
  MsgBoxAnswer Show(std::string_view routine, std::string_view text, int style, std::string_view title, bool modal);

  MsgBoxDoor& door_;
};

}  // namespace vorlix
