// Starts that do not come about: folders that cannot be used, an endpoint that cannot be made, a user who leaves off.
#include <pty.h>

#include <gmock/gmock.h>

#include "RunningVorlix.h"
#include "app/SystemFolders.h"

namespace vorlix {
namespace {

using testing::HasSubstr;

TEST(SystemFolders, WhatTheProgramsTextCannotNameIsFoundWhereverItCounts) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "real");
  std::filesystem::create_directory_symlink(folder / "real", folder / "link");
  const TemporaryVariable none("VORLIX_DATA", "");
  struct Row {
    std::string wish, dataHome, home;
    std::string unnamable, used;
  };
  const std::string strange = "/h/\xC5\x81ukasz";  // the L with a stroke is not in Windows-1252
  for (const Row& row : {Row{"", "", "/h/\xC3\xA4", "", "/h/\xE4"}, Row{"", "", strange, strange, "/h/?ukasz"},
                         Row{"", "/d", strange, "", "/d"}, Row{"", strange, "/h", strange, "/h/?ukasz"},
                         Row{folder / "link/../link/", strange, strange, "", folder / "real"}}) {
    const TemporaryVariable dataHome("XDG_DATA_HOME", row.dataHome);
    const TemporaryVariable home("HOME", row.home);
    const auto found = FindSystemFolders(row.wish);
    EXPECT_EQ(found.unnamable, row.unnamable);
    EXPECT_EQ(found.surroundings.override + found.surroundings.dataHome + found.surroundings.home, row.used);
  }
  for (const char* name : {"link", "real/", "link/../real", "./real//"})
    EXPECT_EQ(CanonicalFolder(folder / name), CanonicalFolder(folder / "real")) << name;
}

TEST(StartRefused, WithoutAnEndpointTheProgramSaysWhyAndFails) {
  const TemporaryFolder folder;
  const TemporaryVariable tooLong("XDG_RUNTIME_DIR", folder.Path() + std::string(100, '/'));
  RunningVorlix program(folder.Path());
  EXPECT_EQ(program.ExitCode(), 1);
  EXPECT_THAT(program.Output(), HasSubstr("kann nicht angelegt werden"));
  EXPECT_THAT(FileText(folder / "log/error.log"), HasSubstr("File name too long"));
}

TEST(StartRefused, ASignalEndsTheQuestionsOfAFirstStartAndNothingIsWritten) {
  const TemporaryFolder folder;
  int terminal = -1;
  const pid_t program = forkpty(&terminal, nullptr, nullptr, nullptr);
  if (program == 0) {
    execl(VORLIX_BIN "/vorlix", "vorlix", "--data", folder.Path().c_str(), nullptr);
    _exit(127);
  }
  std::string shown;
  char byte = 0;
  while (!shown.ends_with("[1]") && read(terminal, &byte, 1) == 1)
    shown += byte;
  ASSERT_EQ(write(terminal, "\x03", 1), 1);  // Ctrl-C
  while (read(terminal, &byte, 1) == 1)
    shown += byte;
  int status = -1;
  waitpid(program, &status, 0);
  close(terminal);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << shown;
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

}  // namespace
}  // namespace vorlix
