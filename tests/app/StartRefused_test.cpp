// Starts that do not come about: an endpoint that cannot be made, a user who leaves off.
#include <pty.h>

#include <gmock/gmock.h>

#include "RunningVorlix.h"

namespace vorlix {
namespace {

using testing::HasSubstr;

TEST(StartRefused, WithoutAnEndpointTheProgramSaysWhyAndFails) {
  const TemporaryFolder folder;
  const TemporaryVariable tooLong("XDG_RUNTIME_DIR", folder.Path() + std::string(100, '/'));
  RunningVorlix program(folder.Path());
  EXPECT_EQ(program.ExitCode(), 1);
  EXPECT_THAT(program.Output(), HasSubstr("kann nicht angelegt werden"));
  EXPECT_THAT(FileText(folder / "log/error.log"), HasSubstr("File name too long"));
}

TEST(StartRefused, ASignalEndsTheQuestionsOfAFirstStartAndNothingIsWritten) {
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

}  // namespace
}  // namespace vorlix
