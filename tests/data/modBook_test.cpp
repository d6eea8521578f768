#include "data/modBook.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/null_ports.h"
#include "fakes/BookFakes.h"
#include "fakes/DataRoom.h"
#include "fakes/ManualReactor.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using Op = MemoryFileStore::Operation;
const std::string kPath = "/vorlix/data/Vorlixbook.txt";
const std::string kCache = "/vorlix/data/cache.inv";
const std::string kTail = ";0;1;;;;[vcd()vcd]\r\n";  // of an entry without a card

class NightOff : public Schedules {
 public:
  bool IsTimePeriodActiv(std::string_view name, bool fallback) override { return name != "nachts" && fallback; }
};

class BookTest : public testing::Test, protected DataRoom {
 protected:
  std::string Book() const { return store.Content(kPath); }
  void Read(const std::string& bytes) {
    store.AddFile(kPath, bytes);
    book.BookData_Read();
    store.requests.clear();
  }
  BookItem Entry(const std::string& number) { return book.BookCollection().ItemByKeyAs<oDataCall>(number); }
  oDataCall Call(const std::string& number) {
    oDataCall call(&numbers);
    call.DataNumber(number);
    return call;
  }
  // A look-up that may add and count.
  int Look(const std::string& number, bool add = true, bool count = true) {
    oDataCall call = Call(number);
    return book.GetNumberData(call, add, count);
  }
  static std::string Address(const std::string& person) { return person.substr(person.find('/')); }
  // A person is "name/address".
  static BookItem Item(const std::string& number, const std::string& person) {
    auto item = std::make_shared<oDataCall>();
    item->DataNumber(number);
    item->Name(person.substr(0, person.find('/')));
    item->Address(Address(person).substr(1));
    return item;
  }

  ManualReactor loop;
  PlainNumbers numbers;
  NightOff schedules;
  NotedDoubles doubles;
  FakeBookWindow window;
  NotedBlackList blackList;
  NotedProgress progress;
  JournalCache cache;
  JournalFlags flags;
  int listsRefreshed = 0;
  modBook book{{files, folders, blocks, loop, numbers, schedules, messages, doubles, window, blackList, progress, cache,
                flags, [] { return 2; }, [this] { return backupCountStep; },
                [](const std::string& number) { return number == "0301"; }, [this] { ++listsRefreshed; },
                [this] { listsRefreshed += 10; }}};
};

