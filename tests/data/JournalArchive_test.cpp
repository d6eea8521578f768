#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/JournalAuslagern.h"
#include "fakes/DataRoom.h"
#include "services/ansi.h"
#include "services/text.h"

namespace vorlix {
namespace {

using Op = MemoryFileStore::Operation;
const std::string kPath = "/vorlix/data/Vorlixjournal.txt";
const std::string kFolder = "/vorlix/archiv/";
const std::string kFirst = kFolder + "202403.txt.001";
const std::string kText = "01.03.2024\t10:00:00\t0301\t77\t0\t16\t1\t\t0\t0\r\n";

class ArchiveTest : public testing::Test, protected DataRoom {
 protected:
  ArchiveTest() { store.AddFolder(kFolder); }
  bool Auslagern(bool interactive, bool byMaximum = false) {
    boxes.shown.clear();
    return archiver.JournalAuslagern(interactive, "202403", byMaximum);
  }
  std::string Journal() const { return store.Content(kPath); }
  std::string Box() const { return boxes.shown.empty() ? std::string() : boxes.shown.back(); }
  static std::string Many(int count, const std::string& line) {
    std::string text;
    for (int i = 0; i < count; ++i)
      text += line;
    return text;
  }

  Settings settings;
  JournalFlags flags;
  int reloads = 0;
  JournalArchiver archiver{{files, folders, clock, settings, messages, flags, [this] {
                              ++reloads;
                              EXPECT_FALSE(flags.JournalArchiving);
                            }}};
};

TEST_F(ArchiveTest, TheWholeJournalGoesAndTheReasonIsTold) {
  settings.Journal.AssumeLast = false;
  using Case = std::tuple<bool, bool, int, bool, const char*>;  // asked, full, period, no boxes; what is told
  int n = 0;
  for (const auto& [interactive, byMaximum, backup, errView, reason] :
       {Case{true, false, 1, false, ""}, Case{false, true, 1, false, "Die Journal-Datei hat 25000 Einträge erreicht!"},
        Case{false, false, 2, false, "Quartals Sicherung der Journal-Datei!"},
        Case{false, false, 3, false, "Jährliche Sicherung der Journal-Datei!"}, Case{false, true, 3, true, ""}}) {
    store.AddFile(kPath, kText);
    settings.Journal.Backup = backup;
    settings.Journal.ErrView = errView;
    EXPECT_TRUE(Auslagern(interactive, byMaximum));
    const std::string archive = kFolder + "202403.txt.00" + std::to_string(++n), told = FromUtf8(reason);
    EXPECT_EQ(Box(), told.empty() ? told : "Vorlix 64: " + told + "\r\n\r\nDie Sicherung erfolgte in " + archive);
    EXPECT_FALSE(store.Exists(kPath));
    EXPECT_EQ(store.Content(archive), kText);
    EXPECT_EQ(reloads, n);
  }
}

TEST_F(ArchiveTest, WithoutAJournalOrWhileItLoadsNothingHappens) {
  using Case = std::tuple<bool, bool, const char*>;
  for (const auto& [interactive, errView, told] :
       {Case{true, true, "Journal-Datei nicht gefunden!"}, Case{false, false, "Es befinden keine Daten im Journal!"},
        Case{false, true, ""}}) {
    settings.Journal.ErrView = errView;
    EXPECT_FALSE(Auslagern(interactive));
    EXPECT_THAT(Box(), testing::HasSubstr(told));
    EXPECT_EQ(Box().empty(), !interactive && errView);
  }
  store.AddFile(kPath, kText);
  flags.JournalLoading = true;
  EXPECT_FALSE(Auslagern(true));
  EXPECT_EQ(store.Writes() + reloads, 0);
}

TEST_F(ArchiveTest, AFailureLeavesEachLineInTheJournalOrInAnArchive) {
  const std::string rename = "Umbenennen fehlgeschlagen!", copy = "Fehler beim Kopieren!";
  using Case = std::tuple<bool, Op, int, std::optional<Op>, std::string>;
  for (const auto& [assumeLast, first, error, second, told] :
       {Case{false, Op::kRename, EACCES, std::nullopt, rename}, Case{false, Op::kRename, EXDEV, std::nullopt, ""},
        Case{false, Op::kRename, EXDEV, Op::kCopy, rename}, Case{false, Op::kRename, EXDEV, Op::kRemove, rename},
        Case{true, Op::kRead, EIO, std::nullopt, copy}, Case{true, Op::kCopy, ENOSPC, std::nullopt, copy},
        Case{true, Op::kOverwrite, ENOSPC, std::nullopt, "Fehlermeldung: WriteArrayToFile"}}) {
    settings.Journal.AssumeLast = assumeLast;
    store.AddFile(kPath, kText);
    store.Fail(first, error);
    if (second) store.Fail(*second, EACCES, "Vorlixjournal.txt");
    EXPECT_EQ(Auslagern(true), told.empty());
    EXPECT_EQ(Box(), told.empty() ? told : "Vorlix 16: Sicherung fehlgeschlagen!\r\n" + told);
    EXPECT_EQ(Journal(), told.empty() ? "" : kText) << told;
    EXPECT_EQ(store.Content(kFirst), told.empty() ? kText : "") << told;
    store.FailNothing();
    EXPECT_TRUE(store.Remove(kFirst));
  }
  EXPECT_EQ(reloads, 1);
  EXPECT_THAT(ErrorLog(), testing::HasSubstr("modJournal.JournalAuslagern + 28")) << "what the system said";
}

TEST_F(ArchiveTest, TheJournalKeepsThePeriodAndAtLeast25Lines) {
  const std::string old = "29.02.2024\t10:00:00\t0301\t77\t0\t16\t1\t\r\n";
  const std::string next = "01.04.2024\tno record\r\n";
  const std::string noDate = std::string("x\0y\tz\r\n", 7);
  const std::string slashes = "29/02/2024\tx\r\n";
  using Case = std::tuple<std::string, std::string>;
  for (const auto& [before, after] :
       {Case{Many(10, old), Many(10, old)}, Case{Many(30, old) + Many(3, kText), Many(22, old) + Many(3, kText)},
        Case{Many(5, old) + Many(30, kText) + next, Many(30, kText) + next},
        Case{"no tab\r\n\r\n" + Many(24, kText) + "\n\r\nno tab\r\n" + next, Many(24, kText) + next},
        Case{kText + noDate + Many(30, kText), kText + noDate + Many(30, kText)},
        Case{Many(25, kText) + slashes + Many(25, kText), Many(25, kText)},
        Case{Many(30, "01.03.2024\tx\n"), Many(30, "01.03.2024\tx\r\n")}, Case{"", ""}}) {
    store.AddFile(kPath, before);
    EXPECT_TRUE(Auslagern(false));
    EXPECT_EQ(Journal(), after);
    EXPECT_EQ(store.Content(kFirst), before) << "the archive has the kept lines too";
    EXPECT_EQ(Box(), "Vorlix 64: Die Sicherung erfolgte in " + kFirst);
    EXPECT_TRUE(store.Remove(kFirst));
  }
}

TEST_F(ArchiveTest, ArchivesStayForTwelveMonths) {
  std::string left;
  for (const char* name : {"199912.txt.0499", "202302.txt.001", "202303.txt.001", "202402.txt.001", "2022",
                           "20221.txt.001", "-20221.txt.001", "notes.txt", "202201/kept.txt"})
    store.AddFile(kFolder + name, "x");
  archiver.ClearOldArchives();
  for (const std::string& name : store.List(kFolder))
    left += name + " ";
  EXPECT_EQ(left, "-20221.txt.001 2022 202201 20221.txt.001 202303.txt.001 202402.txt.001 notes.txt ");
  EXPECT_TRUE(store.Exists(kFolder + "202201/kept.txt"));
}

}  // namespace
}  // namespace vorlix
