#include "app/KnownNumbers.h"

namespace vorlix {

KnownNumbers::KnownNumbers(System parts)
    : system(parts),
      ownNumbers({parts.ini, parts.settings, parts.blocks, {}}),
      holidays({parts.ini, parts.store, parts.folders, parts.settings, parts.loop.GetClock()}),
      schedules({parts.settings, parts.settingsStore, parts.ini, holidays, parts.loop.GetClock()}),
      numbers({parts.files, parts.folders, parts.ini, parts.settings, ownNumbers, parts.simulation, parts.messages,
               journalCache, journalFlags}),
      blacklist({parts.files, parts.folders, parts.messages}),
      blocking(blacklist, schedules),
      book({parts.files,
            parts.folders,
            parts.blocks,
            parts.loop,
            numbers,
            schedules,
            parts.messages,
            parts.doubles,
            bookWindow,
            blacklist,
            progress,
            journalCache,
            journalFlags,
            [this] { return system.settings.General.BackupCount; },
            [this] { return system.settings.General.BackupCountStep; },
            parts.haveCallerSoundFile,
            {},
            [this] { cards.LoadVCardArray(); }}),
      cards([this]() -> const clsCollection& { return book.BookCollection(); }, progress),
      journalNames(book, journalCache, journalFlags),
      archive({parts.files, parts.folders, parts.loop.GetClock(), parts.settings, parts.messages, journalFlags, {}}) {}

void KnownNumbers::Attach(StartUp& startUp) {
  startUp.Do(StartPhase::kMSNRead, [this] { ownNumbers.MSNRead(); });
  startUp.Do(StartPhase::kLoadOVW, [this] { numbers.loadOVW(system.settings.General.myVWL); });
  startUp.Do(StartPhase::kLoadLVW, [this] { numbers.loadLVW(); });
  startUp.Do(StartPhase::kLoadProvider, [this] { numbers.LoadProvider(); });
  startUp.Do(StartPhase::kNumberCache, [this] { numbers.SpeedBuffer_OVW_Load(); });
  startUp.Do(StartPhase::kBlackList, [this] { blacklist.Load(); });
  startUp.Do(StartPhase::kLoadFeiertage, [this] { holidays.LoadFeiertage(); });
  startUp.Do(StartPhase::kBookDataRead, [this] {
    book.FileWatchBookChanged(true);  // before the reading: what comes in between is seen as a change
    book.BookData_Read();
  });
  startUp.Do(StartPhase::kLoadVCardArray, [this] { cards.LoadVCardArray(); });
}

void KnownNumbers::Attach(ClockJobs& jobs) {
  jobs.loadFeiertage = [this] { holidays.LoadFeiertage(); };
  jobs.isJournalLoading = [this] { return journalFlags.JournalLoading; };
  jobs.archiveJournal = [this](const std::string& period) { archive.JournalAuslagern(false, period, false); };
  jobs.clearOldArchives = [this] { archive.ClearOldArchives(); };
  jobs.takeBookFileState = [this] { book.FileWatchBookChanged(true); };
}

void KnownNumbers::ReloadTables() {
  numbers.loadOVW(system.settings.General.myVWL);
  numbers.LoadProvider();
  holidays.LoadFeiertage();
}

void KnownNumbers::Identify(oDataCall& call) {
  call.NameMode = static_cast<std::int16_t>(book.GetNumberData(call, false, false));
  call.GetMSNData(ownNumbers.Table());
}

bool KnownNumbers::IsKnownPerson(const std::string& number) {
  oDataCall call(&numbers);
  call.DataNumber(number);
  return book.GetNumberData(call, false, false) == kNamed;
}

}  // namespace vorlix
