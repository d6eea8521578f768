// Gives the records of the journal their names: from the cache, else from the telephone book. While a file is loaded
// the flag JournalLoading stands, by which book and analysis know that they are to feed the cache.
#pragma once

#include "core/pipeline_ports.h"
#include "data/JournalCache.h"
#include "data/modJournal.h"

namespace vorlix {

class JournalLookup : public JournalNames {
 public:
  // All must outlive the object.
  JournalLookup(PhoneBook& book, JournalCache& cache, JournalFlags& flags)
      : book_(book), cache_(cache), flags_(flags) {}

  void Fill(oDataCall& call) override;
  // The first of several loads empties the cache: names may have changed since the last.
  void LoadBegins() override;
  void LoadEnds() override;

 private:
  PhoneBook& book_;
  JournalCache& cache_;
  JournalFlags& flags_;
  int loads_ = 0;
  bool wasLoading_ = false;
};

}  // namespace vorlix
