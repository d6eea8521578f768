// What a start makes of data files that have lost their content: it takes nothing from their backups.
#include <gmock/gmock.h>

#include "RunningVorlix.h"

namespace vorlix {
namespace {

using testing::HasSubstr;

TEST(LostFiles, SettingsComeBackAndAnEmptyBookAndNoJournalPushNoGenerationOut) {
  const TemporaryFolder folder;
  const auto at = [&](const std::string& name) { return folder / ("data/" + name); };
  WriteFile(at("Vorlix.ini"), std::string(300, '\0'));
  WriteFile(at("Vorlix.ini.bak"),
            "[Vorlix-Version]\r\nVersion=v3.00\r\n[General]\r\nCallMode_CAPI=0\r\nmyVWO=4711\r\n");
  WriteFile(at("Vorlixbook.txt"), "");
  const std::string books[] = {"Vorlixbook", "Vorlixjournal"};
  for (const std::string& name : books) {
    WriteFile(at(name + ".bak"), "good");
    WriteFile(at(name + ".b08"), "oldest");
  }
  RunningVorlix program(folder.Path());
  EXPECT_TRUE(program.Shows("wiederhergestellt!") && program.Shows("Datenordner"));
  EXPECT_EQ(program.End(), 0);
  EXPECT_THAT(FileText(at("Vorlix.ini")), HasSubstr("myVWO=4711"));
  for (const std::string& name : books)
    EXPECT_EQ(FileText(at(name + ".bak")) + FileText(at(name + ".b08")), "goodoldest");
}

}  // namespace
}  // namespace vorlix
