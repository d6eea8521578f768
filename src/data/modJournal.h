// The journal: one line for each finished call in "Vorlixjournal.txt", fields separated by TAB, oldest first, and
// beside it "Vorlixactive.txt" with the calls in progress. Journal arrays in memory are the other way round, newest
// first.
//
//   date, time, number, own number, block function, service, new-call mark, note, direction, period
//
// The mark is "1" for a call not yet seen and "2" for one that the service took. Whatever bytes a field was given, none
// can end the field or the line: control characters become blanks, a note's line ends and TABs are written as "<CR>"
// and "<TB>".
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/pipeline_ports.h"
#include "data/Folders.h"
#include "data/WriteBlocks.h"
#include "data/clsFiles.h"

namespace vorlix {

// Archives the journal; true if archiving took place.
class JournalArchive {
 public:
  virtual ~JournalArchive() = default;
  virtual bool JournalAuslagern(bool interactive, const std::string& period, bool byMaximum) = 0;
};

class NoJournalArchive : public JournalArchive {
 public:
  bool JournalAuslagern(bool, const std::string&, bool) override { return false; }
};

// Gives a record that was read its name and address.
class JournalNames {
 public:
  virtual ~JournalNames() = default;
  virtual void Fill(oDataCall& call) = 0;
};

class NoJournalNames : public JournalNames {
 public:
  void Fill(oDataCall&) override {}
};

// Counts the lines of one file, reading it again only when somebody else has changed it.
class LineCounter {
 public:
  explicit LineCounter(clsFiles& files) : files_(files) {}

  // To be told before and after each line of our own.
  void BeforeLine(const std::string& path);
  void AfterLine(const std::string& path);
  // Lines after the last one of our own.
  int Count() const { return count_; }

 private:
  clsFiles& files_;
  FileInfo known_;
  int count_ = 0;
  bool current_ = false;
};

class modJournal : public CallRecords {
 public:
  using Item = std::shared_ptr<oDataCall>;

  // With this many lines the journal is archived.
  static constexpr int kMostLines = 25000;

  struct Ports {
    clsFiles& files;
    const Folders& folders;
    const WriteBlocks& blocks;
    const CivilClock& clock;
    NumberAnalysis& numbers;
    JournalArchive& archive;
    JournalNames& names;
    std::function<int()> backupCount;  // the setting
  };

  // All ports must outlive the object.
  explicit modJournal(Ports ports) : ports_(std::move(ports)), lines_(ports_.files) {}

  // Fields 0 to 5, joined by TAB.
  std::string GetCallDataAsMailString(const oDataCall& call) override;
  // The finished line of a live call, without line end. A remote-control call ends with an empty note.
  std::string GetCallDataAsFileString(const oDataCall& call) override;
  // Appends a line in one write; at 25000 lines the journal is archived.
  void WriteCallDataToJournalFile(const std::string& line) override;
  void WriteCallActiveData(const clsCollection& activeCalls) override;
  // Rewrites the file; does nothing if the path is empty.
  void WriteCallActiveData(const std::string& path, const clsCollection& activeCalls);
  // Enters the connected time into the newest line of that number within two days; no match, no write.
  void SetCallPeriodInJournalFile(const oDataCall& call) override;
  void SetCallPeriodInJournalFile(const std::string& path, const oDataCall& call);

  // A record, or nothing if the line is no journal line. The note stays in file form.
  Item J_MakeItem(std::string_view line, bool noLookup);
  // Checks the fields of a line, at least eight, and repairs an empty new-call mark.
  static bool J_CheckItem(std::vector<std::string>& fields);
  // Rewrites the file from records that are newest first; all ten fields of each. A missing file stays missing.
  bool WriteJournalData(const std::string& path, const std::vector<Item>& items, bool resetViewed);

  std::string JournalPath() const;

 private:
  std::string SortDate(const oDataCall& call, const std::string& date) const;
  Item ItemOf(std::string_view line);
  std::vector<std::string> ReadLines(const std::string& path);
  bool Rewrite(const std::string& path, std::string_view text);

  Ports ports_;
  LineCounter lines_;
};

// A note between its form on the screen and its form in the file.
std::string NotizParsing(bool toFile, std::string_view text);

}  // namespace vorlix
