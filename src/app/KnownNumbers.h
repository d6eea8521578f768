// What the program knows about numbers, put together: own numbers, schedules, analysis, book, blacklist, and the
// journal's side of them. Members stand in the order in which they depend on each other.
#pragma once

#include "core/ProgramClock.h"
#include "core/StartUp.h"
#include "core/null_ports.h"
#include "data/Holidays.h"
#include "data/JournalAuslagern.h"
#include "data/JournalLookup.h"
#include "data/TimePeriods.h"
#include "data/modBook.h"
#include "data/modMSN.h"
#include "data/modNumbers.h"
#include "data/modVCard.h"
#include "reactions/Blacklist.h"
#include "reactions/modFunction_Blocking.h"

namespace vorlix {

struct KnownNumbers {
  struct System {
    MessageLoop& loop;
    FileStore& store;
    clsFiles& files;
    const Folders& folders;
    modAPI_INI& ini;
    const WriteBlocks& blocks;
    Settings& settings;
    modSettings& settingsStore;
    modAll_MsgBox& messages;
    SimulationWindow& simulation;
    AskForDoubleItems& doubles;
    std::function<bool(const std::string& number)> haveCallerSoundFile;
  };

  explicit KnownNumbers(System parts);

  // Loads everything in its phase of the start.
  void Attach(StartUp& startUp);
  void Attach(ClockJobs& jobs);
  // What depends on the user's own country.
  void ReloadTables();
  // Gives a call that was not looked up its name and its own number's alias.
  void Identify(oDataCall& call);
  // Whether the book has a name for the number.
  bool IsKnownPerson(const std::string& number);

  System system;
  JournalCache journalCache;
  JournalFlags journalFlags;
  modMSN ownNumbers;
  Holidays holidays;
  TimePeriods schedules;
  modNumbers numbers;
  Blacklist blacklist;
  modFunction_Blocking blocking;
  NoBookWindow bookWindow;
  NoLoadProgress progress;
  modBook book;
  modVCard cards;
  JournalLookup journalNames;
  JournalArchiver archive;
};

}  // namespace vorlix
