#include "services/modAll_MsgBox.h"

#include "services/clsErrorHandling.h"

namespace vorlix {
namespace {

std::string_view TitleOr(std::string_view title) {
  return title.empty() ? modAll_MsgBox::kProgramName : title;
}

}  // namespace

MsgBoxAnswer modAll_MsgBox::MsgBoxForward(std::string_view text, int style, std::string_view title) {
  return Trapped(
      "modAll_MsgBox.MsgBoxForward", [&] { return door_.Show(text, style, TitleOr(title), false); }, text);
}

MsgBoxAnswer modAll_MsgBox::MsgBoxNew(std::string_view text, int style, std::string_view title, bool silent) {
  if (silent) return MsgBoxAnswer::kOk;
  return Trapped(
      "modAll_MsgBox.MsgBoxNew", [&] { return door_.Show(text, style, TitleOr(title), false); }, text);
}

MsgBoxAnswer modAll_MsgBox::MsgBoxModal(std::string_view text, int style, std::string_view title) {
  return Trapped(
      "modAll_MsgBox.MsgBoxModal", [&] { return door_.Show(text, style, TitleOr(title), true); }, text);
}

MsgBoxAnswer modAll_MsgBox::MsgBoxLock(std::string_view text, int style, std::string_view title) {
  return Trapped(
      "modAll_MsgBox.MsgBoxLock", [&] { return door_.Show(text, style, TitleOr(title), true); }, text);
}

}  // namespace vorlix
