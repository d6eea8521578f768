#include "screens/DisplayClicks.h"

#include "core/RejectReason.h"
#include "services/clsErrorHandling.h"

namespace vorlix {
void DisplayClicks::DisplayDblClickAction(std::size_t line) {
  Trapped(
      "fMain.DisplayDblClickAction",
      [&] {
        const auto record = ports_.display.Record(line);
        if (record && TellBlock(line)) return;
        if (record && ports_.settings.General.DirectEdit && OpenEditor(*record)) return;
        OpenWindow(ports_.settings.General.CallerClick);
      },
      line);
}

// The rules are asked again: the number may stand on the blacklist by now.
bool DisplayClicks::TellBlock(std::size_t line) {
  const auto record = ports_.display.Record(line);
  ports_.blocking.FuncBlocking_GetStatus(*record);
  ports_.display.ReturnFromBook(line);
  if (!record->Blocked || record->BlockFunction != kRejectBlacklist) return false;
  ports_.messages.MsgBoxNew(ports_.blocking.FuncBlocking_GetDescription(kRejectBlacklist), kMsgInformation);
  return true;
}

bool DisplayClicks::OpenEditor(const oDataCall& record) {
  oDataCall entry(record);
  const bool isInBook = ports_.book.GetNumberData(entry, false, false) != kNoEntry;
  if (!ports_.windows.OpenEditor(isInBook ? entry : record)) return false;
  ports_.timers.tmHide->SetEnabled(false);
  return true;
}

void DisplayClicks::OpenWindow(int choice) {
  if (choice < static_cast<int>(DisplayWindow::kJournal) || choice > static_cast<int>(DisplayWindow::kAppointments)) {
    return;
  }
  const auto window = static_cast<DisplayWindow>(choice);
  const bool showsMissed = window == DisplayWindow::kJournal || window == DisplayWindow::kNewCalls;
  if (ports_.windows.Open(window) && showsMissed) ports_.tray.MissedSeen();
}

void DisplayClicks::TimeClick() {
  Trapped("fMain.TimeClick", [&] { OpenWindow(ports_.settings.General.TimeClick); });
}

void DisplayClicks::TrayClick() {
  Trapped("fMain.TrayClick", [&] {
    if (ports_.hiding.Place() != BarPlace::kShown) return ports_.hiding.Toggle();
    OpenWindow(ports_.settings.General.TrayClick);
  });
}

void DisplayClicks::HangUpClick(std::size_t line) {
  Trapped(
      "fMain.HangUpClick",
      [&] {
        const auto& lines = ports_.display.Content().lines;
        if (line >= lines.size() || !lines[line].hangUpEnabled) return;
        if (lines[line].hangUp == HangUpMode::kEraser) return ResetClick();
        if (lines[line].isActive) ports_.commands.RejectCall(lines[line].PLCI);
      },
      line);
}

void DisplayClicks::BellClick() {
  Trapped("fMain.BellClick", [&] {
    ports_.timers.tmSoundRepeat->SetEnabled(false);
    if (ports_.stopSound) ports_.stopSound();
    ports_.display.ButtonDisableBells();
  });
}

void DisplayClicks::BlacklistClick(std::size_t line) {
  Trapped(
      "fMain.BlacklistClick",
      [&] {
        const auto record = ports_.display.Record(line);
        if (!record || record->DataNumber().empty()) return;
        ports_.blackList.FuncBlackList_NumberToList(record->DataNumber(), record->Name());
      },
      line);
}

void DisplayClicks::ResetClick() {
  Trapped("fMain.mnuReset_Click", [&] {
    ports_.tray.MissedSeen();
    ports_.display.DisplayReset(false);
  });
}

}  // namespace vorlix
