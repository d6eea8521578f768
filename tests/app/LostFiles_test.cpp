// What a start makes of data files that have lost their content: it takes nothing from their backups.
#include <gmock/gmock.h>

#include "RunningVorlix.h"

namespace vorlix {
namespace {

using testing::HasSubstr;

class LostFiles : public testing::Test {
 protected:
  std::string At(const std::string& name) const { return folder_ / ("data/" + name); }
  // What the program shows of a start and an end in order.
  std::string Start() {
    RunningVorlix program(folder_.Path());
    EXPECT_TRUE(program.Shows("Datenordner"));
    EXPECT_EQ(program.End(), 0);
    return program.Output();
  }

  TemporaryFolder folder_;
  const std::string settings_ = "[Vorlix-Version]\r\nVersion=v3.00\r\n[General]\r\nCallMode_CAPI=0\r\nmyVWO=4711\r\n";
};

TEST_F(LostFiles, StartsWithAnEmptyBookAndNoJournalPushNoGenerationOut) {
  WriteFile(At("Vorlix.ini"), settings_);
  WriteFile(At("Vorlixbook.txt"), "");
  for (const char* name : {"Vorlixbook", "Vorlixjournal"}) {
    WriteFile(At(name + std::string(".bak")), "good");
    WriteFile(At(name + std::string(".b08")), "oldest");
  }
  Start();
  for (const char* name : {"Vorlixbook", "Vorlixjournal"})
    EXPECT_EQ(FileText(At(name + std::string(".bak"))) + FileText(At(name + std::string(".b08"))), "goodoldest");
}

TEST_F(LostFiles, AJournalThatIsTurnedRoundIsBackedUpAsTheSettingsSay) {
  const std::string lines[] = {Outgoing("01.03.2024 10:00:00", "0301", "77"),
                               Outgoing("01.02.2024 10:00:00", "0302", "77"),
                               Outgoing("01.01.2024 10:00:00", "0303", "77")};
  for (const char* count : {"0", "1"}) {
    WriteFile(At("Vorlix.ini"), settings_ + "BackupCount=" + count + "\r\nBackupAtStartUp=0\r\n");
    WriteFile(At("Vorlixjournal.txt"), lines[0] + lines[1] + lines[2]);
    Start();
    EXPECT_EQ(FileText(At("Vorlixjournal.txt")), lines[2] + lines[1] + lines[0]);
    EXPECT_EQ(FileText(At("Vorlixjournal.bak")), *count == '1' ? lines[0] + lines[1] + lines[2] : "");
  }
}

TEST_F(LostFiles, SettingsComeBackFromTheirBackupOrWaitInIt) {
  const std::string zeros(300, '\0');
  for (const std::string& damaged : {std::string(), zeros}) {
    WriteFile(At("Vorlix.ini"), damaged);
    WriteFile(At("Vorlix.ini.bak"), settings_);
    EXPECT_THAT(Start(), HasSubstr(damaged.empty() ? "Entfernen Sie beim Umbenennen" : "wiederhergestellt!"));
    EXPECT_EQ(FileText(At("Vorlix.ini")).find("myVWO=4711") == std::string::npos, damaged.empty());
    Start();
    EXPECT_THAT(FileText(At(damaged.empty() ? "Vorlix.ini.frueher" : "Vorlix.ini.bak")), HasSubstr("myVWO=4711"));
  }
  EXPECT_EQ(FileText(At("Vorlix.ini.defekt")), zeros);
}

}  // namespace
}  // namespace vorlix
