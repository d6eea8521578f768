// Loading and saving of all settings, by the one table of data/Settings.h, and the checks of the settings file at the
// start.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "data/Settings.h"
#include "data/modAPI_INI.h"
#include "services/DateTime.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

class modSettings {
 public:
  struct Ports {
    modAPI_INI& ini;
    FileStore& files;
    const Folders& folders;
    const CivilClock& clock;
    modAll_MsgBox& messages;
    // Makes one backup generation of a file.
    std::function<void(const std::string& path)> backup;
  };

  // All ports and the settings must outlive the object.
  modSettings(Ports ports, Settings& settings) : ports_(std::move(ports)), settings_(settings) {}

  // Fills every member, then checks the version that wrote the file.
  void LoadSetting();

  // Writes what the settings dialog owns, or what the program changes by itself.
  void SaveSettings_Config();
  void SaveSettings_Self();

  void LoadSettingsBook() { LoadSection("Book"); }
  void SaveSettingsBook() { SaveSection("Book"); }
  void LoadSettingsJournal() { LoadSection("Journal"); }
  void SaveSettingsJournal() { SaveSection("Journal"); }
  void LoadSettingsNews() { LoadSection("News"); }
  void SaveSettingsNews() { SaveSection("News"); }
  void LoadSettingsVCards() { LoadSection("vCards"); }
  void SaveSettingsVCards() { SaveSection("vCards"); }
  // The blacklist window keeps nothing but its place.
  void LoadSettingsBlacklist() { LoadKeys("Dimensions", "Blacklist"); }
  void SaveSettingsBlacklist() { SaveKeys("Dimensions", "Blacklist"); }
  void LoadSettings_AVM() { LoadSection("FritzBox"); }
  void SaveSettings_AVM() { SaveSection("FritzBox"); }
  void LoadSettings_NCID() { LoadSection("NCID"); }
  void SaveSettings_NCID() { SaveSection("NCID"); }
  void LoadTAPIData() { LoadSection("TAPIDial"); }
  void SaveTAPIData() { SaveSection("TAPIDial"); }
  // How many backups there are to be; for what runs ahead of LoadSetting().
  void LoadBackupSettings() { LoadKeys("General", "Backup"); }
  void LoadSplashSettings() { LoadKeys("General", "Splash"); }
  void SaveTimeSettings() { SaveSection("TimeControl"); }

  // Values that are stored at the moment they change.
  void SaveLastUpdate(int day);
  void SaveErrorMessageCount(int count);
  void SaveErrorMessageShow(bool show);
  void SaveSimWrite() { SaveKeys("General", "SimWrite"); }
  void SaveJournalDate(const std::string& yearMonth);
  // Country code, area code and national prefix of the own line.
  void SaveOwnPrefix(const std::string& myVWL, const std::string& myVWO, const std::string& myVWOP);
  void SaveVersion();
  // Tells whoever edits the file why the places of the windows mean nothing on this desktop.
  void NotePlaces(const std::string& why) { ports_.ini.SetComment("Dimensions", why); }

  // True when the program has saved no settings yet, whatever somebody has written beforehand: this is a first start.
  // Lost ones are none: where the backup holds a version and the file is missing or holds no entry, the backup takes
  // its place, and a faulty file is put aside; CheckConfigFile() tells of it. An empty file that has a backup is left
  // to that check.
  bool IsFirstStart();

  // The start's check of the settings file: WriteCheck() looks how it stands and puts the present moment into it,
  // LoadSetting() reads it back, and CheckConfigFile() compares the two. False for a file that cannot be written; a
  // broken one, which was empty, is deleted, a good one backed up where the settings want backups at the start. A
  // backup that holds a version, and that the file has not come out of, is put aside first, and the user is told where.
  std::string WriteCheck();
  bool CheckConfigFile(const std::string& written, const std::string& read);

  // A user path relative to the program folder where it lies below it, and back. "\" is read as "/".
  std::string GetRelativePathFromFullPath(const std::string& path) const;
  std::string GetFullPathFromRelativePath(const std::string& path) const;

 private:
  void LoadSection(std::string_view section) { LoadKeys(section, {}); }
  void SaveSection(std::string_view section) { SaveKeys(section, {}); }
  void LoadKeys(std::string_view section, std::string_view keyStart);
  void SaveKeys(std::string_view section, std::string_view keyStart);
  void Save(SettingSaved saved);
  void Load(const SettingRow& row);
  void Store(const SettingRow& row);
  std::string UsableText(const SettingRow& row, const std::string& stored) const;
  void CheckVersion();
  void TellPrefixNote();
  void TellNewVersion(const std::string& former);
  struct Restored {
    bool wasThere = false;  // a faulty file
    bool done = false;
    std::string putAside;  // where that file is now; empty when it stands where it stood
  };

  std::string Path() const { return ports_.folders.GetMainPath({}); }
  std::string BackupPath() const { return Path() + ".bak"; }
  bool HasBackup() const { return ports_.files.Stat(BackupPath()).IsFile(); }
  bool HoldsVersion(const std::string& path) const;
  bool HoldsSettings() const;
  bool KeepsBackup() const;
  Restored Restore();
  std::string FreeName(const std::string& ending) const;
  void TellRestored(const Restored& restored);
  void RemoveBrokenFile();
  void BackUp();
  bool PutBackupAside();

  Ports ports_;
  Settings& settings_;
  bool wasEmpty_ = false;  // before the check value went into the file
  bool isFresh_ = false;   // there was no version in it
  std::optional<Restored> restored_;
};

// "v3.00": how the program names its version in files and messages.
std::string ProgramVersionText();

// The code and the name that a language file gives itself; "de" and "deutsch" where it does not.
void GetLanguages(modAPI_INI& ini, const std::string& file, std::string& code, std::string& name);

// Pads a text of flags with "0" on the right up to `length`; a longer text stays.
std::string SettingsFillBinString(const std::string& text, std::size_t length);
// The character at `position` (from 1) as a number, or the fallback if it is none.
int SettingsGetValueFromSettString(const std::string& text, std::size_t position, int fallback);

}  // namespace vorlix
