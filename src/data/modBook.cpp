#include "data/modBook.h"

#include <cerrno>
#include <limits>

#include "core/RejectReason.h"
#include "data/BookReading.h"
#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::string_view kNameless = "-";  // the name of an entry that shows none

const std::string& NumberOf(const oDataCall& call) {
  return call.DataNumber();
}

const std::string& NumberOf(const oDataNumber& number) {
  return number.DataNumber;
}

void SetPerson(oDataCall& call, std::int16_t mode, const std::string& name, const std::string& address) {
  call.NameMode = mode;
  call.Name(name);
  call.Address(address);
}

void SetPerson(oDataNumber& number, std::int16_t mode, const std::string& name, const std::string& address) {
  number.NameMode = mode;
  number.Name = name;
  number.Address = address;
}

bool MayBeInBook(const std::string& number) {
  return !number.empty() && IsDigit(number.front()) && !IsUnknownNumber(number);
}

// A counter that a hand-edited file has put at its end stays there.
void Count(oDataCall& entry, CallDirection direction) {
  const std::int32_t counter = direction == CallDirection::kIncoming ? entry.CallCountIn : entry.CallCountOut;
  if (counter < std::numeric_limits<std::int32_t>::max()) CallCounting(entry, static_cast<int>(direction));
}

BookItem EntryOf(const clsCollection::Entry& entry) {
  const auto* object = std::get_if<clsCollection::Object>(&entry.value);
  return object == nullptr ? nullptr : std::dynamic_pointer_cast<oDataCall>(*object);
}

}  // namespace

clsCollection& modBook::BookCollection() {
  return ports_.window.IsOpen() ? ports_.window.Collection() : book_;
}

void modBook::BookData_Read() {
  ReadFiles({});
}

// Entries of `kept` that neither file has stay in the book.
bool modBook::ReadFiles(const clsCollection& kept) {
  if (reading_ != nullptr) return false;
  return Trapped("modBook.BookData_Read", [&] {
    BookReading reading(reading_);
    bookUnread_ = cacheUnread_ = true;
    if (!ReadBookFile()) return false;
    bookUnread_ = false;
    cacheUnread_ = !ReadSearchCache();
    for (const auto& entry : kept.GetCollection()) {
      const BookItem item = EntryOf(entry);
      if (item && !reading.Find(entry.key)) reading.Put(item);
    }
    book_ = reading.Collection();
    BookChanged = false;
    return true;
  });
}

// False when the file is there and cannot be read; the reason is in the error log then.
bool modBook::ReadLines(const std::string& path, std::vector<std::string>& lines) {
  const FileInfo info = ports_.files.Store().Stat(path);
  int count = 0;
  std::string stream = ports_.files.fOpenFileToStream(path, count);
  if (stream.empty() && info.IsFile() && info.size > 0) return false;
  // An editor may have left LF alone beside lines that end in CR LF: both kinds end an entry.
  stream = Replace(WithoutByteOrderMark(stream), kLineEnd, "\n");
  lines = clsFiles::fStreamToArray(stream);
  return true;
}

bool modBook::ReadBookFile() {
  const FileInfo info = ports_.files.Store().Stat(BookPath());
  bookAbsent_ = !info.IsFile() || info.size == 0;
  std::vector<std::string> lines;
  if (!ReadLines(BookPath(), lines)) return false;
  for (const std::string& line : lines) {
    if (line.find(';') == std::string::npos) continue;
    BookDataAdd(vorlix::BookData_MakeItem(line, ports_.numbers, ports_.haveCallerSoundFile), false);
  }
  return true;
}

// The user's entries win over what a search has found.
bool modBook::ReadSearchCache() {
  std::vector<std::string> lines;
  if (!ReadLines(SearchCachePath(), lines)) return false;
  for (const std::string& line : lines) {
    const BookItem item = SearchResultItem(line, ports_.numbers);
    if (item && !item->DataNumber().empty() && !reading_->Find(item->DataNumber())) Put(item);
  }
  return true;
}

BookItem modBook::BookData_MakeItem(std::string_view line) {
  return Trapped("modBook.BookData_MakeItem",
                 [&] { return vorlix::BookData_MakeItem(line, ports_.numbers, ports_.haveCallerSoundFile); });
}

bool modBook::BookDataAdd(const BookItem& item, bool refuseDouble) {
  if (!item || item->DataNumber().empty()) return false;
  const BookItem old = reading_ != nullptr ? reading_->Find(item->DataNumber()) : Find(item->DataNumber());
  if (old && refuseDouble) {
    ports_.messages.MsgBoxNew(
        LoadLangKey("Message_ItemExistWithNumber", "Ein Eintrag mit dieser Telefonnummer ist bereits vorhanden!"_ansi),
        kMsgWarning);
    return false;
  }
  if (old && !Replaces(*item, *old)) return false;
  Put(item);
  return true;
}

