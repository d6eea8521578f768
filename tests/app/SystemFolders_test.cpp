#include "app/SystemFolders.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "fakes/TemporaryFolder.h"

namespace vorlix {
namespace {

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
