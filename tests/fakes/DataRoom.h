// The data room on a store in memory, with everything that its classes ask for: folders below "/vorlix", a clock that
// stands, a log that can be read and boxes that are noted.
#pragma once

#include <string>
#include <vector>

#include "data/clsFiles.h"
#include "fakes/FakeClock.h"
#include "fakes/MemoryFileStore.h"
#include "fakes/MemoryLogStore.h"
#include "services/clsErrorHandling.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

class NotedBoxes : public MsgBoxDoor {
 public:
  std::vector<std::string> shown;  // title, style and text
  MsgBoxAnswer answer = MsgBoxAnswer::kOk;
  MsgBoxAnswer Show(std::string_view text, int style, std::string_view title, bool) override {
    shown.push_back(std::string(title) + " " + std::to_string(style) + ": " + std::string(text));
    return answer;
  }
};

struct DataRoom {
  DataRoom() {
    store.AddFolder("/vorlix/data");
    ErrorHandling().Attach(log, clock, "PRG");
    ErrorHandling().SetShowMessage([this](std::string_view text, int style, std::string_view title) {
      messages.MsgBoxForward(text, style, title);
    });
  }
  ~DataRoom() {
    ErrorHandling().Switches = {};
    ErrorHandling().Detach();
  }
  DataRoom(const DataRoom&) = delete;
  DataRoom& operator=(const DataRoom&) = delete;

  std::string ErrorLog() const { return log.Text(R"(\log\error.log)"); }

  MemoryFileStore store;
  MemoryLogStore log;
  FakeClock clock;
  NotedBoxes boxes;
  modAll_MsgBox messages{boxes};
  WriteBlocks blocks;
  Folders folders{store, {.programFolder = "/program", .dataHome = {}, .home = {}, .chosenFolder = "/vorlix"}};
  modAPI_INI ini{store, folders, blocks};
  int backupCountStep = 50;
  clsFiles::Rotation rotation{0, [this] { return backupCountStep; }};
  clsFiles files{store, ini, clock, rotation};
};

}  // namespace vorlix
