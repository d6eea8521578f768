#include "data/modDirectories.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/DataRoom.h"

namespace vorlix {
namespace {

using testing::ElementsAre;

TEST(Directories, OfTheDataAreMadeInTheirOrderAndOnceAndAFailureIsTold) {
  DataRoom room;
  for (const char* name : {"designs", "areacodes", "provider/images", "sounds", "states/images", "templates"})
    room.store.AddFolder(std::string("/program/base/") + name);
  room.store.Fail(MemoryFileStore::Operation::kMakeFolder, EACCES, "/archiv", 1);
  std::vector<std::string> made;
  for (int start = 0; start < 2; ++start)
    CheckDirectories(room.store, room.folders, room.messages);
  for (const auto& request : room.store.requests)
    made.push_back(request.path);
  EXPECT_THAT(made, ElementsAre("/vorlix/log", "/vorlix/archiv", "/vorlix/backup", "/vorlix/update",
                                "/vorlix/data/callerpics", "/vorlix/data/search", "/vorlix/archiv"));
  EXPECT_THAT(room.boxes.shown, ElementsAre("Vorlix 16: Verzeichnis konnte nicht angelegt werden!\r\n\r\n"
                                            "/vorlix/archiv/"));
}

TEST(Directories, OfTheProgramThatAreMissingAreTold) {
  DataRoom room;
  room.store.AddFile("/program/base/designs", "a file is no folder");
  for (const char* name : {"areacodes", "provider", "states/images"})
    room.store.AddFolder(std::string("/program/base/") + name);
  CheckDirectories(room.store, room.folders, room.messages);
  EXPECT_THAT(room.boxes.shown,
              ElementsAre("Vorlix 16: Wichtige Verzeichnisse wurden nicht gefunden!\r\n\r\n/program/base/designs/\r\n"
                          "/program/base/provider/images/\r\n/program/base/sounds/\r\n/program/base/templates/"));
}

}  // namespace
}  // namespace vorlix
