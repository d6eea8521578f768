// Archives the journal into "\archiv\" of the data folder: as a whole, or, with the setting `AssumeLast`, as a copy
// after which the journal keeps its newest lines. Archives are named by period and number, "202403.txt.001"; none is
// ever written over. Whatever fails, each line stands in the journal or in an archive.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "data/Folders.h"
#include "data/JournalCache.h"
#include "data/Settings.h"
#include "data/clsFiles.h"
#include "data/modJournal.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

class JournalArchiver : public JournalArchive {
 public:
  struct Ports {
    clsFiles& files;
    const Folders& folders;
    const CivilClock& clock;
    const Settings& settings;
    modAll_MsgBox& messages;
    JournalFlags& flags;
    std::function<void()> reload;  // of the journal window, where it is open; may be empty
  };

  // All ports must outlive the object.
  explicit JournalArchiver(Ports ports) : ports_(std::move(ports)) {}

  // `period` is "yyyymm": the archive's name, and the month from which on the journal keeps its lines. Does nothing
  // while the journal is loading. Reports to a modal box when interactive, else to the information window.
  bool JournalAuslagern(bool interactive, const std::string& period, bool byMaximum) override;

  // Deletes the archives of more than twelve months ago. For each hour, while the setting `Max12` is on.
  void ClearOldArchives();

 private:
  struct Run {
    bool interactive;
    std::string period;
    std::string reason;  // in front of what the information window shows
  };

  std::string Reason(bool byMaximum) const;
  std::optional<std::string> FreeName(const std::string& period) const;
  bool Archive(const Run& run);
  bool MoveAll(const Run& run, const std::string& journal, const std::string& archive);
  IoResult Move(const std::string& journal, const std::string& archive);
  bool KeepLast(const Run& run, const std::string& journal, const std::string& archive);
  IoResult Copy(const std::string& journal, const std::string& archive);

  void TellFailure(const Run& run, const std::string& what, const std::string& more);
  void TellTooMany(const Run& run);
  void TellNoJournal(const Run& run);
  void TellDone(const Run& run, const std::string& archive);
  void Show(const Run& run, const std::string& text, int style);

  Ports ports_;
};

}  // namespace vorlix