// A name replaces a name without a question, but an entry without one keeps its place: an import of a whole list must
// not undo what the user left empty.
bool modBook::Replaces(oDataCall& item, const oDataCall& old) {
  if (!old.Name().empty() && !item.Name().empty() && item.Name() != kNameless) return true;
  if (old.Name() != item.Name() || old.Name() == kNameless) return false;
  if (old.Address() == item.Address() || item.Address().empty()) return false;
  return old.Address().empty() || AskToReplace(item, old);
}

bool modBook::AskToReplace(oDataCall& item, const oDataCall& old) {
  if (NoMoreQuestions) return false;
  std::string name = item.Name();
  std::string address = item.Address();
  const DoubleItem answer = ports_.doubles.ShowDialog(item.DataNumber(), old.Name(), old.Address(), name, address);
  if (answer == DoubleItem::kAuto) NoMoreQuestions = true;
  if (answer != DoubleItem::kSetItem) return false;
  item.Name(name);
  item.Address(address);
  return true;
}

// Into the book in use, which a question may have outlived.
void modBook::Put(const BookItem& item) {
  item->Key = item->DataNumber();
  if (reading_ != nullptr) {
    reading_->Put(item);
  } else {
    BookCollection().RemoveByKeyName(item->Key);
    BookCollection().Add(item);
  }
  BookChanged = true;
  if (!ports_.progress.IsUp()) return;
  const std::size_t count = reading_ != nullptr ? reading_->Count() : BookCollection().Count();
  ports_.progress.Show(LoadLangKey("SplashScreen_Msg_LoadPhoneBook", "lade Telefonbuch..."_ansi) + " " +
                       std::to_string(count));
}

void modBook::BookSave() {
  Trapped("modBook.BookSave", [&] {
    if (ports_.window.IsOpen()) {
      ports_.window.Refresh();
      BookChanged = true;
    } else if (WriteBookData(true)) {
      BookChanged = false;
    }
    if (ports_.refreshNewCalls) ports_.refreshNewCalls();
    if (ports_.refreshCards) ports_.refreshCards();
  });
}

bool modBook::WriteBookData(bool rotate) {
  if (ports_.blocks.BookWriteBlocked || reading_ != nullptr) return false;
  return Trapped(
      "modBook.WriteBookData",
      [&] {
        TakeLateBook();
        if (bookUnread_) throw Fault(EIO, "write " + BookPath() + ": it could not be read before");
        if (rotate) Rotate();
        MoveToBlacklist();
        std::string book, found;
        for (const auto& entry : book_.GetCollection()) {
          const BookItem item = EntryOf(entry);
          if (!item || !IsKeptEntry(*item)) continue;
          if (item->BookType == kBookTypeSearch) {
            found += SearchResultLine(*item);
          } else {
            book += BookLine(*item);
          }
        }
        const bool bookWritten = WriteOne(BookPath(), book);
        const bool foundWritten = cacheUnread_ || WriteOne(SearchCachePath(), found);
        known_ = ports_.files.Store().Stat(BookPath());
        if (bookWritten && foundWritten) DropDeleted();
        return bookWritten && foundWritten;
      },
      rotate);
}

void modBook::Rotate() {
  const int step = ports_.backupCountStep ? ports_.backupCountStep() : std::numeric_limits<int>::max();
  ++writeCounter_;
  if (writeCounter_ < step || !ports_.files.FileExist(BookPath())) return;
  writeCounter_ = 0;
  ports_.files.FileMakeBackup(BookPath(), ports_.backupCount ? ports_.backupCount() : 0);
}

// The blacklist may tell the user something, and the book may change meanwhile.
void modBook::MoveToBlacklist() {
  std::vector<BookItem> marked;
  for (const auto& entry : book_.GetCollection()) {
    const BookItem item = EntryOf(entry);
    if (item && std::exchange(item->MoveToBlacklist, false)) marked.push_back(item);
  }
  for (const BookItem& item : marked) {
    ports_.blackList.FuncBlackList_NumberToList(item->DataNumber(), item->Name());
  }
}

bool modBook::WriteOne(const std::string& path, const std::string& text) {
  const IoResult written = OverwriteMakingFolder(ports_.files.Store(), path, text);
  if (!written) ErrorHandling().ErrorLogWithMsgBox("modBook.WriteBookData", {path}, written.error, written.text);
  return static_cast<bool>(written);
}

// What is no longer in the file is no longer looked up.
void modBook::DropDeleted() {
  std::vector<std::string> keys;
  for (const auto& entry : book_.GetCollection()) {
    const BookItem item = EntryOf(entry);
    if (item && item->Deleted) keys.push_back(entry.key);
  }
  for (const std::string& key : keys) {
    book_.RemoveByKeyName(key);
  }
}

bool modBook::FileWatchBookChanged(bool store) {
  if (!store) {
    const FileInfo now = ports_.files.Store().Stat(BookPath());
    return now.IsFile() && now != known_;
  }
  if (!IsLate()) known_ = ports_.files.Store().Stat(BookPath());
  return false;
}

// There was no book to read, and now there is one that another program wrote.
bool modBook::IsLate() {
  return bookAbsent_ && FileWatchBookChanged(false) && ports_.files.Store().Stat(BookPath()).size > 0;
}

