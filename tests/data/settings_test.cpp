// The settings store: where the files lie, how they are read and written, and
// the table that all of it works by.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/SpecSwitches.h"
#include "data/modSettings.h"
#include "fakes/Arrows.h"
#include "fakes/DataRoom.h"
#include "services/ansi.h"
#include "services/text.h"

namespace vorlix {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using Op = MemoryFileStore::Operation;

TEST(Folders, AreFoundByThePathsFileTheEnvironmentAndTheCommandLine) {
  using Case = std::tuple<std::string, std::string, std::string>;  // paths file, environment, command line
  for (const auto& [given, expected] : std::initializer_list<std::pair<Case, std::string>>{
           {{"", "/xdg/", ""}, "/xdg/Vorlix /xdg/Vorlix/data/"},
           {{"", "relative", ""}, "/home/u/.local/share/Vorlix /home/u/.local/share/Vorlix/data/"},
           {{"ProgramData=\\srv\\v\\", "/xdg", ""}, "/srv/v /srv/v/data/"},
           {{"ProgramData=0\\", "/xdg", ""}, "/program /program/data/"},
           {{"ProgramData=7\r\nBookPath=5", "/xdg", ""}, "/xdg/Vorlix /xdg/Vorlix/data/"},
           {{"ProgramData=near\r\nBookPath=/books", "/xdg", ""}, "/program/near /books/"},
           {{"ProgramData=/srv/v", "/xdg", "/given/"}, "/given /given/data/"},
           {{"\n\n[", "/xdg", ""}, "/xdg/Vorlix /xdg/Vorlix/data/"}}) {
    MemoryFileStore store;
    const auto& [paths, dataHome, override] = given;
    store.AddFolder("/program");
    if (!paths.empty()) store.AddFile("/program/Vorlixpaths.ini", "[Paths]\r\n" + paths + "\r\n");
    const Folders folders(store, {"/program", dataHome, "/home/u", override});
    EXPECT_EQ(folders.ProgramData() + " " + folders.BookPath() + folders.Notice(), expected) << paths;
  }
}

TEST(Folders, DataBesideAProgramThatForbidsWritingGoesToTheDefaultAndTheUserIsTold) {
  MemoryFileStore store;
  store.AddFile("/program/Vorlixpaths.ini", "[Paths]\r\nProgramData=0\r\n");
  store.Forbid("/program");
  const Folders folders(store, {"/program", "/xdg", "/home/u", ""});
  EXPECT_EQ(folders.ProgramData(), "/xdg/Vorlix");
  EXPECT_THAT(folders.Notice(), HasSubstr("ist das Schreiben nicht erlaubt!"));
}

TEST(Folders, LogicalNamesBeginWithABackslash) {
  for (const auto& [name, path] :
       Arrows({"-> /vorlix/data/Vorlix.ini", R"(\data\mail\x.txt -> /vorlix/data/mail/x.txt)",
               R"(\BASE\x -> /program/BASE/x)", "/data/x -> /data/x", R"(\other\x -> \other\x)"}))
    EXPECT_EQ(DataRoom().folders.GetMainPath(name), path);
}

class SettingsTest : public testing::Test, protected DataRoom {
 protected:
  static constexpr const char* kFile = "/vorlix/data/Vorlix.ini";
  void File(const std::string& text) { store.AddFile(kFile, text); }
  std::string File() const { return store.Content(kFile); }
  void Load(const std::string& text) {
    File(text);
    module.LoadSetting();
  }
  // The start writes a mark, loads, and looks for the mark.
  bool Start() {
    const std::string written = module.WriteCheck();
    module.LoadSetting();
    return module.CheckConfigFile(written, settings.FileCheck.Check);
  }

