#include "data/modDirectories.h"

#include <gtest/gtest.h>

#include "fakes/DataRoom.h"

namespace vorlix {
namespace {

class DirectoriesTest : public testing::Test, protected DataRoom {
 protected:
  DirectoriesTest() {
    for (const char* name : {"designs", "areacodes", "provider/images", "sounds", "states/images", "templates"})
      store.AddFolder(std::string("/program/base/") + name);
  }
  std::string Made() const {
    std::string made;
    for (const auto& request : store.requests)
      made += request.path + " ";
    return made;
  }
};

TEST_F(DirectoriesTest, MakesTheFoldersOfTheDataInTheirOrderAndOnce) {
  for (int start = 0; start < 2; ++start)
    CheckDirectories(store, folders, messages);
  EXPECT_EQ(Made(),
            "/vorlix/log /vorlix/archiv /vorlix/backup /vorlix/update /vorlix/data/callerpics /vorlix/data/search ");
  EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(DirectoriesTest, TellsWhatIsMissingOfTheProgramAndGoesOn) {
  MemoryFileStore bare;
  bare.AddFile("/program/base/designs", "a file is no folder");
  for (const char* name : {"areacodes", "provider", "states/images"})
    bare.AddFolder(std::string("/program/base/") + name);
  CheckDirectories(bare, folders, messages);
  EXPECT_EQ(boxes.shown,
            std::vector<std::string>{
                "Vorlix 16: Wichtige Verzeichnisse wurden nicht gefunden!\r\n\r\n/program/base/designs/\r\n"
                "/program/base/provider/images/\r\n/program/base/sounds/\r\n/program/base/templates/"});
  EXPECT_EQ(bare.Writes(), 0);
}

TEST_F(DirectoriesTest, TellsWhichFoldersCouldNotBeMade) {
  store.Fail(MemoryFileStore::Operation::kMakeFolder, EACCES, "/archiv");
  store.Fail(MemoryFileStore::Operation::kMakeFolder, EACCES, "/search");
  CheckDirectories(store, folders, messages);
  EXPECT_EQ(boxes.shown, std::vector<std::string>{"Vorlix 16: Verzeichnis konnte nicht angelegt werden!\r\n\r\n"
                                                  "/vorlix/archiv/\r\n/vorlix/data/search/"});
  EXPECT_TRUE(store.Exists("/vorlix/update"));
}

}  // namespace
}  // namespace vorlix