bool modBook::tmFileWatch_Timer() {
  if (FileWatchBookChanged(false)) ReadAnew();
  return std::exchange(readAnew_, false);
}

// Whether what was entered without a file to read, or with one that could not be read, outlives the next reading. An
// edit of the book that this program began takes entries out as well; a drive that came has never held them.
bool modBook::KeepsEntries() const {
  const bool isEdit = !BookChanged && ports_.files.Store().Stat(BookPath()).device == known_.device;
  return bookUnread_ || (bookAbsent_ && !isEdit);
}

void modBook::ReadAnew() {
  if (reading_ != nullptr) return;  // the change stays to be seen behind the question that is open
  const bool keeps = KeepsEntries();
  // Before the reading: a change that comes in between is seen at the next tick.
  known_ = ports_.files.Store().Stat(BookPath());
  if (!ReadFiles(keeps ? clsCollection(book_) : clsCollection())) return;
  readAnew_ = true;
  // What shows the book held the entries of before.
  if (ports_.refreshNewCalls) ports_.refreshNewCalls();
  if (ports_.refreshCards) ports_.refreshCards();
}

// A book whose drive came late, or that can be read again, is not to be written over by the few entries that were made
// without it.
void modBook::TakeLateBook() {
  if (IsLate() || bookUnread_) ReadAnew();
}

// Counting writes the whole book: what another program has changed since the last look must be in it.
void modBook::TakeOutsideChange() {
  TakeLateBook();
  if (ports_.folders.BookRefresh() && FileWatchBookChanged(false)) ReadAnew();
}

int modBook::GetNumberData(oDataCall& call, bool addIfMissing, bool countCall) {
  return Trapped(
      "modBook.GetNumberData", [&] { return LookUp(call, addIfMissing, countCall); }, call.DataNumber(), addIfMissing,
      countCall);
}

int modBook::GetNumberData(oDataNumber& number, bool addIfMissing, bool countCall) {
  return Trapped(
      "modBook.GetNumberData", [&] { return LookUp(number, addIfMissing, countCall); }, number.DataNumber, addIfMissing,
      countCall);
}

template <class Record>
int modBook::LookUp(Record& record, bool addIfMissing, bool countCall) {
  ports_.loop.RunPending();
  const std::string number = NumberOf(record);
  if (!MayBeInBook(number)) {
    SetPerson(record, kNoEntry, {}, {});
    return kNoEntry;
  }
  if (countCall || addIfMissing) TakeOutsideChange();
  if (const BookItem entry = Find(number)) {
    if (countCall) Count(*entry, CallDirection::kIncoming);
    TakeEntry(record, *entry);
    if (countCall) BookSave();
  } else {
    if (addIfMissing) AddMissing(number);
    SetPerson(record, kNoEntry, {}, {});
    record.BookTimeName.clear();
  }
  return record.NameMode;
}

BookItem modBook::Find(const std::string& number) {
  return BookCollection().ItemByKeyAs<oDataCall>(number);
}

void modBook::TakeEntry(oDataNumber& number, const oDataCall& entry) {
  SetPerson(number, kNamed, entry.Name(), entry.Address());
  number.BookTimeName = entry.BookTimeName;
}

void modBook::TakeEntry(oDataCall& call, const oDataCall& entry) {
  SetPerson(call, kNamed, entry.Name(), entry.Address());
  call.BookTimeName = entry.BookTimeName;
  if (entry.Blocked) {
    call.Blocked = ports_.schedules.IsTimePeriodActiv(entry.BookTimeName, true);
    if (call.Blocked) call.BlockFunction = kRejectBook;
  }
  if (TakeCard(call, entry) && !call.Card().BookVCardLinkNumber.empty()) {
    if (const BookItem master = Find(call.Card().BookVCardLinkNumber)) TakeCard(call, *master);
  }
  if (entry.Name() == kNameless) {
    SetPerson(call, kNoNameShown, {}, {});
  } else if (entry.Name().empty()) {
    call.NameMode = kNoEntry;
  } else if (ports_.journalFlags.JournalLoading) {
    ports_.journalCache.SpeedBuffer_Journal_Set(call.DataNumber(), &call, call.VW_FormatedFull());
  }
}

bool modBook::TakeCard(oDataCall& call, const oDataCall& entry) {
  if (entry.Card().BookVCardData.empty()) return false;
  call.MutableCard().BookVCardData = entry.Card().BookVCardData;
  BookAddVCardToItem(call);
  return true;
}

void modBook::AddMissing(const std::string& number) {
  const auto item = std::make_shared<oDataCall>(&ports_.numbers);
  item->DataNumber(number);
  item->CallCountIn = item->CallCountOut = 1;
  item->NewCall = true;
  BookDataAdd(item, false);
  BookSave();
}

void modBook::CountDialled(const std::string& number) {
  Trapped(
      "modBook.CountDialled",
      [&] {
        TakeOutsideChange();
        const BookItem entry = Find(number);
        if (!entry) return;
        Count(*entry, CallDirection::kOutgoing);
        BookSave();
      },
      number);
}

}  // namespace vorlix
