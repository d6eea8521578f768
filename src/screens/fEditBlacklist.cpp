#include "screens/fEditBlacklist.h"

#include <algorithm>

#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::string_view kSeparator = "|";

using Line = fEditBlacklist::Line;

std::string ShownMSN(const std::string& MSN) {
  return MSN.empty() ? Blacklist::AllWord() : MSN;
}

std::string TextOf(const Line& line) {
  return Join({line[fEditBlacklist::kNumber], line[fEditBlacklist::kMSN], line[fEditBlacklist::kName]}, kSeparator);
}

// A text of any number of fields, in the order of the file.
Line LineOf(std::string_view text) {
  std::vector<std::string> fields = Split(WithoutControls(text) + std::string(kSeparator), kSeparator);
  fields.resize(std::max<std::size_t>(fields.size(), 3));
  return {fields[0], fields[2], ShownMSN(fields[1])};
}

}  // namespace

fEditBlacklist::Line fEditBlacklist::Headers() {
  return {LoadLangKey("Blacklist_ListHeader_PhoneNumber", "Rufnummer"_ansi),
          LoadLangKey("Blacklist_ListHeader_Names", "Name"_ansi),
          LoadLangKey("Blacklist_ListHeader_ByCallToMSN", "bei Anruf an MSN"_ansi)};
}

void fEditBlacklist::Form_Load() {
  Trapped("fEditBlacklist.Form_Load", [&] {
    isOpen_ = true;
    isSorted_ = false;
    ports_.settings.LoadSettingsBlacklist();
    LoadBlackList();
  });
}

void fEditBlacklist::Form_Unload() {
  if (!isOpen_) return;
  isOpen_ = false;
  ports_.settings.SaveSettingsBlacklist();
}

void fEditBlacklist::LoadBlackList() {
  Trapped("fEditBlacklist.LoadBlackList", [&] {
    ports_.list.Load();
    items_ = ports_.list.Items();
    lines_.clear();
    for (const BlacklistItem& item : items_) {
      if (!item.Number.empty()) lines_.push_back({item.Number, item.Name, ShownMSN(item.MSN)});
    }
    loadedLines_ = lines_.size();
    changed_ = false;
    selected_ = kNoLine;
    Show();
  });
}

void fEditBlacklist::Select(int line) {
  selected_ = HasLine(line) ? line : kNoLine;
}

void fEditBlacklist::cmdBlackList(ListButton button) {
  Trapped(
      "fEditBlacklist.cmdBlackList_Click",
      [&] {
        switch (button) {
          case kNew:
            oldText_.clear();
            ports_.view.OpenInput({}, kNoLine);
            break;
          case kEdit:
            Edit(selected_);
            break;
          case kRemove:
            Remove();
            break;
        }
      },
      static_cast<int>(button));
}

void fEditBlacklist::DoubleClick(int line) {
  Select(line);
  cmdBlackList(kEdit);
}

void fEditBlacklist::DeleteKey() {
  if (!lines_.empty()) cmdBlackList(kRemove);
}

void fEditBlacklist::Edit(int line) {
  if (!HasLine(line)) return;
  oldText_ = TextOf(lines_[static_cast<std::size_t>(line)]);
  ports_.view.OpenInput(oldText_, line);
}

// The selection goes to the line that takes the place, or to the last one.
void fEditBlacklist::Remove() {
  if (!HasLine(selected_)) return;
  lines_.erase(lines_.begin() + selected_);
  selected_ = std::min(selected_, static_cast<int>(lines_.size()) - 1);
  Show();
}

bool fEditBlacklist::InputReturn(std::string_view text, int index) {
  return Trapped(
      "fEditBlacklist.InputReturn",
      [&] {
        if (text != oldText_) changed_ = true;
        const Line line = LineOf(text);
        if (line[kNumber].empty()) return false;
        const int edited = index == kNoLine ? kNoLine : LineOfInput(index);
        if (edited == kNoLine) {
          if (ports_.list.FuncBlackList_IsNumberIn(line[kNumber])) {
            ports_.list.TellItemExists();
            return false;
          }
          lines_.push_back(line);
          selected_ = static_cast<int>(lines_.size()) - 1;
        } else {
          lines_[static_cast<std::size_t>(edited)] = line;
          selected_ = edited;
        }
        BlackListToArray();
        Show();
        return true;
      },
      text, index);
}

