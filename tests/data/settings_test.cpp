// The settings store: where the files lie, how they are read and written, and the table that all of it works by.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/SpecSwitches.h"
#include "data/modSettings.h"
#include "fakes/DataRoom.h"
#include "services/ansi.h"
#include "services/text.h"

namespace vorlix {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Op = MemoryFileStore::Operation;

TEST(Folders, AreFoundByThePathsFileTheEnvironmentAndTheCommandLine) {
  struct Row {
    const char* paths;  // content of "Vorlixpaths.ini"; nullptr: no file
    const char* dataHome;
    const char* override;
    const char* expected;  // ProgramData and BookPath
  };
  const Row rows[] = {
      {nullptr, "", "", "/home/u/.local/share/Vorlix /home/u/.local/share/Vorlix/data/"},
      {nullptr, "/xdg/", "", "/xdg/Vorlix /xdg/Vorlix/data/"},
      {nullptr, "relative", "", "/home/u/.local/share/Vorlix /home/u/.local/share/Vorlix/data/"},
      {"[Paths]\r\nProgramData=/srv/v/\r\n", "/xdg", "", "/srv/v /srv/v/data/"},
      {"[Paths]\r\nProgramData=\\srv\\v\\\r\n", "/xdg", "", "/srv/v /srv/v/data/"},
      {"[Paths]\r\nProgramData=0\r\n", "/xdg", "", "/program /program/data/"},
      {"[Paths]\r\nProgramData=\r\n", "/xdg", "", "/program /program/data/"},
      {"[Paths]\r\nProgramData=\\\r\n", "/xdg", "", "/program /program/data/"},
      {"[Paths]\r\nProgramData=0\\\r\n", "/xdg", "", "/program /program/data/"},
      {"[Paths]\r\nProgramData=7\r\n", "/xdg", "", "/xdg/Vorlix /xdg/Vorlix/data/"},
      {"[Paths]\r\nProgramData=near\r\nBookPath=/books\r\n", "/xdg", "", "/program/near /books/"},
      {"[Paths]\r\nBookPath=5\r\n", "/xdg", "", "/xdg/Vorlix /xdg/Vorlix/data/"},
      {"[Paths]\r\nProgramData=/srv/v\r\n", "/xdg", "/given/", "/given /given/data/"},
      {"junk\n\n[", "/xdg", "", "/xdg/Vorlix /xdg/Vorlix/data/"},
  };
  for (const Row& row : rows) {
    MemoryFileStore store;
    store.AddFolder("/program");
    if (row.paths != nullptr) store.AddFile("/program/Vorlixpaths.ini", row.paths);
    const Folders folders(store, {"/program", row.dataHome, "/home/u", row.override});
    EXPECT_EQ(folders.ProgramData() + " " + folders.BookPath(), row.expected);
    EXPECT_EQ(folders.Notice(), "");
  }
}

TEST(Folders, DataBesideAProgramThatForbidsWritingGoesToTheDefaultAndTheUserIsTold) {
  MemoryFileStore store;
  store.AddFile("/program/Vorlixpaths.ini", "[Paths]\r\nProgramData=0\r\nBookRefresh=1\r\n");
  store.Forbid("/program");
  const Folders folders(store, {"/program", "/xdg", "/home/u", ""});
  EXPECT_EQ(folders.ProgramData(), "/xdg/Vorlix");
  EXPECT_TRUE(folders.BookRefresh());
  EXPECT_THAT(folders.Notice(), HasSubstr("ist das Schreiben nicht erlaubt!"));
  EXPECT_EQ(Folders(store, {"/program", "/xdg", "/home/u", "/given"}).Notice(), "");
}

TEST(Folders, LogicalNamesBeginWithABackslash) {
  DataRoom room;
  EXPECT_EQ(room.folders.GetMainPath(""), "/vorlix/data/Vorlix.ini");
  EXPECT_EQ(room.folders.GetMainPath(R"(\data\mail\x.txt)"), "/vorlix/data/mail/x.txt");
  EXPECT_EQ(room.folders.GetMainPath(R"(\BASE\x)"), "/program/BASE/x");
  EXPECT_EQ(room.folders.GetMainPath(R"(\archiv\x)"), "/vorlix/archiv/x");
  EXPECT_EQ(room.folders.GetMainPath("/data/x"), "/data/x");
  EXPECT_EQ(room.folders.GetMainPath(R"(\other\x)"), R"(\other\x)");
}

class SettingsTest : public testing::Test, protected DataRoom {
 protected:
  void File(const std::string& text) { store.AddFile("/vorlix/data/Vorlix.ini", text); }
  std::string File() const { return store.Content("/vorlix/data/Vorlix.ini"); }

