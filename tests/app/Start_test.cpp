// Starts out of the ordinary: an endpoint that cannot be made, a user who leaves off, data files that have lost their
// content.
#include <pty.h>

#include <gmock/gmock.h>

#include "RunningVorlix.h"

namespace vorlix {
namespace {

using testing::HasSubstr;

TEST(Start, WithoutAnEndpointTheProgramSaysWhyAndFails) {
  const TemporaryFolder folder;
  const TemporaryVariable tooLong("XDG_RUNTIME_DIR", folder.Path() + std::string(100, '/'));
  RunningVorlix program(folder.Path());
  EXPECT_EQ(program.ExitCode(), 1);
  EXPECT_THAT(program.Output(), HasSubstr("kann nicht angelegt werden"));
  EXPECT_THAT(FileText(folder / "log/error.log"), HasSubstr("File name too long"));
}

TEST(Start, ASignalEndsTheQuestionsOfAFirstStartAndNothingIsWritten) {
  for (const bool isOnDesktop : {false, true}) {
    const TemporaryFolder folder;
    const TemporaryVariable platform("QT_QPA_PLATFORM", "offscreen");
    int terminal = -1;
    const pid_t program = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (program == 0) {
      execl(VORLIX_BIN "/vorlix", "vorlix", "--data", folder.Path().c_str(), isOnDesktop ? nullptr : "--console",
            nullptr);
      _exit(127);
    }
    std::string shown;
    char byte = 0;
    while (!isOnDesktop && !shown.ends_with("[1]") && read(terminal, &byte, 1) == 1)
      shown += byte;
    if (isOnDesktop) usleep(1'500'000);        // nobody sees the page come
    ASSERT_EQ(write(terminal, "\x03", 1), 1);  // Ctrl-C
    while (read(terminal, &byte, 1) == 1)
      shown += byte;
    int status = -1;
    waitpid(program, &status, 0);
    close(terminal);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << shown;
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
  }
}

// What lost its content takes nothing from its backups.
TEST(Start, SettingsComeBackAndAnEmptyBookAndNoJournalPushNoGenerationOut) {
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