// While the input was open the list may have been read anew: the entry is looked for where it stands now. One that is
// gone comes back as a new one.
int fEditBlacklist::LineOfInput(int index) const {
  const auto isEdited = [&](const Line& line) { return TextOf(line) == oldText_; };
  if (HasLine(index) && isEdited(lines_[static_cast<std::size_t>(index)])) return index;
  const auto moved = std::find_if(lines_.begin(), lines_.end(), isEdited);
  return moved == lines_.end() ? kNoLine : static_cast<int>(moved - lines_.begin());
}

void fEditBlacklist::ColumnClick(Column column) {
  Trapped(
      "fEditBlacklist.SortListView",
      [&] {
        isDescending_ = isSorted_ && sortColumn_ == column && !isDescending_;
        isSorted_ = true;
        sortColumn_ = column;
        const Line marked = HasLine(selected_) ? lines_[static_cast<std::size_t>(selected_)] : Line();
        std::stable_sort(lines_.begin(), lines_.end(), [&](const Line& a, const Line& b) {
          const std::string first = Lower(a.at(column)), second = Lower(b.at(column));
          return isDescending_ ? second < first : first < second;
        });
        if (selected_ != kNoLine) {
          selected_ = static_cast<int>(std::find(lines_.begin(), lines_.end(), marked) - lines_.begin());
        }
        Show();
      },
      static_cast<int>(column));
}

void fEditBlacklist::BlackListToArray() {
  items_.clear();
  for (const Line& line : lines_) {
    const bool forAll = line[kMSN] == Blacklist::AllWord();
    items_.push_back({forAll ? std::string() : line[kMSN], line[kNumber], line[kName]});
  }
  if (items_.empty()) items_.emplace_back();
}

// A list that was only sorted stays as it is: its order is the order of the matching.
void fEditBlacklist::SaveCheck() {
  if (lines_.size() != loadedLines_ || changed_) ports_.list.Replace(items_);
}

void fEditBlacklist::cmdEdit(EditButton button) {
  Trapped(
      "fEditBlacklist.cmdEdit_Click",
      [&] {
        if (button == kOK) {
          BlackListToArray();
          SaveCheck();
        }
        ports_.view.Close();
        Form_Unload();
      },
      static_cast<int>(button));
}

void fEditBlacklist::ShowInfo() {
  const std::vector<std::string> texts = {
      LoadLangKey("Blacklist_Info_Reject1", "0171: jede Rufnummer, die so beginnt"_ansi),
      LoadLangKey("Blacklist_Info_Reject2", "*55: jede Rufnummer, in der 55 vorkommt"_ansi),
      LoadLangKey("Blacklist_Info_Reject3", "??55: jede Rufnummer mit 55 hinter zwei beliebigen Ziffern"_ansi),
      LoadLangKey("Blacklist_Info_Reject4", "MSN leer oder \"alle\": bei Anrufen an jede eigene Nummer"_ansi),
      LoadLangKey("Blacklist_Info_Reject5", "MSN 123;456: nur bei Anrufen an eine dieser Nummern"_ansi),
      LoadLangKey("Blacklist_Info_Reject6", "Speicherort:"_ansi) + " " + ports_.list.Path(),
      LoadLangKey("Multiline_BlacklistInfo",
                  "Es gilt der erste Eintrag, der passt.<CR>Ist für die Blackliste ein Zeitraum eingerichtet, wird nur "
                  "darin abgewiesen."_ansi),
  };
  ports_.messages.MsgBoxModal(Join(texts, kLineEnd), kMsgInformation, "Blacklist");
}

}  // namespace vorlix
