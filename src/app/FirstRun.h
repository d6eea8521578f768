// What a first start asks and keeps. Where nobody answers, or the questions are left off, the defaults are stored and a
// hint tells where they can be changed: the program is not to ask again.
#pragma once

#include "core/CallPipeline.h"
#include "data/Folders.h"
#include "data/modAPI_INI.h"
#include "data/modSettings.h"
#include "screens/FirstStart.h"
#include "screens/Screen.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

class FirstRun {
 public:
  struct Ports {
    Screen& screen;
    Settings& settings;
    modSettings& store;
    modAPI_INI& ini;
    const Folders& folders;
    modAll_MsgBox& messages;
    const PipelineState& state;
  };

  // All ports must outlive the object.
  explicit FirstRun(Ports ports) : ports_(ports) {}

  // Asks and stores. Nothing is stored when the program is closed meanwhile: the next start asks.
  void Ask();

 private:
  FirstStartForm Proposal();
  void Take(const FirstStartAnswers& answers);
  void Store();
  void TellWhere();

  Ports ports_;
};

}  // namespace vorlix
