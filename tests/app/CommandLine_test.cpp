// What the program is told from outside: its words and options, and where its folders are.
#include "app/CommandLine.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "app/SystemFolders.h"
#include "core/CommandLineWords.h"
#include "fakes/TemporaryFolder.h"

namespace vorlix {
namespace {

TEST(CommandLine, OptionsAndTheirValuesAreNoWordsAndUnknownOrIncompleteOnesAreRefused) {
  const CommandLine line = ParseCommandLine({"--console", "--data", "/autohaus/\xC3\xA4", "restart"});
  EXPECT_EQ(line.dataFolder + line.error, "/autohaus/\xC3\xA4");
  EXPECT_TRUE(HasWord(line.words, "restart") && !HasWord(line.words, "auto"));
  EXPECT_EQ(ParseCommandLine({"--data=/x"}).dataFolder, "/x");
  EXPECT_TRUE(ParseCommandLine({"-h"}).help);
  for (const char* wrong : {"--dta", "--data"})
    EXPECT_NE(ParseCommandLine({wrong}).error, "") << wrong;
}

TEST(SystemFoldersTest, WhatTheProgramsTextCannotNameIsFoundWhereverItCounts) {
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
    EXPECT_EQ(found.surroundings.chosenFolder + found.surroundings.dataHome + found.surroundings.home, row.used);
  }
  for (const char* name : {"link", "real/", "link/../real", "./real//"})
    EXPECT_EQ(CanonicalFolder(folder / name), CanonicalFolder(folder / "real")) << name;
}

}  // namespace
}  // namespace vorlix