TEST_F(BookTest, AFileSurvivesARewrite) {
  const std::string card = "[vcd(1;;Anna;1;24.12./1970;0;;/;0;;/;;;a.jpg)vcd]\r\n";
  const std::string whole = "Meier;0301;3;1;2;1;Weg 1;nachts;0;7;;;;" + card;
  const std::string full = "A;1;0;0;0;0;;" + kTail;
  using Case = std::tuple<std::string, std::string>;
  for (const auto& [before, after] : {
           Case{whole, whole}, Case{"Meier;0301;3;1;0;0;Weg 1;", "Meier;0301;3;1;0;0;Weg 1;" + kTail},
           Case{"M;0301;3;1;0;0;W;" + card, "M;0301;3;1;0;0;W;;0;1;;;;" + card},  // in the period's field
           Case{"M;0301;3;1;0;0;W;P;[vcd(1;7;5)vcd];9", "M;0301;3;1;0;0;W;P;0;1;;;;[vcd(1;7;5)vcd]\r\n"},
           Case{"M;0301;3;1;0;0;W;P;0;4;;;;[vcd(1;7", "M;0301;3;1;0;0;W;P;0;4;;;;[vcd()vcd]\r\n"},  // cut
           Case{"M;0301;;1;0;0;W;P;5;x;;;;[vcd()vcd]", "M;0301;0;1;0;0;W;P" + kTail},               // odd type
           Case{"A;+1;9999999999;2;99999;2;;;0;1.5;;;;", "A;+1;2147483647;0;32767;0;;;0;1;;;;[vcd()vcd]\r\n"},
           Case{"[vcd(A;1;0;0;0;0;)vcd]B;", "[vcd A;1;0;0;0;0; vcd]B;" + kTail},
           Case{"A;1;0;0;0;0;;\nB;2;0;0;0;0;;\r\n", full + "B;2;0;0;0;0;;" + kTail},
           Case{"\xEF\xBB\xBFM\xC3\xBCller \x81;1;0;0;0;0;;", "M\xC3\xBCller \x81;1;0;0;0;0;;" + kTail},
           Case{std::string("A\0B\tC\x1b;1;0;0;0;0;;", 19), std::string("A\0B\tC\x1b;1;0;0;0;0;;", 19) + kTail},
           Case{full + "\r\n\r\nno field\r\nB;12a;0;0;0;0;;\r\nB;;0;0;0;0;;\r\nB;2;0;0;0;0;", full},
           Case{"A;1;0;0;0;0;;\r\n ;2;0;0;0;0;;\r\nC;3;0;0;0;0; ;", full}  // a blank: not to be kept
       }) {
    for (const std::string& text : {before, after}) {
      Read(text);
      EXPECT_TRUE(book.WriteBookData(false));
      EXPECT_EQ(Book(), after);
      EXPECT_EQ(store.Writes(), 2);
    }
  }
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(BookTest, ReadsALineIntoARecord) {
  const auto item = book.BookData_MakeItem("Meier;0301;3;1;2;1;Weg 1;nachts;0;7;;;;[vcd(1;;Anna)vcd]");
  ASSERT_TRUE(item);
  EXPECT_EQ(item->Name() + item->Address() + item->BookTimeName + item->Card().BookVCsName, "MeierWeg 1nachtsAnna");
  EXPECT_TRUE(item->NewCall && item->BookInversMark && item->SoundFileFound && item->Blocked);
  EXPECT_FALSE(book.BookData_MakeItem("Meier;0302;3;1;0;1;Weg 1;")->Blocked);
}

TEST_F(BookTest, NoTextCanForgeAnEntryOrACard) {
  for (const std::string text : {"a;b\r\nc\td", "[vcd(1;;x)vcd]", ";"}) {
    book.BookCollection().Clear();
    const auto item = Item("1", text + "/" + text);
    item->BookTimeName = text;
    item->MutableCard().BookVCardData = "1;;)vcd];x\r\ny";
    book.BookDataAdd(item, false);
    const auto found = Item("2", text + "|c/|");
    found->BookType = kBookTypeSearch;
    book.BookDataAdd(found, false);
    ASSERT_TRUE(book.WriteBookData(false));
    book.BookData_Read();
    ASSERT_EQ(book.BookCollection().Count(), 2u) << Book();
    EXPECT_EQ(Entry("1")->Card().BookVCardData, "1;; vcd];x  y");
    EXPECT_EQ(Entry("1")->Name(), Entry("1")->BookTimeName);
    EXPECT_EQ(Entry("2")->Address(), "");
  }
  EXPECT_EQ(Book(), ";1;0;0;0;0;;;0;0;;;;[vcd(1;; vcd];x  y)vcd]\r\n");
  EXPECT_EQ(store.Content(kCache), "2|; c|\r\n");
}

TEST_F(BookTest, TheUsersEntriesWinOverWhatASearchFound) {
  store.AddFile(kCache, "0301|Found|Street\r\n0302|Found;er|Street|more\n|x|y\r\n0303|short\r\n0302|Again|\r\n");
  Read("Meier;0301;3;1;0;0;;" + kTail);
  EXPECT_EQ(book.BookCollection().Count(), 2u);
  EXPECT_EQ(Entry("0301")->Name() + Entry("0302")->Name(), "MeierFound;er");
  ASSERT_TRUE(book.WriteBookData(false));
  EXPECT_EQ(store.Content(kCache), "0302|Found;er|Street\r\n");
  Entry("0302")->BookType = kBookTypeUser;
  ASSERT_TRUE(book.WriteBookData(false));
  EXPECT_EQ(store.Content(kCache), "");
  EXPECT_THAT(Book(), HasSubstr("Found er;0302;0;0;0;0;Street;;0;0;;;;"));
}

TEST_F(BookTest, DecidesBetweenTwoEntriesOfOneNumber) {
  using Case = std::tuple<std::string, std::string, bool, bool>;  // name/address: old and new; asked; may be replaced
  for (const auto& [was, comes, asked, replaced] :
       {Case{"Old/x", "Old/", false, true}, Case{"-/", "New/", false, true}, Case{"Old/", "-/", false, false},
        Case{"Old/", "/x", false, false}, Case{"-/x", "/y", false, false}, Case{"/", "New/x", false, false},
        Case{"/x", "/x", false, false}, Case{"/x", "/", false, false}, Case{"/", "/x", false, true},
        Case{"/x", "/y", true, true}}) {
    for (const DoubleItem answer : {DoubleItem::kSetItem, DoubleItem::kNothing, DoubleItem::kAuto}) {
      book.BookCollection().Clear();
      book.NoMoreQuestions = false;
      doubles.asked.clear();
      doubles.answer = answer;
      ASSERT_TRUE(book.BookDataAdd(Item("1", was), true));
      book.BookChanged = false;
      const bool isReplaced = replaced && (!asked || answer == DoubleItem::kSetItem);
      EXPECT_EQ(book.BookDataAdd(Item("1", comes), false), isReplaced) << was << " " << comes;
      EXPECT_EQ(book.BookChanged, isReplaced) << was << " " << comes;
      EXPECT_EQ("/" + Entry("1")->Address(), Address(isReplaced ? comes : was)) << was << " " << comes;
      EXPECT_EQ(doubles.asked.size(), asked ? 1u : 0u);
    }
  }
  EXPECT_FALSE(book.BookDataAdd(Item("1", "/z"), false)) << "kAuto was the last answer";
  EXPECT_THAT(doubles.asked, ElementsAre("1: /x /y"));
}

TEST_F(BookTest, AnEntryByHandIsNeverADoubleAndMayBeTypedAnew) {
  ASSERT_TRUE(book.BookDataAdd(Item("1", "/x"), true));
  EXPECT_FALSE(book.BookDataAdd(Item("1", "New/"), true) || book.BookDataAdd(Item("", "New/"), false));
  EXPECT_THAT(boxes.shown, ElementsAre("Vorlix 48: Ein Eintrag mit dieser Telefonnummer ist bereits vorhanden!"));
  doubles.answer = DoubleItem::kSetItem;
  doubles.typedAddress = "typed";
  EXPECT_TRUE(book.BookDataAdd(Item("1", "/z"), false));
  EXPECT_EQ(Entry("1")->Address(), "typed");
}

TEST_F(BookTest, LooksANumberUpByItsExactText) {
  Read(
      "Meier;0301;3;0;0;0;Weg 1;tags\r\n-;0302;3;0;0;0;Weg 2;\r\n;0303;3;0;0;0;Weg 3;\r\nB;0304;3;0;1;0;;tags\r\n"
      "N;0305;3;0;1;0;;nachts\r\n"
      "L;0306;3;0;0;0;;;0;1;;;;[vcd(1;0307;;;;;;;;;;;;;)vcd]\r\nM;0307;3;0;0;0;;;0;1;;;;[vcd(0;;Anna)vcd]\r\n");
  using Case = std::tuple<std::string, int, std::string, int>;  // number, mode, texts of the entry and card, blocked
  for (const auto& [number, mode, text, blocked] :
       {Case{"0301", 1, "Meier Weg 1 tags ", 0}, Case{"0302", 2, "   ", 0}, Case{"0303", 0, " Weg 3  ", 0},
        Case{"0304", 1, "B  tags ", 2}, Case{"0305", 1, "N  nachts ", 0}, Case{"0306", 1, "L   Anna", 0},
        Case{"301", 0, "   ", 0}, Case{"+301", 0, "  kept ", 0}, Case{"1unbekannt", 0, "  kept ", 0}}) {
    oDataCall call = Call(number);
    call.NameMode = kNamed;
    call.Name("old");
    call.Address("old");
    call.BookTimeName = "kept";
    EXPECT_EQ(book.GetNumberData(call, false, false), mode) << number;
    EXPECT_EQ(call.NameMode, mode) << number;
    EXPECT_EQ(call.Name() + " " + call.Address() + " " + call.BookTimeName + " " + call.Card().BookVCsName, text);
    EXPECT_EQ(call.BlockFunction, blocked) << number;
    EXPECT_EQ(call.Blocked, blocked == 2) << number;
  }
  oDataNumber light;
  light.DataNumber = "0302";
  EXPECT_EQ(book.GetNumberData(light, false, false), 1);
  EXPECT_EQ(light.Name + light.Address, "-Weg 2");
  EXPECT_TRUE(store.requests.empty());
  for (const bool loading : {false, true}) {  // only a journal that loads learns the name
    oDataCall line = Call("0301");
    flags.JournalLoading = loading;
    Look("0301", false, false);
    cache.SpeedBuffer_Journal_Get(line);
    EXPECT_EQ(line.Name(), loading ? "Meier" : "");
  }
}

TEST_F(BookTest, CountsACallWithOneWriteOfEachFile) {
  Read("Meier;0301;3;0;0;0;;\r\nEnd;0302;2147483647;0;0;0;;" + kTail);
  Look("0301");
  EXPECT_EQ(store.Writes() * 100 + listsRefreshed, 211);
  book.CountDialled("0301");
  book.CountDialled("0309");
  Look("0302", false);
  EXPECT_EQ(Book(), "Meier;0301;4;0;0;0;;;0;2;;;;[vcd()vcd]\r\nEnd;0302;2147483647;0;0;0;;" + kTail);
  Look("0303");
  EXPECT_THAT(Book(), EndsWith(";0303;1;1;0;0;;" + kTail));
  EXPECT_EQ(store.Writes(), 8);
}

TEST_F(BookTest, ACallWhileTheBooksWindowIsOpenCountsInItsCopy) {
  Read("Meier;0301;4;0;0;0;;" + kTail);
  window.copy = book.BookCollection().Clone();
  for (const bool open : {true, false}) {
    window.open = open;
    if (open) Look("0301");
    EXPECT_EQ(Entry("0301")->CallCountIn, open ? 5 : 4);
  }
  EXPECT_TRUE(book.BookChanged);
  EXPECT_EQ(window.refreshed * 100 + store.Writes(), 100);
}

TEST_F(BookTest, AWriteRotatesMovesToTheBlacklistAndDropsTheDeleted) {
  Read("Meier;0301;3;0;0;0;;\r\nBad;0302;3;0;0;0;;");
  backupCountStep = 2;
  Entry("0302")->MoveToBlacklist = Entry("0302")->Deleted = true;
  blackList.meanwhile = [this] { book.CountDialled("0301"); };  // its message lets the loop run
  EXPECT_TRUE(book.WriteBookData(false));
  EXPECT_THAT(blackList.added, ElementsAre("0302 Bad"));
  const std::string written = Book();
  EXPECT_EQ(written, "Meier;0301;3;0;0;0;;;0;2;;;;[vcd()vcd]\r\n");
  EXPECT_FALSE(Entry("0302") || store.Exists("/vorlix/data/Vorlixbook.bak"));
  EXPECT_TRUE(book.WriteBookData(true));
  EXPECT_EQ(store.Content("/vorlix/data/Vorlixbook.bak"), written);
  EXPECT_EQ(blackList.added.size(), 1u);

  blocks.BookWriteBlocked = true;
  store.requests.clear();
  book.CountDialled("0301");
  EXPECT_EQ(store.Writes(), 0);
  EXPECT_EQ(Entry("0301")->CallCountOut, 3);
}

TEST_F(BookTest, ABookThatCannotBeReadOrWrittenIsNotLost) {
  const std::string text = "Meier;0301;3;0;0;0;;" + kTail;
  store.AddFile(kCache, "0302|Found|\r\n");
  store.Fail(Op::kRead, EIO, "Vorlixbook.txt");
  Read(text);
  book.CountDialled("0301");
  Look("0303");
  EXPECT_EQ(store.Writes(), 0);
  EXPECT_THAT(ErrorLog(), HasSubstr("it could not be read before"));
  store.FailNothing();
  book.CountDialled("0301");  // and it can be read again
  EXPECT_EQ(Book(), "Meier;0301;3;0;0;0;;;0;2;;;;[vcd()vcd]\r\n;0303;1;1;0;0;;" + kTail);

  store.Fail(Op::kRead, EIO, "cache.inv", 1);
  Read(text);
  EXPECT_TRUE(book.WriteBookData(false));
  EXPECT_EQ(store.Content(kCache), "0302|Found|\r\n");

  store.Fail(Op::kOverwrite, ENOSPC, "Vorlixbook.txt");
  Entry("0301")->Deleted = true;
  book.BookChanged = true;
  book.BookSave();
  EXPECT_TRUE(book.BookChanged);
  EXPECT_TRUE(Entry("0301"));
  EXPECT_EQ(Book(), text);
  EXPECT_EQ(boxes.shown.size(), 1u);
  store.FailNothing();
  book.BookSave();
  EXPECT_EQ(Book(), "");
}

TEST_F(BookTest, TakesOverWhatAnotherProgramWrote) {
  Read("Meier;0301;3;0;0;0;;");
  book.FileWatchBookChanged(true);
  book.CountDialled("0301");
  EXPECT_FALSE(book.FileWatchBookChanged(false)) << "the own write";
  store.AddFile(kPath, "Other;0301;3;0;0;0;;");
  EXPECT_TRUE(book.FileWatchBookChanged(false));
  book.BookChanged = true;
  EXPECT_TRUE(book.tmFileWatch_Timer());
  EXPECT_EQ(Entry("0301")->Name(), "Other");
  EXPECT_FALSE(book.BookChanged || book.tmFileWatch_Timer());
  ASSERT_TRUE(store.Remove(kPath));
  EXPECT_FALSE(book.FileWatchBookChanged(false));
}

TEST_F(BookTest, ACallDuringAQuestionDoesNotWriteHalfABookAndAChangeIsReadBehindIt) {
  Read("Meier;0301;3;0;0;0;;");
  doubles.meanwhile = [this] {
    EXPECT_EQ(Look("0301"), 1);
    book.BookData_Read();
    store.AddFile(kPath, ";0302;3;0;0;0;z;");  // the user puts it right in an editor
    EXPECT_FALSE(book.tmFileWatch_Timer());
    EXPECT_EQ(store.Writes(), 0);
  };
  progress.up = true;
  Read(";0302;3;0;0;0;x;\r\n;0302;3;0;0;0;y;\r\nMeier;0301;3;0;0;0;;");
  EXPECT_EQ(doubles.asked.size(), 1u);
  EXPECT_EQ(book.BookCollection().Count(), 2u);
  EXPECT_THAT(progress.shown, ElementsAre("lade Telefonbuch... 1", "lade Telefonbuch... 2"));
  EXPECT_TRUE(book.tmFileWatch_Timer());
  EXPECT_EQ(Entry("0302")->Address(), "z");
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(BookTest, ABookWhoseDriveComesLateIsReadBeforeItIsWritten) {
  const std::string late = "Meier;0301;3;0;0;0;;" + kTail;
  book.FileWatchBookChanged(true);
  book.BookData_Read();
  Look("0303");  // written where the drive is to be
  EXPECT_EQ(Book(), ";0303;1;1;0;0;;" + kTail);
  ASSERT_TRUE(store.Remove(kPath));
  store.ChangeDrive();
  store.AddFile(kPath, late);
  book.FileWatchBookChanged(true);  // as the start does after five seconds
  Look("0304");
  EXPECT_EQ(Book(), late + ";0303;1;1;0;0;;" + kTail + ";0304;1;1;0;0;;" + kTail);
  store.AddFile(kPath, "Other;0301;3;0;0;0;;");  // and from then on it is this program's
  book.CountDialled("0301");
  EXPECT_THAT(Book(), HasSubstr("Meier;0301;3;"));
}

TEST_F(BookTest, WhatIsTakenOutOfABookThatTheProgramBeganStaysOut) {
  for (const bool isWatched : {true, false}) {
    book.BookCollection().Clear();
    ASSERT_TRUE(store.Remove(kPath));
    book.BookData_Read();
    Look("0303");
    Look("0304");
    ASSERT_TRUE(store.Remove(kPath));  // an editor may put another file in its place
    store.AddFile(kPath, "Huber;0303;1;1;0;0;;" + kTail);
    EXPECT_EQ(isWatched && book.tmFileWatch_Timer(), isWatched);
    book.CountDialled("0303");
    EXPECT_EQ(Book(), "Huber;0303;1;1;0;0;;;0;2;;;;[vcd()vcd]\r\n");
  }
}

}  // namespace
}  // namespace vorlix
