#include "screens/DoubleItemsQuestion.h"

#include "services/ansi.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {

DoubleItem DoubleItemsQuestion::ShowDialog(const std::string& number, const std::string& oldName,
                                           const std::string& oldAddress, std::string& newName,
                                           std::string& newAddress) {
  if (!canAsk_()) return DoubleItem::kNothing;
  view_.Tell(LoadLangKey("DoubleItems_Label_Number", "Rufnummer:"_ansi) + " " + number);
  view_.Tell("  1  " + newName + ", " + newAddress);
  view_.Tell("  2  " + oldName + ", " + oldAddress);
  const auto answer = view_.Ask(
      LoadLangKey("DoubleItems_Label_Which", "Welcher Eintrag gilt (4: der alte, auch bei allen weiteren)"_ansi), "2");
  if (answer == "1") return DoubleItem::kSetItem;
  return answer == "4" ? DoubleItem::kAuto : DoubleItem::kNothing;
}

DoubleItem DoubleItemsBox::ShowDialog(const std::string& number, const std::string& oldName,
                                      const std::string& oldAddress, std::string& newName, std::string& newAddress) {
  const std::string gap(kLineEnd);
  const std::string text =
      LoadLangKey("DoubleItems_Label_Number", "Rufnummer:"_ansi) + " " + number + gap + gap +
      LoadLangKey("DoubleItems_Label_Old", "Vorhanden:"_ansi) + " " + oldName + ", " + oldAddress + gap +
      LoadLangKey("DoubleItems_Label_New", "Neu:"_ansi) + " " + newName + ", " + newAddress + gap + gap +
      LoadLangKey("DoubleItems_Label_Take", "Den neuen Eintrag übernehmen?"_ansi) + gap +
      LoadLangKey("DoubleItems_Label_KeepAll", "Abbrechen: der alte gilt, auch bei allen weiteren."_ansi);
  switch (boxes_.Show(text, kMsgYesNoCancel + kMsgQuestion, modAll_MsgBox::kProgramName, true)) {
    case MsgBoxAnswer::kYes:
      return DoubleItem::kSetItem;
    case MsgBoxAnswer::kCancel:
      return DoubleItem::kAuto;
    default:
      return DoubleItem::kNothing;
  }
}

}  // namespace vorlix
