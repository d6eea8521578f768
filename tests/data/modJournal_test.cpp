#include "data/modJournal.h"

#include <fstream>
#include <functional>
#include <iterator>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/journal_line.h"
#include "fakes/DataRoom.h"
#include "services/modTimePeriods.h"

namespace vorlix {
namespace {

using testing::HasSubstr;
using Op = MemoryFileStore::Operation;
const std::string kPath = "/vorlix/data/Vorlixjournal.txt";
const std::string kActive = "/vorlix/data/Vorlixactive.txt";

class NotedArchive : public JournalArchive {
 public:
  std::vector<std::string> periods;
  bool JournalAuslagern(bool interactive, const std::string& period, bool byMaximum) override {
    periods.push_back(period + (interactive ? " asked" : "") + (byMaximum ? " full" : ""));
    return true;
  }
};

class MeierForAll : public JournalNames {
 public:
  void Fill(oDataCall& call) override { call.Name("Meier"); }
  void LoadBegins() override { loads += "("; }
  void LoadEnds() override { loads += ")"; }
  std::string loads;
};

class JournalTest : public testing::Test, protected DataRoom {
 protected:
  static oDataCall Call(const std::string& number = "0301234") {
    oDataCall call;
    call.CallDateTime = DateTime::FromCivil(2024, 3, 13, 11, 0, 0);
    call.DataNumber(number);
    call.MSN = "77";
    call.CIP = 16;
    return call;
  }
  // A line of the file, that many hours before noon of 13 March.
  std::string Line(int hoursAgo, const std::string& number, int period = 0) const {
    oDataCall call = Call(number);
    call.CallDateTime = clock.Now().AddSeconds(-3600 * hoursAgo);
    return call.CallDateView() + "\t" + call.CallTimeView() + "\t" + number + "\t77\t0\t16\t1\t\t0\t" +
           std::to_string(period) + "\r\n";
  }
  std::string Journal() const { return store.Content(kPath); }
  // The journal after the work, which writes only where something changes.
  void ExpectAfter(const std::string& before, const std::function<void()>& work, const std::string& after) {
    store.AddFile(kPath, before);
    store.requests.clear();
    work();
    EXPECT_EQ(Journal(), after);
    EXPECT_EQ(store.Writes(), before == after ? 0 : 1) << before;
  }

