// Number analysis. fVW turns a number as a line delivers it into the one normal form by which book, journal and caches
// know it; GetOVW takes a number in normal form apart by the tables of the numbering plans, names its place and formats
// it. Found analyses are kept in the speed buffer, also beyond the end of the program.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/number_analysis.h"
#include "core/pipeline_ports.h"
#include "data/Folders.h"
#include "data/JournalCache.h"
#include "data/NumberFormat.h"
#include "data/NumberTables.h"
#include "data/Settings.h"
#include "data/SpeedBuffer_OVW.h"
#include "data/clsFiles.h"
#include "data/modAPI_INI.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

class modNumbers : public NumberAnalysis {
 public:
  struct Ports {
    clsFiles& files;
    const Folders& folders;
    modAPI_INI& ini;
    Settings& settings;  // myVWOP changes through the question of fVW
    OwnNumbers& ownNumbers;
    SimulationWindow& simulation;  // open: the simulation runs
    modAll_MsgBox& messages;
    JournalCache& journalCache;  // filled while the journal is loading
    const JournalFlags& journalFlags;
  };

  // All ports must outlive the object. The tables are empty until they are loaded.
  explicit modNumbers(const Ports& ports);

  // What stood before the number of the last call of the CAPI source; that source sets it.
  std::string LastPrefix;
  // For the settings dialog; either may be left empty. The number of kept analyses after each new one, and the prefix
  // that the question of fVW has changed.
  std::function<void(std::size_t)> CountChanged;
  std::function<void(const std::string&)> PrefixChanged;

  // May ask a modal question, during which other events come in and this routine may run again.
  std::string fVW(int source, const std::string& rawNumber) override;
  NumberTexts GetOVW(const std::string& number) override;
  // An index of -1 means the setting's.
  std::string GetNumberFormated(std::string_view state, std::string_view stateName, std::string_view city,
                                std::string_view cityName, std::string_view number, int indexState = -1,
                                int indexCity = -1, int indexNumber = -1) const;

  // Each fills its table anew; the country without "00".
  void loadLVW();
  void loadOVW(std::string_view country);
  // True if the country's file is there and has a row; the code with or without "00". GetOVW asks for itself.
  bool loadAOVW(std::string_view code);
  void LoadProvider();

  // The real path of the image of a number's network, or of its country; empty where there is none.
  std::string Get_ProviderFile(const std::string& number);
  std::string Get_StateFlagFile(const std::string& number) const;

  // To be loaded behind the tables.
  void SpeedBuffer_OVW_Load() { speedBuffer_.Load(); }
  void SpeedBuffer_OVW_Save() { speedBuffer_.Save(); }
  std::size_t SpeedBuffer_OVW_Count() const { return speedBuffer_.Count(); }
  void SpeedBuffer_OVW_Clear() { speedBuffer_.Clear(); }

 private:
  bool StaysAsDelivered(const std::string& number) const;
  std::string Spelled(std::string_view rawNumber, std::size_t prefixLength) const;
  std::string Decided(int source, std::string_view prefix, std::string_view spelled, const std::string& rawNumber);
  bool AcceptsPrefix(const std::string& rawNumber);

  bool AnalyseForeign(const std::string& number, NumberTexts& texts);
  bool AnalyseNational(const std::string& number, NumberTexts& texts) const;
  void Fill(NumberTexts& texts, const NumberParts& parts) const;
  void Keep(const std::string& number, const NumberTexts& texts);
  void NoteForJournal(const std::string& number, const NumberTexts& texts);

  std::string TextOf(std::string_view file) const;
  std::string ExistingImage(std::string_view folder, std::string_view name) const;

  Ports ports_;
  SpeedBuffer_OVW speedBuffer_;
  CodeTable<StateRow> LVW_;
  CodeTable<AreaRow> OVW_;
  ForeignAreas AOVW_;
  Provider provider_;
};

}  // namespace vorlix
