// The journal: one line for each finished call in "Vorlixjournal.txt", fields separated by TAB, oldest first, and
// beside it "Vorlixactive.txt" with the calls in progress. Journal arrays in memory are the other way round, newest
// first. A line that makes no record is passed over by every reader and goes with the next rewrite.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/pipeline_ports.h"
#include "data/Folders.h"
#include "data/WriteBlocks.h"
#include "data/clsFiles.h"

namespace vorlix {

// The journal's file.
std::string JournalPathIn(const Folders& folders);

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
  // Around the records of a whole file; loads may lie within one another, as a look-up lets the message loop run.
  virtual void LoadBegins() {}
  virtual void LoadEnds() {}

  class Load {
   public:
    explicit Load(JournalNames& names) : names_(names) { names_.LoadBegins(); }
    ~Load() { names_.LoadEnds(); }
    Load(const Load&) = delete;
    Load& operator=(const Load&) = delete;

   private:
    JournalNames& names_;
  };
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
  // Enters the connected time into the newest line of that number and direction within two days; no match, no write.
  void SetCallPeriodInJournalFile(const oDataCall& call) override;
  void SetCallPeriodInJournalFile(const std::string& path, const oDataCall& call);

  // A record, or nothing if the line is no journal line. The note stays in file form.
  Item J_MakeItem(std::string_view line, bool noLookup);
  // The records of a journal or of an archive, newest first; none for a missing file. Nothing at all for a file that
  // cannot be read: what was made from it must never be written back. With look-up each record gets its name, address
  // and analysed number.
  std::optional<std::vector<Item>> ReadJournal(const std::string& path, bool noLookup);
  // Rewrites the file from records that are newest first; all ten fields of each. A missing file stays missing.
  bool WriteJournalData(const std::string& path, const std::vector<Item>& items, bool resetViewed);
  // Clears the new-call mark of every line; a file without one is not touched.
  void ResetViewedInJournalFile(const std::string& path);
  // Turns a journal around that stands newest first, as a file of three lines or more can show by its dates; how it
  // stood becomes a backup generation. For the start of the program.
  void CheckReverseOfJournal();

  std::string JournalPath() const;

 private:
  Item ItemOf(std::string_view line);
  std::string ReadText(const std::string& path);
  std::vector<Item> ReadItems(const std::string& path);
  void FillNames(const std::vector<Item>& items);
  bool Rewrite(const std::string& path, std::string_view text);

  Ports ports_;
  LineCounter lines_;
};

}  // namespace vorlix