  Settings settings;
  std::vector<std::string> backups;
  modSettings module{
      {ini, store, folders, clock, messages, [this](const std::string& path) { backups.push_back(path); }}, settings};
};

TEST_F(SettingsTest, NumbersAndFlagsAreHeldInTheirRange) {
  File("[A]\nminus=-5\nbig=999\nword=abc\nflag5=5\nflagm=-1\nempty=\nhalf=1,23456\n");
  EXPECT_EQ(ini.GetSettLng("A", "minus", 1), -5);  // 0 to 0: no range
  EXPECT_EQ(ini.GetSettLng("A", "minus", 3, 1, 10), 1);
  EXPECT_EQ(ini.GetSettLng("A", "big", 3, 1, 10), 10);
  EXPECT_EQ(ini.GetSettLng("A", "big", 3, 1, 0), 999);  // no upper limit
  EXPECT_EQ(ini.GetSettLng("A", "big", 3, 1, 10, true), 3);
  EXPECT_EQ(ini.GetSettLng("A", "word", 3), 0);
  EXPECT_TRUE(ini.GetSettBool("A", "flag5", false) && !ini.GetSettBool("A", "flagm", true));
  EXPECT_EQ(ini.GetSettStr("A", "empty", "x") + ini.GetSettStr("A", "empty", "y", {}, true), "y");
  EXPECT_EQ(ini.GetSettStr("A", "word", "7", {}, false, true), "7");
  EXPECT_DOUBLE_EQ(ini.GetSettCur("A", "half", 0), 1.2346);
}

TEST_F(SettingsTest, BrokenFilesLoadWithDefaults) {
  for (const std::string& text :
       {std::string(), std::string("\0\x01\xFF\xFE[[]]=\0", 10), std::string("no section\nx=1"),
        std::string("\xEF\xBB\xBF;"), std::string(100000, '[')}) {
    Load(text);
    EXPECT_EQ(settings.General.HideTime, 10);
    EXPECT_EQ(settings.General.ControllerActive, "10000");
    EXPECT_TRUE(settings.General.CallMode_CAPI);
  }
  Load("\xEF\xBB\xBF[General]\nHideTime=20\nHideTime=30\n[general]\nTKnum=99\n");
  EXPECT_EQ(settings.General.HideTime * 10 + settings.General.TKnum, 209);
}

TEST_F(SettingsTest, AWriteKeepsWhatOthersWroteAndIsNoneWhereItIsForbiddenOrTheFileCannotBeRead) {
  const std::string before = "[General]\r\nHideTime=2\r\n; mine\r\n";
  File("[General]\r\nHideTime=1\r\n");
  EXPECT_EQ(ini.GetSettLng("General", "HideTime", 0), 1);
  File(before);
  store.Fail(Op::kRead, EIO, {}, 2);
  EXPECT_EQ(ini.GetSettLng("General", "HideTime", 7), 7);
  ini.SetSettStr("General", "TKnum", "3");
  blocks.SettingsWriteBlocked = true;
  module.SaveSettings_Self();
  module.SaveSettings_Config();
  EXPECT_EQ(File(), before);
  blocks.SettingsWriteBlocked = false;
  EXPECT_EQ(ini.GetSettLng("General", "HideTime", 0), 2);
  ini.SetSettStr("General", "TKnum", "3");
  EXPECT_EQ(File(), "[General]\r\nHideTime=2\r\nTKnum=3\r\n; mine\r\n");
}

// A text that its rule allows and that is not the default.
std::string OtherText(SettingRule rule, int number) {
  if (rule == SettingRule::Controllers) return "01010";
  if (rule == SettingRule::MonthUpToNow) return "202401";
  const bool isFree = rule == SettingRule::Any || rule == SettingRule::NeverEmpty;
  return (isFree ? " \xE4\"; " : "") + std::to_string(number);
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
      (*text)(settings) = OtherText(row.rule, number);
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
  std::set<std::string> seen;
  for (const SettingRow& row : SettingsTable()) {
    const std::string name = std::string(row.file) + std::string(row.section) + "/" + std::string(row.key);
    EXPECT_TRUE(seen.insert(Lower(name)).second) << name << " stands twice in the table";
    if (row.saved == SettingSaved::Never) continue;
    std::visit([&](auto member) { EXPECT_EQ(member(loaded), member(settings)) << name; }, row.member);
  }
  EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(SettingsTest, TextsWithARuleFallBackWhenTheyCannotBeUsed) {
  clock.SetNow(DateTime::FromCivil(2026, 11, 21));
  for (const auto& [stored, expected] :
       Arrows({"ControllerActive=00000 -> 10000,,202611", "ControllerActive=011 -> 01100,,202611",
               "myVWOP=00 -> 10000,00,202611", "myVWOP=x -> 10000,,202611", "[Journal]\nDate=209901 -> 10000,,202611",
               "[Journal]\nDate=202603 -> 10000,,202603", "[Journal]\nDate=\xE4 -> 10000,,202611",
               "[Journal]\nDate=202513 -> 10000,,202611", "[Journal]\nDate=202600 -> 10000,,202611"})) {
    Load("[General]\n" + stored + "\n");
    EXPECT_EQ(settings.General.ControllerActive + "," + settings.General.myVWOP + "," + settings.Journal.Date, expected)
        << stored;
  }
  Load("[TeleControl]\nSendMails=1\n[Skin]\nPath=\n[General]\nAutoSearchTimeout=7\nCopyDataSet=a\n");
  EXPECT_FALSE(settings.TeleControl.SendMails);
  EXPECT_EQ(settings.General.AutoSearchTimeout.count(), 7000);
  EXPECT_EQ(settings.Skin.Path + settings.General.CopyDataSet, "Default123400");
}

TEST_F(SettingsTest, TheVersionThatWroteTheFileDecidesWhatTheUserIsTold) {
  using Case = std::tuple<std::string, std::size_t, bool>;
  for (const auto& [version, count, logDeleted] :
       {Case{"v2.21", 2, true}, Case{"v2.22", 1, true}, Case{"v2.99", 1, true}, Case{"v3.00", 0, false},
        Case{"beta", 0, false}, Case{"", 0, false}}) {
    store.AddFile("/vorlix/log/error.log", "old");
    boxes.shown.clear();
    Load("[Vorlix-Version]\r\nVersion=" + version + "\r\n[ErrorMessage]\r\nShow=0\r\n");
    EXPECT_EQ(boxes.shown.size(), count) << version;
    EXPECT_EQ(store.Exists("/vorlix/log/error.log"), !logDeleted) << version;
    EXPECT_EQ(settings.ErrorMessage.Show, logDeleted) << version;
  }
  EXPECT_TRUE(module.IsFirstStart());
  module.SaveSettings_Self();
  EXPECT_FALSE(module.IsFirstStart());
  EXPECT_THAT(File(), HasSubstr("Version=v3.00"));
}

TEST_F(SettingsTest, TheStartFindsAFileThatCannotBeWrittenAndBacksItUpWhereThatIsWanted) {
  for (const std::string row : {"BackupAtStartUp=0", "BackupCount=0", ""}) {
    File("[General]\r\n" + row + "\r\n");
    EXPECT_TRUE(Start());
    EXPECT_THAT(backups, SizeIs(row.empty() ? 1 : 0)) << row;
  }
  store.Fail(Op::kOverwrite, EACCES);
  clock.SetNow(clock.Now().AddSeconds(3600));
  EXPECT_FALSE(Start());
  EXPECT_THAT(ErrorLog(), HasSubstr("Konfigurationsdatei nicht beschreibbar!"));
}

TEST_F(SettingsTest, ABrokenFileIsDeletedAndTheUserIsToldWhatIsLeft) {
  using Case = std::tuple<bool, bool, const char*>;
  for (const auto& [hasBackup, canDelete, told] :
       {Case{false, true, "Bitte stellen Sie das Programm neu ein!"},
        Case{true, true, "Entfernen Sie beim Umbenennen die Endung .bak!"}, Case{true, false, kFile}}) {
    File("");
    if (hasBackup) store.AddFile(kFile + std::string(".bak"), "[General]\r\n");
    if (!canDelete) store.Fail(Op::kRemove, EACCES);
    EXPECT_EQ(module.IsFirstStart(), !hasBackup);  // whose dialog would fill the file
    EXPECT_TRUE(Start());
    EXPECT_EQ(store.Exists(kFile), !canDelete);
    EXPECT_THAT(boxes.shown.back(), HasSubstr(told));
  }
  EXPECT_THAT(backups, IsEmpty());
}

TEST_F(SettingsTest, LostSettingsComeBackFromTheirBackup) {
  const std::string backup = kFile + std::string(".bak"), aside = kFile + std::string(".defekt");
  const std::string cut = "[General]\r\nHideTi", zeros(300, '\0');
  for (const std::string& content : {std::string(), zeros, cut}) {
    EXPECT_TRUE(store.Remove(kFile));
    if (!content.empty()) File(content);
    store.AddFile(backup, "[Vorlix-Version]\r\nVersion=v3.00\r\n[General]\r\nHideTime=7\r\n");
    for (const std::size_t start : {0U, 1U}) {
      boxes.shown.clear();
      backups.clear();
      EXPECT_FALSE(module.IsFirstStart());
      EXPECT_TRUE(Start());
      EXPECT_EQ(settings.General.HideTime, 7);
      EXPECT_EQ(boxes.shown.size(), 1 - start);
      EXPECT_EQ(backups.size(), start);
      module.SaveSettings_Self();
    }
    EXPECT_THAT(File(), Not(HasSubstr("KeepBackup")));
  }
  EXPECT_EQ(store.Content(aside) + store.Content(aside + "2"), zeros + cut);
}

TEST_F(SettingsTest, WhatSomebodyWroteBeforehandIsProposedWhateverTheBackupHolds) {
  const std::string mark = "[FileCheck]\r\nCheck=1\r\n";
  for (const std::string& written : {"[General]\r\nmyVWL=43\r\n" + mark, std::string("[MSN]\n0=1;a"), mark}) {
    store.AddFile(kFile + std::string(".bak"), "[Vorlix-Version]\r\nVersion=v3.00\r\n[General]\r\nmyVWL=1\r\n");
    File(written);
    EXPECT_EQ(module.IsFirstStart(), written != mark) << written;
    EXPECT_EQ(File() == written, written != mark) << written;
    module.LoadSetting();
    module.SaveVersion();
    EXPECT_TRUE(Start());
    EXPECT_EQ(store.Exists(kFile + std::string(".bak")), written == mark) << "put aside: the proposal is no heir of it";
  }
}

TEST_F(SettingsTest, AFaultyFileThatIsNotReplacedStaysOrTheUserIsToldWhereItIs) {
  const std::string backup = kFile + std::string(".bak"), aside = kFile + std::string(".defekt"), faulty(300, '\0');
  store.AddFile(backup, "[Vorlix-Version]\r\nVersion=v3.00\r\n");
  for (const std::string stuck : {"Vorlix.ini", "", ".defekt"}) {  // what cannot be moved
    File(faulty);
    boxes.shown.clear();
    store.Fail(Op::kCopy, ENOSPC);
    if (!stuck.empty()) store.Fail(Op::kRename, EACCES, stuck);
    EXPECT_FALSE(module.IsFirstStart());
    store.FailNothing();
    EXPECT_EQ(store.Content(stuck == ".defekt" ? aside : kFile), faulty) << stuck;
    EXPECT_TRUE(Start());
    EXPECT_EQ(boxes.shown.back().find(aside) != std::string::npos, stuck == ".defekt") << stuck;
  }
}

TEST_F(SettingsTest, TheBackupOfLostSettingsIsPutAsideOnceBeforeNewOnesAreBackedUp) {
  const std::string good = "[Vorlix-Version]\r\nVersion=v3.00\r\n", backup = kFile + std::string(".bak");
  const std::string aside = kFile + std::string(".frueher");
  const auto start = [&](std::size_t boxesShown, std::size_t backupsMade, const std::string& told) {
    boxes.shown.clear();
    backups.clear();
    EXPECT_FALSE(module.IsFirstStart());
    EXPECT_TRUE(Start());
    EXPECT_THAT(backups, SizeIs(backupsMade));
    EXPECT_THAT(boxes.shown, SizeIs(boxesShown));
    EXPECT_THAT(Join(boxes.shown, {}), HasSubstr(told));
    if (backupsMade > 0) store.AddFile(backup, good);  // that of the new ones
    module.SaveSettings_Self();
  };
  store.AddFile(backup, good);
  File("[General]\r\n");
  store.Fail(Op::kCopy, ENOSPC);  // no room to restore it
  start(1, 0, "Entfernen Sie beim Umbenennen die Endung .bak!");
  store.FailNothing();
  store.Fail(Op::kRename, EACCES, ".bak", 1);
  start(0, 0, {});
  EXPECT_EQ(store.Content(backup), good);
  start(1, 1, "liegt jetzt in:\r\n" + aside);
  EXPECT_EQ(store.Content(aside), good);
  start(0, 1, {});
  EXPECT_THAT(File(), Not(HasSubstr("KeepBackup")));
}

TEST_F(SettingsTest, UserPathsAreStoredRelativeToTheProgram) {
  for (const auto& [full, relative] : Arrows(
           {"/program/base/a.wav -> ./base/a.wav", "/PROGRAM/a -> ./a", "/other/a -> /other/a", "../a -> ./a", "->"}))
    EXPECT_EQ(module.GetRelativePathFromFullPath(full), relative) << full;
  for (const auto& [relative, full] :
       Arrows({".\\base\\a.wav -> /program/base/a.wav", "../a -> /program/a", "/other/a -> /other/a"}))
    EXPECT_EQ(module.GetFullPathFromRelativePath(relative), full) << relative;
}

TEST_F(SettingsTest, ExpertSwitchesAreOffAndTheDriversMasksHaveOneKeyForEachBit) {
  EXPECT_TRUE(LoadSpecSwitches(ini, folders).LogMode.Mail);
  std::string text = "[Debug]\nLogAVM=1\nLogExport=1\n[LogMode]\nExport=0\nMail=0\n[CAPI]\nLoadThisValues=1\n";
  text += "InfoMask_CAUSE=1\nInfoMask_EARLYB3CONNECT =1\n";
  for (const char* service : {"SPEECH", "31KHZAUDIO", "TELEPHONY", "FAXG3", "VIDEOTELEPHONY_SECOND"})
    text += "CIPMask_" + std::string(service) + "=1\n";
  store.AddFile("/program/Vorlixspec.ini", text);
  const SpecSwitches switches = LoadSpecSwitches(ini, folders);
  EXPECT_TRUE(switches.Debug.LogAVM && !switches.Debug.TraceMode);
  EXPECT_TRUE(switches.LogMode.Export && !switches.LogMode.Mail);
  EXPECT_TRUE(switches.CAPI.LoadThisValues && !switches.CAPI.SkipVersionAndManufact);
  EXPECT_EQ(switches.CAPI.InfoMask, 0x201u);
  EXPECT_EQ(switches.CAPI.CIPMask, 0x10030012u);
}

}  // namespace
}  // namespace vorlix