  PlainNumbers numbers;
  NotedArchive archive;
  MeierForAll names;
  modJournal journal{{files, folders, blocks, clock, numbers, archive, names, [] { return 0; }}};
};

TEST_F(JournalTest, NoFieldOfALiveLineCanForgeAnother) {
  oDataCall call = Call();
  call.BlockFunction = 11;
  call.BlockIndex = 3;
  call.AVMDirection = CallDirection::kOutgoing;
  call.AVMCallperiod = 42;
  EXPECT_EQ(journal.GetCallDataAsMailString(call), "13.03.2024\t11:00:00\t0301234\t77\t11\t16");
  EXPECT_EQ(journal.GetCallDataAsFileString(call), "13.03.2024\t11:00:00\t0301234\t77\t11\t16\t1\t\t1\t42");
  call.Notiz("a\r\nb\tc\nd");
  call.DataNumber(std::string("03\t0\0\r\n1", 8));
  call.MSN = "7\n\x1b[7";
  EXPECT_EQ(journal.GetCallDataAsFileString(call),
            "13.03.2024\t11:00:00\t03 0   1\t7  [7\t11\t16\t1\ta<CR>b<TB>c d\t1\t42");
  EXPECT_EQ(NotizParsing(false, "a<CR>b<TB>c"), "a\r\nb\tc");
  call.Fernwirk = true;
  EXPECT_EQ(journal.GetCallDataAsFileString(call), "13.03.2024\t11:00:00\t03 0   1\t7  [7\t11\t16\t1\t");
}

TEST_F(JournalTest, CountsItsLinesAndArchivesAFullFile) {
  std::string almostFull;
  for (int i = 0; i < modJournal::kMostLines - 2; ++i)
    almostFull += "x\r\n";
  store.AddFile(kPath, almostFull);
  journal.WriteCallDataToJournalFile("a");
  EXPECT_TRUE(archive.periods.empty());
  journal.WriteCallDataToJournalFile("b");
  EXPECT_EQ(archive.periods, std::vector<std::string>{"202403 full"});
  EXPECT_EQ(Journal(), almostFull + "a\r\nb\r\n");
  // A call costs one write, and only the first one a look at the whole file.
  EXPECT_EQ(store.Writes(), 2);
  EXPECT_EQ(store.Count(Op::kRead, "Vorlixjournal.txt"), 1);
  store.AddFile(kPath, almostFull);  // what is left when it was archived, or another program has written
  journal.WriteCallDataToJournalFile("d");
  store.Fail(Op::kAppend, ENOSPC, "", 1);
  journal.WriteCallDataToJournalFile("lost");
  EXPECT_EQ(archive.periods.size(), 1u);
  journal.WriteCallDataToJournalFile("e");
  EXPECT_EQ(archive.periods.size(), 2u);
}

TEST_F(JournalTest, TheCallsInProgressAreAFileOfTheirOwn) {
  clsCollection active;
  for (const char* number : {"0301", "04\t01"}) {
    const auto call = std::make_shared<oDataCall>(Call(number));
    call->Key = number;
    active.Add(call);
  }
  journal.WriteCallActiveData(active);
  EXPECT_EQ(store.Content(kActive),
            "13.03.2024\t11:00:00\t0301\t77\t0\t16\t0\t\r\n13.03.2024\t11:00:00\t04 01\t77\t0\t16\t0\t\r\n");
  active.Clear();
  journal.WriteCallActiveData(active);
  EXPECT_TRUE(store.Exists(kActive) && store.Content(kActive).empty());
}

TEST_F(JournalTest, ReadsALineIntoARecord) {
  const auto call = journal.J_MakeItem("5.2.10\t9:07\t0301\t77\t4\t16\t2\ta<CR>b\t1\t61", false);
  ASSERT_TRUE(call);
  EXPECT_EQ(call->CallDateView() + " " + call->CallTimeView(), "05.02.2010 09:07:00");
  EXPECT_EQ(call->BookSortString, "2010.02.059:07");
  EXPECT_EQ(call->DataNumber() + " " + call->MSN + " " + call->Notiz() + " " + call->Name(), "0301 77 a<CR>b Meier");
  EXPECT_EQ(call->BlockIndex * 1000 + call->CIP, 4016);
  EXPECT_TRUE(call->NewCall && call->NewCallByService && call->AVMDirection == CallDirection::kOutgoing);
  EXPECT_EQ(call->AVMCallperiod, 61);
  const std::string start = "05.02.2010\t09:07:00\t";
  const auto unknown = journal.J_MakeItem(start + "Unbekannt\t77\t0\t16\t1\t", false);
  EXPECT_TRUE(unknown && unknown->Name().empty() && !unknown->NewCallByService);
  for (const std::string& line :
       {std::string(), std::string("no tab"), start + "0301\t77\t0\t16\t1", start + "0301\t77\t0\t\t1\t"})
    EXPECT_FALSE(journal.J_MakeItem(line, false)) << line;
}

TEST_F(JournalTest, ReadsADateAsEveryOtherRoutineDoes) {
  for (const std::string date : {"05.02.2010", "05x02.2010", "29.02.2023", "29-02/2024", "01.02.0024", "00.00.0000",
                                 "5.2.10", "2010.02.05", "05.02.20x0", " 5.2.2010", "05022010", "05.02.2010x"}) {
    for (const std::string time : {"09:07:11", "24:00:00", "09:60:00", "09.07.11", "9:07", "09:07:5-", "09:07:11 "}) {
      const auto item = journal.J_MakeItem(date + "\t" + time + "\t0301\t\t0\t16\t\t", true);
      ASSERT_TRUE(item);
      EXPECT_EQ(item->CallDateTime, CDateNew(date, time)) << date << " " << time;
      EXPECT_EQ(item->BookSortString, GetFormatedDateByString(date, clock, 0, true) + time);
    }
  }
}

TEST_F(JournalTest, AWholeJournalComesNewestFirst) {
  store.AddFile(kPath, Line(2, "0301") + "no record\r\n" + Line(1, "UNBEKANNT") + Line(0, "0302"));
  for (const bool noLookup : {false, true}) {
    std::string read;
    const auto items = journal.ReadJournal(kPath, noLookup);
    ASSERT_TRUE(items);
    for (const auto& item : *items)
      read += item->DataNumber() + " " + item->Name() + ",";
    EXPECT_EQ(read, noLookup ? "0302 ,UNBEKANNT ,0301 ," : "0302 Meier,UNBEKANNT ,0301 Meier,");
  }
  EXPECT_EQ(names.loads, "()");
  store.Fail(Op::kRead, EIO);
  EXPECT_FALSE(journal.ReadJournal(kPath, true)) << "not an empty journal";
  EXPECT_TRUE(journal.ReadJournal("/vorlix/archiv/none", true)->empty());
}

TEST_F(JournalTest, ResettingTheMarksWritesOnlyWhereThereIsOne) {
  const std::string head = "13.03.2024\t11:00:00\t0302\t77\t4\t16\t",
                    read = head + "0\tx\r\nrubbish\n" + head + "\t\r\n";
  const auto reset = [this] { journal.ResetViewedInJournalFile(kPath); };
  ExpectAfter(head + "2\tx\r\nrubbish\n" + head + "1\t\r\n", reset, head + "0\tx\t0\t0\r\n" + head + "0\t\t0\t0\r\n");
  ExpectAfter(read, reset, read);
  ExpectAfter("", reset, "");
  journal.ResetViewedInJournalFile("/vorlix/data/none.txt");
  EXPECT_FALSE(store.Exists("/vorlix/data/none.txt"));
}

TEST_F(JournalTest, AJournalThatStandsNewestFirstIsTurnedAroundAndKeptAsItStood) {
  const std::string a = "11.03.2024\t11:00:00\t1\t\t0\t1\t\t", b = Line(2, "2"), c = Line(1, "3");
  const std::string none = "99.03.2024\t11:00:00\t1\t\t0\t1\t\t\r\n", before = none + c + b + none;
  const auto check = [this] { journal.CheckReverseOfJournal(); };
  ExpectAfter(c + b + a, check, a + "\r\n" + b + c);
  ExpectAfter("\r\nrubbish\n" + c + " \n" + b + a + "\n\n", check, a + "\r\n" + b + c + "rubbish\r\n");
  for (const std::string& kept : {c + b + c, a + "\r\n" + b + c, c + b, c, std::string(), b + c + none, none + none})
    ExpectAfter(kept, check, kept);
  store.AddFile(kPath, before);
  store.Fail(Op::kOverwrite, EACCES, "", 1);
  check();
  EXPECT_EQ(Journal(), before);
  modJournal careful{{files, folders, blocks, clock, numbers, archive, names, [] { return 2; }}};
  for (int start = 0; start < 2; ++start)
    careful.CheckReverseOfJournal();
  EXPECT_EQ(Journal(), none + b + c + none);
  EXPECT_EQ(store.Content("/vorlix/data/Vorlixjournal.bak"), before);
  EXPECT_FALSE(store.Exists("/vorlix/data/Vorlixjournal.b01"));
}

TEST_F(JournalTest, ARewriteTurnsTheArrayAroundAndNeverMakesAJournal) {
  const std::string newer = "13.03.2024\t11:00:00\t0302\t77\t4\t16\t",
                    older = "12.03.2024\t11:00:00\t0301\t77\t0\t16\t";
  const std::vector<modJournal::Item> items = {journal.J_MakeItem(newer + "2\t", true), nullptr,
                                               std::make_shared<oDataCall>(), journal.J_MakeItem(older + "1\t", true)};
  EXPECT_FALSE(journal.WriteJournalData(kPath, items, false));
  EXPECT_EQ(store.Writes(), 0);
  store.AddFile(kPath, "old");
  for (const std::string mark : {"1", "0"}) {
    EXPECT_TRUE(journal.WriteJournalData(kPath, items, mark == "0"));
    EXPECT_EQ(Journal(), older + mark + "\t\t0\t0\r\n" + newer + mark + "\t\t0\t0\r\n");
  }
  blocks.JournalWriteBlocked = true;
  EXPECT_FALSE(journal.WriteJournalData(kPath, {}, false));
  EXPECT_FALSE(Journal().empty());
}

TEST_F(JournalTest, ThePeriodGoesIntoTheNewestLineOfTheNumberWithinTwoDays) {
  oDataCall call = Call("0301");
  call.CallDateTime = clock.Now();
  call.AVMCallperiod = 61;
  const auto set = [&] { journal.SetCallPeriodInJournalFile(call); };
  const std::string other = Line(0, "03012");
  ExpectAfter(Line(47, "0301") + Line(1, "0301") + other, set, Line(47, "0301") + Line(1, "0301", 61) + other);
  ExpectAfter(Line(-47, "0301", 9), set, Line(-47, "0301", 61));
  for (const std::string& kept : {Line(48, "0301"), Line(-48, "0301"), std::string("rubbish"), std::string()})
    ExpectAfter(kept, set, kept);
  EXPECT_EQ(ErrorLog(), "");
  store.Fail(Op::kRead, EIO, "", 1);
  ExpectAfter(Line(1, "0301"), set, Line(1, "0301"));
  store.Fail(Op::kOverwrite, EACCES, "", 1);
  set();
  EXPECT_EQ(Journal(), Line(1, "0301"));
  EXPECT_THAT(ErrorLog(), HasSubstr("modJournal.WriteJournalData + 13"));
  EXPECT_EQ(boxes.shown.size(), 1u);
  call.DataNumber("03\t01");
  ExpectAfter(Line(0, "03 01"), set, Line(0, "03 01", 61));
  call.AVMDirection = CallDirection::kOutgoing;
  call.AVMCallperiod = 99;
  ExpectAfter(Line(0, "03 01", 61), set, Line(0, "03 01", 61));  // an incoming call's line
}

std::string Bytes(const std::string& name) {
  std::ifstream file(VORLIX_TEST_DATA "/journal/" + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class MuseumTest : public JournalTest, public testing::WithParamInterface<const char*> {};

TEST_P(MuseumTest, ABrokenJournalKeepsEveryLineThatCanBeRead) {
  const std::string name = GetParam();
  store.AddFile(kPath, Bytes(name + ".txt"));
  oDataCall call = Call();
  call.AVMCallperiod = 61;
  journal.SetCallPeriodInJournalFile(call);
  ASSERT_FALSE(Bytes(name + ".after").empty());
  EXPECT_EQ(Journal(), Bytes(name + ".after"));
  // And so does the way through an array.
  EXPECT_TRUE(journal.WriteJournalData(kPath, journal.ReadJournal(kPath, true).value(), false));
  EXPECT_EQ(Journal(), Bytes(name + ".after"));
}

INSTANTIATE_TEST_SUITE_P(Journals, MuseumTest,
                         testing::Values("lf_ends", "lf_then_crlf", "nul_bytes", "cut_line", "utf8", "byte_order_mark",
                                         "eight_fields", "long_line", "odd_fields", "remote_control"));

}  // namespace
}  // namespace vorlix
