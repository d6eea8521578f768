// The window of the blacklist without a window: a list of lines that the user changes, and that takes the place of the
// blacklist only with OK. Decides what each command does; the view draws, and asks for the text of one entry.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "data/modSettings.h"
#include "reactions/Blacklist.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

class fEditBlacklistView {
 public:
  static constexpr int kNoLine = -1;

  // The columns of a line in their order: number, name, own numbers.
  using Line = std::array<std::string, 3>;

  virtual ~fEditBlacklistView() = default;
  // All lines anew; `selected` may be kNoLine.
  virtual void ShowLines(const std::vector<Line>& lines, int selected) = 0;
  // Opens the input of one entry, "number|own numbers|name". Its text goes to InputReturn() with the same index; while
  // that refuses it, the input stays open.
  virtual void OpenInput(const std::string& text, int index) = 0;
  virtual void Close() = 0;
};

class fEditBlacklist {
 public:
  using Line = fEditBlacklistView::Line;
  static constexpr int kNoLine = fEditBlacklistView::kNoLine;

  enum Column { kNumber = 0, kName = 1, kMSN = 2 };
  enum ListButton { kNew = 0, kEdit = 1, kRemove = 2 };
  enum EditButton { kOK = 0, kCancel = 1 };

  struct Ports {
    fEditBlacklistView& view;
    Blacklist& list;
    modSettings& settings;
    modAll_MsgBox& messages;
  };

  // All ports must outlive the object.
  explicit fEditBlacklist(Ports ports) : ports_(ports) {}

  static Line Headers();

  void Form_Load();
  // By OK and Cancel, or by the view: stores where the window stands, which the view has put into the settings.
  void Form_Unload();
  bool IsOpen() const { return isOpen_; }

  // Reads the file anew; what was changed in the window and not saved is lost.
  void LoadBlackList();

  void Select(int line);
  void cmdBlackList(ListButton button);
  void DoubleClick(int line);
  void DeleteKey();
  // False for a text that is refused: one without a number, or a new one whose number the blacklist has already.
  bool InputReturn(std::string_view text, int index);
  // Sorts by the column; the same column again turns the order round.
  void ColumnClick(Column column);
  void cmdEdit(EditButton button);
  void ShowInfo();

 private:
  void Edit(int line);
  void Remove();
  int LineOfInput(int index) const;
  void BlackListToArray();
  void SaveCheck();
  void Show() { ports_.view.ShowLines(lines_, selected_); }
  bool HasLine(int line) const { return line >= 0 && static_cast<std::size_t>(line) < lines_.size(); }

  Ports ports_;
  bool isOpen_ = false;
  std::vector<BlacklistItem> items_;  // the window's own copy
  std::vector<Line> lines_;
  std::size_t loadedLines_ = 0;
  int selected_ = kNoLine;
  std::string oldText_;
  bool changed_ = false;
  Column sortColumn_ = kNumber;
  bool isSorted_ = false, isDescending_ = false;
};

}  // namespace vorlix
