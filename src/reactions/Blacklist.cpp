#include "reactions/Blacklist.h"

#include <algorithm>
#include <cerrno>

#include "data/paths.h"
#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::string_view kSeparator = "|";
constexpr int kFaultSubscript = 9;

// What would end a field or the line becomes a blank.
std::string Field(std::string_view text) {
  return Replace(WithoutControls(text), kSeparator, " ");
}

// A line without a separator is a number alone: it is for all own numbers, and takes the name of the line before.
BlacklistItem ItemOf(const std::string& line, const BlacklistItem& before) {
  if (line.find(kSeparator) == std::string::npos) return {Blacklist::AllWord(), line, before.Name};
  std::vector<std::string> fields = Split(line + std::string(kSeparator), kSeparator);
  return {fields[1], fields[0], fields.size() > 2 ? fields[2] : std::string()};
}

}  // namespace

std::string Blacklist::AllWord() {
  return LoadLangKey("DeclareProg_Const_All", "alle"_ansi);
}

std::string Blacklist::Path() const {
  return ports_.folders.GetMainPath(R"(\data\blacklist.dat)");
}

void Blacklist::Load() {
  std::vector<BlacklistItem> items;
  unread_ = !FuncBlackList_ReadFileToArray(Path(), items);
  if (!unread_) Set(std::move(items));
}

void Blacklist::Replace(std::vector<BlacklistItem> items) {
  FuncBlackList_WriteListToNewFile(Path(), items);
  Set(std::move(items));
}

void Blacklist::Set(std::vector<BlacklistItem> items) {
  index_.reset();
  items_ = std::move(items);
  index_ = std::make_unique<BlacklistIndex>(items_);
}

bool Blacklist::FuncBlackList_ReadFileToArray(const std::string& path, std::vector<BlacklistItem>& items) {
  return Trapped(
      "modFunction_Blacklist.FuncBlackList_ReadFileToArray",
      [&] {
        items.assign(1, {});
        const FileInfo info = ports_.files.Store().Stat(path);
        int lines = 0;
        // An editor may have left LF alone.
        const std::string text = vorlix::Replace(
            vorlix::Replace(ports_.files.fOpenFileToStream(path, lines), kLineEnd, "\n"), "\n", kLineEnd);
        if (text.empty()) return !info.IsFile() || info.size == 0;
        if (text.find(kLineEnd) != std::string::npos) TakeLines(Split(text, kLineEnd), items);
        return true;
      },
      path);
}

// Each line keeps its place and the list is then cut to the number of entries, so a blank line between two costs the
// last one. Lists were always read so.
void Blacklist::TakeLines(const std::vector<std::string>& lines, std::vector<BlacklistItem>& items) {
  items.assign(lines.size(), {});
  std::optional<BlacklistItem> named;
  bool isNameMissing = false;
  std::size_t count = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].empty()) continue;
    ++count;
    items[i] = ItemOf(lines[i], named.value_or(BlacklistItem()));
    if (lines[i].find(kSeparator) != std::string::npos) named = items[i];
    isNameMissing = isNameMissing || !named;
  }
  items.resize(std::max<std::size_t>(count, 1));
  if (!isNameMissing) return;
  ErrorHandling().ErrorLogNew("modFunction_Blacklist.FuncBlackList_ReadFileToArray", {}, kFaultSubscript,
                              "a number without fields stands before any line that has a name");
}

void Blacklist::FuncBlackList_WriteListToNewFile(const std::string& path, std::vector<BlacklistItem>& items) {
  Trapped(
      "modFunction_Blacklist.FuncBlackList_WriteListToNewFile",
      [&] {
        std::string text;
        for (BlacklistItem& item : items) {
          if (item.Number.empty()) continue;
          if (item.MSN == AllWord()) item.MSN.clear();
          text += Field(item.Number) + "|" + Field(item.MSN) + "|" + Field(item.Name) + std::string(kLineEnd);
        }
        const IoResult written = unread_ ? IoResult{EIO, "write " + path + ": it could not be read before"}
                                         : OverwriteMakingFolder(ports_.files.Store(), path, text);
        if (written) return;
        ErrorHandling().ErrorLogWithMsgBox("modFunction_Blacklist.FuncBlackList_WriteListToNewFile", {path},
                                           written.error, written.text);
      },
      path);
}

void Blacklist::FuncBlackList_NumberToList(const std::string& number, const std::string& name) {
  Trapped(
      "modFunction_Blacklist.FuncBlackList_NumberToList",
      [&] {
        if (number.empty()) return;
        if (FuncBlackList_IsNumberIn(number)) {
          TellItemExists();
        } else {
          std::vector<BlacklistItem> items = items_;
          items.push_back({{}, number, name.substr(0, kLongestName)});
          Replace(std::move(items));
        }
        if (reloadWindow_) reloadWindow_();
      },
      number);
}

void Blacklist::TellItemExists() {
  ports_.messages.MsgBoxForward(
      LoadLangKey("Message_ItemExistWithNumber", "Ein Eintrag mit dieser Telefonnummer ist bereits vorhanden!"_ansi),
      kMsgWarning, "Blacklist");
}

bool Blacklist::FuncBlackList_IsNumberIn(const std::string& number) const {
  return !number.empty() &&
         std::any_of(items_.begin(), items_.end(), [&](const BlacklistItem& item) { return item.Number == number; });
}

std::optional<BlacklistMatch> Blacklist::Find(std::string_view dataNumber, std::string_view MSN) const {
  return index_ ? index_->Find(dataNumber, MSN) : std::nullopt;
}

}  // namespace vorlix
