#include "services/modAll_MsgBox.h"

#include "services/clsErrorHandling.h"

namespace vorlix {

MsgBoxAnswer modAll_MsgBox::MsgBoxForward(std::string_view text, int style, std::string_view title) {
  return Show("modAll_MsgBox.MsgBoxForward", text, style, title, false);
}

MsgBoxAnswer modAll_MsgBox::MsgBoxNew(std::string_view text, int style, std::string_view title, bool silent) {
  return silent ? MsgBoxAnswer::kOk : Show("modAll_MsgBox.MsgBoxNew", text, style, title, false);
}

MsgBoxAnswer modAll_MsgBox::MsgBoxModal(std::string_view text, int style, std::string_view title) {
  return Show("modAll_MsgBox.MsgBoxModal", text, style, title, true);
}

MsgBoxAnswer modAll_MsgBox::MsgBoxLock(std::string_view text, int style, std::string_view title) {
  return Show("modAll_MsgBox.MsgBoxLock", text, style, title, true);
}

MsgBoxAnswer modAll_MsgBox::Show(std::string_view routine, std::string_view text, int style, std::string_view title,
                                 bool modal) {
  return Trapped(
      routine, [&] { return door_.Show(text, style, title.empty() ? kProgramName : title, modal); }, text);
}

}  // namespace vorlix