  Settings settings;
  std::vector<std::string> backups;
  modSettings module{
      {ini, store, folders, clock, messages, [this](const std::string& path) { backups.push_back(path); }}, settings};
};

TEST_F(SettingsTest, NumbersAndFlagsAreHeldInTheirRange) {
  File("[A]\r\nminus=-5\r\nbig=999\r\nword=abc\r\nflag5=5\r\nflagm=-1\r\nflag0=0\r\nempty=\r\nhalf=1,23456\r\n");
  EXPECT_EQ(ini.GetSettLng("A", "minus", 1), -5);  // 0 to 0: no range
  EXPECT_EQ(ini.GetSettLng("A", "minus", 3, 1, 10), 1);
  EXPECT_EQ(ini.GetSettLng("A", "big", 3, 1, 10), 10);
  EXPECT_EQ(ini.GetSettLng("A", "big", 3, 1, 0), 999);  // no upper limit
  EXPECT_EQ(ini.GetSettLng("A", "big", 3, 1, 10, true), 3);
  EXPECT_EQ(ini.GetSettLng("A", "word", 3), 0);
  EXPECT_EQ(ini.GetSettLng("A", "none", 3, 5, 10), 5);
  EXPECT_TRUE(ini.GetSettBool("A", "flag5", false));
  EXPECT_FALSE(ini.GetSettBool("A", "flagm", true));
  EXPECT_FALSE(ini.GetSettBool("A", "flag0", true));
  EXPECT_TRUE(ini.GetSettBool("A", "none", true));
  EXPECT_EQ(ini.GetSettStr("A", "empty", "x"), "");
  EXPECT_EQ(ini.GetSettStr("A", "empty", "x", {}, true), "x");
  EXPECT_EQ(ini.GetSettStr("A", "word", "7", {}, false, true), "7");
  EXPECT_DOUBLE_EQ(ini.GetSettCur("A", "half", 0), 1.2346);
}

TEST_F(SettingsTest, BrokenFilesLoadWithDefaults) {
  for (const std::string& text :
       {std::string(), std::string("\0\x01\xFF\xFE[[]]=\0", 10), std::string("no section\nx=1"),
        std::string("\xEF\xBB\xBF;"), std::string(100000, '[')}) {
    File(text);
    module.LoadSetting();
    EXPECT_EQ(settings.General.HideTime, 10);
    EXPECT_EQ(settings.General.ControllerActive, "10000");
    EXPECT_TRUE(settings.General.CallMode_CAPI);
    EXPECT_EQ(settings.FritzBox.Port, 1012);
  }
  File("\xEF\xBB\xBF[General]\nHideTime=20\nHideTime=30\n[general]\nTKnum=99\n");
  module.LoadSetting();
  EXPECT_EQ(settings.General.HideTime, 20);
  EXPECT_EQ(settings.General.TKnum, 9);
}

TEST_F(SettingsTest, ALoadReadsEachFileOnceAndASaveWritesItOnce) {
  File("[General]\r\n");
  store.requests.clear();
  module.LoadSetting();
  EXPECT_EQ(store.Count(Op::kRead, "Vorlix.ini"), 1);
  module.SaveSettings_Config();
  EXPECT_EQ(store.Count(Op::kOverwrite, "Vorlix.ini"), 1);
  module.SaveSettings_Config();
  EXPECT_EQ(store.Count(Op::kOverwrite, "Vorlix.ini"), 1);  // nothing has changed
}

TEST_F(SettingsTest, AnotherProgramsChangeIsSeenAndKept) {
  File("[General]\r\nHideTime=1\r\n");
  EXPECT_EQ(ini.GetSettLng("General", "HideTime", 0), 1);
  File("[General]\r\nHideTime=2\r\n; mine\r\n");
  EXPECT_EQ(ini.GetSettLng("General", "HideTime", 0), 2);
  ini.SetSettStr("General", "TKnum", "3");
  EXPECT_EQ(File(), "[General]\r\nHideTime=2\r\nTKnum=3\r\n; mine\r\n");
}

TEST_F(SettingsTest, NothingIsWrittenWhileARestoreForbidsIt) {
  File("[General]\r\nHideTime=1\r\n");
  blocks.SettingsWriteBlocked = true;
  module.SaveSettings_Self();
  module.SaveSettings_Config();
  EXPECT_EQ(File(), "[General]\r\nHideTime=1\r\n");
  ini.DeleteKey("General", "HideTime");
  EXPECT_EQ(File(), "[General]\r\n");
}

TEST_F(SettingsTest, AFileThatCannotBeReadIsNotReplacedByOneWithASingleKey) {
  File("[General]\r\nHideTime=2\r\n");
  store.Fail(Op::kRead, EIO, {}, 2);
  EXPECT_EQ(ini.GetSettLng("General", "HideTime", 7), 7);
  ini.SetSettStr("General", "TKnum", "3");
  EXPECT_EQ(File(), "[General]\r\nHideTime=2\r\n");
  ini.SetSettStr("General", "TKnum", "3");
  EXPECT_EQ(File(), "[General]\r\nHideTime=2\r\nTKnum=3\r\n");
}

// Gives every member of the table another value than its default.
void ChangeAll(Settings& settings) {
  int number = 0;
  for (const SettingRow& row : SettingsTable()) {
    ++number;
    if (const auto* flag = std::get_if<SettingRow::Flag>(&row.member)) {
      (*flag)(settings) = row.fallback == 0;
    } else if (const auto* value = std::get_if<SettingRow::Number>(&row.member)) {
      (*value)(settings) = row.fallback == row.minimum ? row.minimum + 1 : row.minimum;
      if (row.minimum == 0 && row.maximum == 0) (*value)(settings) = number;
    } else if (const auto* duration = std::get_if<SettingRow::Duration>(&row.member)) {
      (*duration)(settings) = std::chrono::seconds(row.maximum);
    } else if (const auto* text = std::get_if<SettingRow::Text>(&row.member)) {
      (*text)(settings) = row.rule == SettingRule::Controllers ? "01010"
                          : row.rule == SettingRule::Any || row.rule == SettingRule::NeverEmpty
                              ? " \xE4\"; " + std::to_string(number)
                              : std::to_string(number);
      if (row.rule == SettingRule::MonthUpToNow) (*text)(settings) = "202401";
    } else {
      std::get<SettingRow::Family>(row.member)(settings) = {{1, "a"}, {12, "b"}};
    }
  }
}

TEST_F(SettingsTest, EverySettingComesBackAsItWasSaved) {
  ChangeAll(settings);
  settings.General.Init = false;  // the program writes these two itself
  settings.VorlixVersion.Status.clear();
  module.SaveSettings_Config();
  module.SaveSettings_Self();
  module.SaveSettings_AVM();
  module.SaveSettings_NCID();
  module.SaveTAPIData();
  Settings loaded;
  modSettings({ini, store, folders, clock, messages, {}}, loaded).LoadSetting();
  for (const SettingRow& row : SettingsTable()) {
    if (row.saved == SettingSaved::Never) continue;
    std::visit([&](auto member) { EXPECT_EQ(member(loaded), member(settings)) << row.section << " " << row.key; },
               row.member);
  }
  EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(SettingsTest, NoKeyStandsTwiceInTheTable) {
  std::set<std::string> seen;
  for (const SettingRow& row : SettingsTable()) {
    EXPECT_TRUE(
        seen.insert(Lower(std::string(row.file) + std::string(row.section) + "/" + std::string(row.key))).second)
        << row.key;
  }
}

TEST_F(SettingsTest, TextsWithARuleFallBackWhenTheyCannotBeUsed) {
  clock.SetNow(DateTime::FromCivil(2026, 11, 21));
  struct Row {
    const char* section;
    const char* stored;
    std::string (*read)(const Settings&);
    const char* expected;
  };
  const auto controllers = [](const Settings& s) { return s.General.ControllerActive; };
  const auto prefix = [](const Settings& s) { return s.General.myVWOP; };
  const auto date = [](const Settings& s) { return s.Journal.Date; };
  const Row rows[] = {
      {"General", "ControllerActive=1", controllers, "10000"},
      {"General", "ControllerActive=00000", controllers, "10000"},
      {"General", "ControllerActive=011", controllers, "01100"},
      {"General", "myVWOP=-", prefix, ""},
      {"General", "myVWOP=00", prefix, "00"},
      {"General", "myVWOP=x", prefix, ""},
      {"Journal", "Date=", date, "202611"},
      {"Journal", "Date=209901", date, "202611"},
      {"Journal", "Date=202603", date, "202603"},
      {"Journal", "Date=\xE4", date, "202611"},
      {"Journal", "Date=202513", date, "202611"},
      {"Journal", "Date=202600", date, "202611"},
      {"Skin", "Path=", [](const Settings& s) { return s.Skin.Path; }, "Default"},
      {"General", "CopyDataSet=a", [](const Settings& s) { return s.General.CopyDataSet; }, "123400"},
  };
  for (const Row& row : rows) {
    File("[" + std::string(row.section) + "]\r\n" + row.stored + "\r\n");
    module.LoadSetting();
    EXPECT_EQ(row.read(settings), row.expected) << row.stored;
  }
  File("[TeleControl]\r\nSendMails=1\r\n[General]\r\nAutoSearchTimeout=7\r\n");
  module.LoadSetting();
  EXPECT_FALSE(settings.TeleControl.SendMails);
  EXPECT_EQ(settings.General.AutoSearchTimeout.count(), 7000);
}

TEST_F(SettingsTest, TheVersionThatWroteTheFileDecidesWhatTheUserIsTold) {
  struct Row {
    const char* version;
    std::size_t boxes;
    bool logDeleted;
  };
  for (const Row& row : {Row{"v2.21", 2, true},
                         {"v2.22", 1, true},
                         {"v2.99", 1, true},
                         {"v3.00", 0, false},
                         {"v4.00", 0, false},
                         {"beta", 0, false},
                         {"", 0, false}}) {
    File("[Vorlix-Version]\r\nVersion=" + std::string(row.version) + "\r\n[ErrorMessage]\r\nShow=0\r\n");
    store.AddFile("/vorlix/log/error.log", "old");
    boxes.shown.clear();
    module.LoadSetting();
    EXPECT_EQ(boxes.shown.size(), row.boxes) << row.version;
    EXPECT_EQ(store.Exists("/vorlix/log/error.log"), !row.logDeleted) << row.version;
    EXPECT_EQ(settings.ErrorMessage.Show, row.logDeleted) << row.version;
  }
  EXPECT_THAT(ErrorLog(), HasSubstr("LoadSetting_DeleteErrorFile"));
  EXPECT_TRUE(module.IsFirstStart());
  module.SaveSettings_Self();
  EXPECT_FALSE(module.IsFirstStart());
  EXPECT_THAT(File(), HasSubstr("Version=v3.00"));
}

TEST_F(SettingsTest, TheStartFindsAFileThatCannotBeWrittenOrIsBroken) {
  File("[General]\r\n");
  std::string written = module.WriteCheck();
  module.LoadSetting();
  EXPECT_TRUE(module.CheckConfigFile(written, settings.FileCheck.Check));
  EXPECT_THAT(backups, ElementsAre("/vorlix/data/Vorlix.ini"));

  store.Fail(Op::kOverwrite, EACCES);
  clock.SetNow(clock.Now().AddSeconds(3600));
  written = module.WriteCheck();
  module.LoadSetting();
  EXPECT_FALSE(module.CheckConfigFile(written, settings.FileCheck.Check));
  EXPECT_THAT(ErrorLog(), HasSubstr("Konfigurationsdatei nicht beschreibbar!"));
}

TEST_F(SettingsTest, TheStartBacksTheFileUpOnlyWhereBackupsAreWanted) {
  for (const char* off : {"BackupAtStartUp=0", "BackupCount=0"}) {
    File("[General]\r\n" + std::string(off) + "\r\n");
    const std::string written = module.WriteCheck();
    module.LoadSetting();
    EXPECT_TRUE(module.CheckConfigFile(written, settings.FileCheck.Check));
    EXPECT_THAT(backups, IsEmpty()) << off;
  }
}

TEST_F(SettingsTest, ABrokenFileIsDeletedAndTheUserIsToldWhatIsLeft) {
  struct Row {
    bool hasBackup;
    bool canDelete;
    const char* told;
  };
  for (const Row& row : {Row{false, true, "Bitte stellen Sie das Programm neu ein!"},
                         {true, true, "Entfernen Sie beim Umbenennen die Endung .bak!"},
                         {true, false, "/vorlix/data/Vorlix.ini"}}) {
    File("");
    if (row.hasBackup) store.AddFile("/vorlix/data/Vorlix.ini.bak", "[General]\r\n");
    if (!row.canDelete) store.Fail(Op::kRemove, EACCES);
    EXPECT_EQ(module.IsFirstStart(), !row.hasBackup);  // whose dialog would fill the file
    const std::string written = module.WriteCheck();
    module.LoadSetting();
    EXPECT_TRUE(module.CheckConfigFile(written, settings.FileCheck.Check));
    EXPECT_EQ(store.Exists("/vorlix/data/Vorlix.ini"), !row.canDelete);
    EXPECT_THAT(boxes.shown.back(), HasSubstr(row.told));
  }
  EXPECT_THAT(backups, IsEmpty());
}

TEST_F(SettingsTest, UserPathsAreStoredRelativeToTheProgram) {
  struct Row {
    const char* full;
    const char* relative;
  };
  for (const Row& row : {Row{"/program/base/a.wav", "./base/a.wav"},
                         {"/PROGRAM/a", "./a"},
                         {"/other/a", "/other/a"},
                         {"./a", "./a"},
                         {"../a", "./a"},
                         {"a", "./a"},
                         {"\\a", "./a"},
                         {"", ""}}) {
    EXPECT_EQ(module.GetRelativePathFromFullPath(row.full), row.relative) << row.full;
  }
  for (const Row& row : {Row{"/program/base/a.wav", ".\\base\\a.wav"},
                         {"/program/a", "../a"},
                         {"/program/a", "\\a"},
                         {"/other/a", "/other/a"},
                         {"/program/a", "a"}}) {
    EXPECT_EQ(module.GetFullPathFromRelativePath(row.relative), row.full) << row.relative;
  }
  EXPECT_EQ(SettingsFillBinString("1", 3), "100");
  EXPECT_EQ(SettingsFillBinString("1111", 3), "1111");
  EXPECT_EQ(SettingsGetValueFromSettString("103", 3, 9), 3);
  EXPECT_EQ(SettingsGetValueFromSettString("1x", 2, 9), 9);
  EXPECT_EQ(SettingsGetValueFromSettString("1", 2, 9), 9);
}

TEST_F(SettingsTest, ALanguageFileNamesItself) {
  std::string code, name;
  GetLanguages(ini, R"(\base\language_xx.ini)", code, name);
  EXPECT_EQ(code + name, "dedeutsch");
  store.AddFile("/program/base/language_en.ini", "[Data]\r\nCountryID=en\r\nLanguage=english\r\n");
  GetLanguages(ini, R"(\base\language_en.ini)", code, name);
  EXPECT_EQ(code + name, "enenglish");
}

TEST_F(SettingsTest, ExpertSwitchesAreOffAndHelpersLogUnlessTheFileSaysSo) {
  EXPECT_TRUE(LoadSpecSwitches(ini, folders).LogMode.Mail);
  store.AddFile("/program/Vorlixspec.ini", "[Debug]\r\nLogAVM=1\r\nLogExport=1\r\n[LogMode]\r\nExport=0\r\nMail=0\r\n");
  const SpecSwitches switches = LoadSpecSwitches(ini, folders);
  EXPECT_TRUE(switches.Debug.LogAVM);
  EXPECT_FALSE(switches.Debug.TraceMode);
  EXPECT_TRUE(switches.LogMode.Export);
  EXPECT_FALSE(switches.LogMode.Mail);
  EXPECT_FALSE(switches.CAPI.LoadThisValues);
}

TEST_F(SettingsTest, TheDriversMasksAreBuiltOfOneKeyForEachBit) {
  std::string text = "[CAPI]\r\nLoadThisValues=1\r\nInfoMask_CAUSE=1\r\nInfoMask_EARLYB3CONNECT =1\r\n";
  for (const char* service : {"SPEECH", "31KHZAUDIO", "7KHZAUDIO", "VIDEO", "TELEPHONY", "FAXG3", "FAXG4",
                              "7KHZTELEPHONY", "VIDEOTELEPHONY_FIRST", "VIDEOTELEPHONY_SECOND"}) {
    text += "CIPMask_" + std::string(service) + "=1\r\n";
  }
  store.AddFile("/program/Vorlixspec.ini", text);
  const CapiSwitches switches = LoadSpecSwitches(ini, folders).CAPI;
  EXPECT_TRUE(switches.LoadThisValues);
  EXPECT_FALSE(switches.SkipVersionAndManufact);
  EXPECT_EQ(switches.InfoMask, 0x201u);
  EXPECT_EQ(switches.CIPMask, 0x1C070072u);
}

}  // namespace
}  // namespace vorlix
