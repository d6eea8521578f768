// The numbers that are to be refused: the list in memory and its file "\data\blacklist.dat", a line each of number, own
// numbers and name with "|" between them. The order of the file is the order of the list and of the matching.
//
// A file that is there but cannot be read leaves the list as it is, and is not written over.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "data/Folders.h"
#include "data/clsFiles.h"
#include "data/modBook.h"
#include "reactions/BlacklistIndex.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

class Blacklist : public BlackListAdding {
 public:
  static constexpr std::size_t kLongestName = 30;

  struct Ports {
    clsFiles& files;
    const Folders& folders;
    modAll_MsgBox& messages;
  };

  // All ports must outlive the object.
  explicit Blacklist(Ports ports) : ports_(ports) {}
  Blacklist(const Blacklist&) = delete;
  Blacklist& operator=(const Blacklist&) = delete;

  // What is called while the list's window is open, after each attempt to add a number.
  void ReloadWindow(std::function<void()> reload) { reloadWindow_ = std::move(reload); }

  // The word that stands for all own numbers, "alle".
  static std::string AllWord();

  std::string Path() const;

  // Reads the file into the list. A missing file, or one without a line end, is an empty list.
  void Load();
  // Puts other items in place of the list and writes the file.
  void Replace(std::vector<BlacklistItem> items);
  const std::vector<BlacklistItem>& Items() const { return items_; }

  // False when the file is there and cannot be read.
  bool FuncBlackList_ReadFileToArray(const std::string& path, std::vector<BlacklistItem>& items);
  // Items without a number are left out; the word for all is emptied, in the array too. The user is told of a failure.
  void FuncBlackList_WriteListToNewFile(const std::string& path, std::vector<BlacklistItem>& items);
  // Adds one entry and saves; a number that is there already is told instead.
  void FuncBlackList_NumberToList(const std::string& number, const std::string& name) override;
  void TellItemExists();
  // Whether an entry has exactly this number.
  bool FuncBlackList_IsNumberIn(const std::string& number) const;

  std::optional<BlacklistMatch> Find(std::string_view dataNumber, std::string_view MSN) const;

 private:
  static void TakeLines(const std::vector<std::string>& lines, std::vector<BlacklistItem>& items);
  void Set(std::vector<BlacklistItem> items);

  Ports ports_;
  std::function<void()> reloadWindow_;
  std::vector<BlacklistItem> items_;
  bool unread_ = false;
  std::unique_ptr<BlacklistIndex> index_;  // of items_: made anew with them, so that no call waits for it
};

}  // namespace vorlix
