#include "data/modDirectories.h"

#include <gtest/gtest.h>

#include "fakes/DataRoom.h"

namespace vorlix {
namespace {

class DirectoriesTest : public testing::Test, protected DataRoom {
 protected:
  DirectoriesTest() {
    for (const char* name : {"designs", "areacodes", "provider/images", "sounds", "states/images", "templates"}) {
      store.AddFolder(std::string("/program/base/") + name);
    }
  }
  std::vector<std::string> Made() const {
    std::vector<std::string> made;
    for (const auto& request : store.requests)
      made.push_back(request.path);
    return made;
  }
};

TEST_F(DirectoriesTest, MakesTheFoldersOfTheDataInTheirOrder) {
  CheckDirectories(store, folders, messages);
  EXPECT_EQ(Made(), (std::vector<std::string>{"/vorlix/log", "/vorlix/archiv", "/vorlix/backup", "/vorlix/update",
                                              "/vorlix/data/callerpics", "/vorlix/data/search"}));
  CheckDirectories(store, folders, messages);
  EXPECT_EQ(Made().size(), 6u);
  EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(DirectoriesTest, TellsWhatIsMissingOfTheProgramAndGoesOn) {
  MemoryFileStore bare;
  bare.AddFolder("/program/base/areacodes");
  bare.AddFile("/program/base/designs", "a file is no folder");
  bare.AddFolder("/program/base/provider");
  bare.AddFolder("/program/base/states/images");
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
