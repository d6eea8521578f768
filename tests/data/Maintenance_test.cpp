#include "data/Maintenance.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/DataRoom.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using Op = MemoryFileStore::Operation;

class MaintenanceTest : public testing::Test, protected DataRoom {
 protected:
  static std::string Data(const std::string& name) { return "/vorlix/data/" + name; }
  // The file after a restore of an entry, when it held "newer" before.
  std::string Restored(const BackupEntry& entry, const std::string& path) {
    store.AddFile(path, "newer");
    EXPECT_TRUE(maintenance.Maintenance_Restore(entry));
    return store.Content(path);
  }
  std::string Blocks() const {
    return std::string(blocks.JournalWriteBlocked ? "J" : "") + (blocks.BookWriteBlocked ? "B" : "") +
           (blocks.SettingsWriteBlocked ? "S" : "");
  }

  const std::string folder = "/vorlix/backup/20240313_120000/";
  Maintenance maintenance{{files, folders, clock, messages, blocks}};
};

TEST_F(MaintenanceTest, ABackupTakesTheTickedFilesAndComesBackToTheirPlaces) {
  const std::pair<BackupItem, std::string> cases[] = {{BackupItem::kBook, "Vorlixbook.txt"},
                                                      {BackupItem::kJournal, "Vorlixjournal.txt"},
                                                      {BackupItem::kSettings, "Vorlix.ini"},
                                                      {BackupItem::kTAPISettings, "sett_TAPI.ini"},
                                                      {BackupItem::kHolidays, "holidays/holiday_DE.ini"},
                                                      {BackupItem::kSkin, "designs/skin_02.ini"}};
  std::set<BackupItem> ticked{BackupItem::kMailPassword};
  std::string report;
  for (const auto& [item, file] : cases) {
    store.AddFile(Data(file), file);
    ticked.insert(item);
    report += fSplitPath(file).name + fSplitPath(file).extension + " - OK\r\n";
  }
  store.AddFile(Data("sett_export.ini"), "not ticked");
  const std::string given = maintenance.Maintenance_Backup(ticked, "before the move", "DE", "02");
  EXPECT_EQ(given, report + "mail.pwd - open /vorlix/data/mail.pwd: No such file or directory\r\n");
  EXPECT_THAT(boxes.shown, ElementsAre("Vorlix-Backup 64: " + given));
  EXPECT_FALSE(store.Exists(folder + "sett_export.ini"));

  const auto entries = maintenance.Maintenance_LoadBackupDirs();
  ASSERT_EQ(entries.size(), 1u);
  EXPECT_EQ(entries[0].key + " " + entries[0].name + " " + entries[0].comment, "M1 20240313_120000 before the move");
  for (const auto& [item, file] : cases)
    EXPECT_EQ(Restored(entries[0], Data(file)), file);
  EXPECT_FALSE(store.Exists(Data("_comment.txt")));
  EXPECT_EQ(Blocks(), "JBS");
}

TEST_F(MaintenanceTest, AGenerationGetsTheNameOfItsFileAgain) {
  store.AddFile("/vorlix/backup/stray.txt", "");
  for (const auto& [name, text] :
       {std::pair{"Vorlixbook.bak", "book"}, {"Vorlixbook.b08", "old book"}, {"Vorlixjournal.b01", "journal"}})
    store.AddFile(Data(name), text);
  const auto entries = maintenance.Maintenance_LoadBackupDirs();
  ASSERT_EQ(entries.size(), 3u);
  EXPECT_EQ(entries[0].key + entries[1].key + entries[2].key, "B0B8J1");
  EXPECT_EQ(Restored(entries[2], Data("Vorlixjournal.txt")), "journal");
  EXPECT_EQ(Blocks(), "J");
  EXPECT_EQ(Restored(entries[1], Data("Vorlixbook.txt")), "old book");
  EXPECT_EQ(store.Content(Data("Vorlixbook.bak")), "book");
}

TEST_F(MaintenanceTest, AFailedCopyBlocksNothingAndAMissingFolderIsTold) {
  store.AddFile(Data("Vorlixbook.bak"), "book");
  store.Fail(Op::kCopy, EIO);
  EXPECT_FALSE(maintenance.Maintenance_Restore({"B0", "Vorlixbook.bak", {}}));
  EXPECT_EQ(Blocks(), "");
  store.Forbid("/vorlix");
  const std::string report = "Verzeichnis konnte nicht angelegt werden!\r\n" + folder;
  EXPECT_EQ(maintenance.Maintenance_Backup({BackupItem::kBook}, "", "DE", "02"), report);
  EXPECT_THAT(boxes.shown, ElementsAre("Vorlix-Backup 16: " + report));
}

}  // namespace
}  // namespace vorlix
