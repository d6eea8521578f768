// The phone book: who a number is. It is held whole in memory, keyed by the number in its normal form, and written back
// whole: the user's entries to "Vorlixbook.txt", what a reverse search found to "cache.inv".
//
// While the book window is open its working copy is the book that calls are looked up in. A file that is there but
// could not be read is not written over, and one that came after the start is read first.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/oDataNumber.h"
#include "core/pipeline_ports.h"
#include "data/Folders.h"
#include "data/JournalCache.h"
#include "data/WriteBlocks.h"
#include "data/book_item.h"
#include "data/clsFiles.h"
#include "data/modVCard.h"
#include "platform/MessageLoop.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

// What the user says to two entries of one number.
enum class DoubleItem : int {
  kSetItem = 1,  // the new one replaces the old one
  kNothing = 2,
  kAuto = 4,  // the old one stays, and nothing more is asked
};

class AskForDoubleItems {
 public:
  virtual ~AskForDoubleItems() = default;
  // The user may change the new name and address, also to the old ones.
  virtual DoubleItem ShowDialog(const std::string& number, const std::string& oldName, const std::string& oldAddress,
                                std::string& newName, std::string& newAddress) = 0;
};

class NoAskForDoubleItems : public AskForDoubleItems {
 public:
  DoubleItem ShowDialog(const std::string&, const std::string&, const std::string&, std::string&,
                        std::string&) override {
    return DoubleItem::kNothing;
  }
};

class BookWindow {
 public:
  virtual ~BookWindow() = default;
  virtual bool IsOpen() = 0;
  // Its working copy; asked for only while it is open.
  virtual clsCollection& Collection() = 0;
  virtual void Refresh() = 0;
};

class NoBookWindow : public BookWindow {
 public:
  bool IsOpen() override { return false; }
  clsCollection& Collection() override { return empty_; }
  void Refresh() override {}

 private:
  clsCollection empty_;
};

// Takes the numbers that leave the book for the blacklist.
class BlackListAdding {
 public:
  virtual ~BlackListAdding() = default;
  virtual void FuncBlackList_NumberToList(const std::string& number, const std::string& name) = 0;
};

class NoBlackListAdding : public BlackListAdding {
 public:
  void FuncBlackList_NumberToList(const std::string&, const std::string&) override {}
};

class BookReading;

class modBook : public PhoneBook {
 public:
  // Hooks may be left empty.
  struct Ports {
    clsFiles& files;
    const Folders& folders;
    const WriteBlocks& blocks;
    MessageLoop& loop;
    NumberAnalysis& numbers;
    Schedules& schedules;
    modAll_MsgBox& messages;
    AskForDoubleItems& doubles;
    BookWindow& window;
    BlackListAdding& blackList;
    LoadProgress& progress;
    JournalCache& journalCache;
    const JournalFlags& journalFlags;
    std::function<int()> backupCount;      // the setting
    std::function<int()> backupCountStep;  // the setting, 0 for a backup at each write
    std::function<bool(const std::string& number)> haveCallerSoundFile;
    std::function<void()> refreshNewCalls;  // the new-calls list, if it is open
    std::function<void()> refreshCards;     // the vCard window
  };

  // All ports must outlive the object.
  explicit modBook(Ports ports) : ports_(std::move(ports)) {}

  // The book in memory is ahead of its file.
  bool BookChanged = false;
  // Entries of one number stay as they are without a question; the user's answer sets it for the rest of an import.
  bool NoMoreQuestions = false;

  // Reads both files anew. A book that cannot be read leaves the one in memory.
  void BookData_Read();
  BookItem BookData_MakeItem(std::string_view line);
  // Adds an entry to the book in use, or puts it in place of the one with its number. `refuseDouble` tells the user
  // instead that there is one. True when the book has changed.
  bool BookDataAdd(const BookItem& item, bool refuseDouble);
  // Writes both files and takes deleted entries out of the book. False when nothing could be written, or part of it.
  bool WriteBookData(bool rotate);
  // Saves a change of the book in use.
  void BookSave();
  // The book in use. On leaving, the window puts its working copy here.
  clsCollection& BookCollection();

  // A hit copies the entry to the call, a miss empties the call's fields and may add an entry.
  int GetNumberData(oDataCall& call, bool addIfMissing, bool countCall) override;
  // The same for the light record, which gets name, address and period only.
  int GetNumberData(oDataNumber& number, bool addIfMissing, bool countCall);
  void CountDialled(const std::string& number) override;

  // With `store` remembers how the book's file stands, but for one that came late and is still to be read; otherwise
  // tells whether it stands differently now. A file that is gone is no change: there is nothing to read.
  bool FileWatchBookChanged(bool store);
  // Reads the book after a change by another program. True when it was read anew since the last tick.
  bool tmFileWatch_Timer();

  std::string BookPath() const { return ports_.folders.BookPath() + "Vorlixbook.txt"; }
  std::string SearchCachePath() const { return ports_.folders.GetMainPath(R"(\data\cache.inv)"); }

 private:
  template <class Record>
  int LookUp(Record& record, bool addIfMissing, bool countCall);
  BookItem Find(const std::string& number);
  bool ReadFiles(const clsCollection& kept);
  void ReadAnew();
  bool IsLate();
  bool KeepsEntries() const;
  void TakeLateBook();
  void TakeOutsideChange();
  void TakeEntry(oDataCall& call, const oDataCall& entry);
  void TakeEntry(oDataNumber& number, const oDataCall& entry);
  bool TakeCard(oDataCall& call, const oDataCall& entry);
  void AddMissing(const std::string& number);

  bool Replaces(oDataCall& item, const oDataCall& old);
  bool AskToReplace(oDataCall& item, const oDataCall& old);
  void Put(const BookItem& item);

  bool ReadLines(const std::string& path, std::vector<std::string>& lines);
  bool ReadBookFile();
  bool ReadSearchCache();

  void MoveToBlacklist();
  void Rotate();
  bool WriteOne(const std::string& path, const std::string& text);
  void DropDeleted();

  Ports ports_;
  clsCollection book_;
  BookReading* reading_ = nullptr;  // while the files are read
  bool bookUnread_ = false, cacheUnread_ = false;
  bool bookAbsent_ = false;  // there was nothing to read
  bool readAnew_ = false;    // since the last tick
  int writeCounter_ = 0;
  FileInfo known_;
};

}  // namespace vorlix
