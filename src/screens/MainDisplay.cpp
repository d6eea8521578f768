#include "screens/MainDisplay.h"

#include <algorithm>
#include <utility>

#include "screens/call_texts.h"
#include "screens/display_texts.h"
#include "services/clsErrorHandling.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace vorlix {
namespace {

// Colours of own numbers are kept with red in the lowest byte; those of the system have the highest bit.
bool IsSystemColor(std::uint32_t color) {
  return (color & 0x80000000u) != 0;
}

Rgb RgbOf(std::uint32_t color) {
  return ((color & 0xFFu) << 16) | (color & 0xFF00u) | ((color >> 16) & 0xFFu);
}

// Black or white, whichever is read better.
Rgb ReadableOn(Rgb background) {
  const auto part = [&](int shift) { return static_cast<int>((background >> shift) & 0xFFu); };
  return 299 * part(16) + 587 * part(8) + 114 * part(0) > 128000 ? 0x000000 : 0xFFFFFF;
}

}  // namespace

void MainDisplay::RunClock() {
  ports_.timers.tmClock->SetTick([this] { Trapped("fMain.tmClock_Timer", [this] { ClockTick(); }); });
}

void MainDisplay::DisplayElementsLoad() {
  Trapped("fMain.DisplayElementsLoad", [&] {
    ports_.view.ShowSkin(ports_.skin);
    for (Row& row : rows_)
      ShowColors(row);
    ShowLines();
  });
}

void MainDisplay::DisplayUpdate(bool search) {
  Trapped(
      "fMain.DisplayUpdate",
      [&] {
        if (!ports_.settings.General.SilentMode && !ports_.games.fAnzeigeVerboten()) ports_.view.BringToTop();
        if (ports_.calls.IsEmpty() && ports_.calls.HasHidden()) return KeepEndedCall();
        TakeCalls();
        Display_NoCall(true);
        if (rows_.front().record == nullptr) return;
        for (std::size_t line = 0; line < rows_.size(); ++line)
          FillLine(line, search);
        ShowLines();
        DisplayResize();
        ports_.windows.MoveAlong();
      },
      search);
}

// A call that nobody is to see leaves the display as it is; what stands there has come to its end.
void MainDisplay::KeepEndedCall() {
  Display_NoCall(true);
  for (Row& row : rows_) {
    row.shown.bellEnabled = row.shown.hangUpEnabled = false;
    row.shown.hangUp = HangUpMode::kNone;
  }
  if (DisplayLine& first = rows_.front().shown; first.isCall) {
    first.hangUp = HangUpMode::kEraser;
    first.hangUpEnabled = true;
  }
  DisplayResize();
}

// The rows anew, each with its own copy of its call. What was told of a call before is not told again; the mark of a
// refused one, the name that a search or a changed book has given it and the buttons go with it.
void MainDisplay::TakeCalls() {
  const std::vector<Row> former = std::exchange(rows_, {});
  for (const auto& call : ports_.calls.Read()) {
    Row row{.record = std::make_shared<oDataCall>(*call), .shown = {}, .announced = {}};
    const auto same = std::ranges::find_if(
        former, [&](const Row& old) { return old.record && ShownCalls::IsSame(*old.record, *call); });
    if (same != former.end()) Inherit(row, *same);
    rows_.push_back(std::move(row));
  }
  if (rows_.empty()) rows_.resize(1);
}

void MainDisplay::Inherit(Row& row, const Row& former) {
  row.announced = former.announced;
  row.shown = former.shown;
  if (row.record->NameMode == kNamed) return;
  row.isFound = former.isFound;
  if (!row.isFound && former.record->NameMode != kNamed) return;
  row.record->NameMode = former.record->NameMode;
  row.record->Name(former.record->Name());
  row.record->Address(former.record->Address());
}

void MainDisplay::FillLine(std::size_t line, bool search) {
  Row& row = rows_[line];
  oDataCall& record = *row.record;
  if (record.DataNumber().empty() && record.MSN.empty()) return ShowIdle(line, NoCallText());
  ShowCard(record);
  record.DataCallerView = row.isFound ? record.Name() : PartyView(record);
  if (record.NameMode != kNamed && search && !row.isFound) StartSearch(record, line);
  // Before the texts: the large window shows the picture too.
  ChooseLogo(row);
  ShowCall(row);
}

std::string MainDisplay::PartyView(const oDataCall& record) const {
  return record.NameMode == kNamed && ports_.settings.General.NameView ? record.Name() : NumberView(record);
}

void MainDisplay::ShowCard(const oDataCall& record) {
  if (record.NameMode == kNamed && ports_.settings.vCards.byCall && record.Card().BookVCbCallActive) {
    ports_.windows.ShowCard(record);
  } else {
    ports_.windows.CloseCard();
  }
}

// Neither for a number that the book or a former search knows, nor for an internal one.
void MainDisplay::StartSearch(const oDataCall& record, std::size_t line) {
  const auto& general = ports_.settings.General;
  const bool isExternal =
      IsDigits(record.DataNumber()) && record.DataNumber().size() > static_cast<std::size_t>(general.TKnum);
  if (general.AutoSearch && record.NameMode != kNoNameShown && isExternal)
    ports_.search.Start(record, static_cast<int>(line));
}

void MainDisplay::ChooseLogo(Row& row) {
  const auto& general = ports_.settings.General;
  const std::string& number = row.record->DataNumber();
  row.shown.logo.clear();
  if (number.size() <= static_cast<std::size_t>(general.TKnum)) return;
  row.shown.logo = ports_.logos.BookPicture(*row.record);
  if (row.shown.logo.empty() && !general.NoIVW) row.shown.logo = ports_.logos.NumberPicture(number);
}

// What a line says of its call, and then the same in the other ways of showing it.
void MainDisplay::ShowCall(Row& row) {
  const auto& general = ports_.settings.General;
  const oDataCall& record = *row.record;
  DisplayLine& shown = row.shown;
  shown.isCall = true;
  shown.isRefused = record.Blocked;
  // A line that cannot refuse calls never tells that one was taken and dropped: the verdict is what there is to show.
  if (record.Blocked && !general.RejectedCallsDontBatch) shown.isBlockMarked = true;
  shown.PLCI = record.PLCI;
  shown.rang = record.CallDateTime;
  shown.date = general.DisplayDateHide ? std::string() : record.CallDateView();
  shown.time = record.CallTimeView();
  shown.text = WithoutControls(record.DataCallerView + BracketText(record, general.NameViewNumber));
  shown.tip = WithoutControls(LineTip(record, general.NameViewNumber, general.NameViewAdress));
  shown.caller = WithoutControls(PartyOf(record));
  if (record.Blocked) shown.blockReason = ports_.blocking.FuncBlocking_GetDescription(record.BlockFunction);
  shown.ownNumber = WithoutControls(OwnNumberOf(record));
  ShowColors(row);
  Announce(row);
}

void MainDisplay::ShowColors(Row& row) {
  row.shown.background = ports_.skin.colorTextBack;
  row.shown.textColor = ports_.skin.colorText;
  if (!row.record || !ports_.settings.General.MSNColorInDispaly || IsSystemColor(row.record->MSNColor)) return;
  row.shown.background = RgbOf(row.record->MSNColor);
  row.shown.textColor = ReadableOn(row.shown.background);
}

// What opens does so once for each content, and for no call that is over: a balloon that the user has closed does not
// come back with every repaint.
void MainDisplay::Announce(Row& row) {
  const oDataCall& record = *row.record;
  std::string told = record.DataCallerView + "\n" + record.Name() + "\n" + record.Address();
  const bool isNews = std::exchange(row.announced, told) != told && ports_.calls.IsInProgress(record);
  ports_.tray.ShowCall(record, isNews);
  if (isNews) ports_.maxi.ShowCall(record, row.shown.logo);
}

void MainDisplay::Display_NoCall(bool showState) {
  Trapped("fMain.Display_NoCall", [&] {
    lineState_ = showState ? StateText(ports_.lines.Read()) : std::string();
    if (lineState_.empty()) lineState_ = NoCallText();
    if (!rows_.front().record) ShowIdle(0, lineState_);
  });
}

void MainDisplay::ChangeDisplayData(const std::string& idleText) {
  Trapped(
      "fMain.ChangeDisplayData",
      [&] {
        lineState_ = WithoutControls(idleText);
        const auto& record = rows_.front().record;
        // A caller is more than what a line has to tell of itself.
        if (record && ports_.calls.IsInProgress(*record)) return ShowLines();
        ShowIdle(0, lineState_);
      },
      idleText);
}

void MainDisplay::ChangeDisplayData(std::size_t line, bool idle, const std::string& text) {
  Trapped(
      "fMain.ChangeDisplayData",
      [&] {
        Row& row = rows_.at(line);
        if (idle || !row.record) return ShowIdle(line, text.empty() ? row.shown.text : text);
        if (!text.empty()) row.record->DataCallerView = text;
        ShowCall(row);
        ShowLines();
      },
      line, idle, text);
}

void MainDisplay::ReturnFromBook(std::size_t line) {
  if (line < rows_.size()) ChangeDisplayData(line, !rows_[line].record, {});
}

// An idle line has no party, no buttons, and the clock in its time field.
void MainDisplay::ShowIdle(std::size_t line, std::string text) {
  Row& row = rows_[line];
  row = Row{};
  row.shown.text = text;
  ShowColors(row);
  ports_.timers.tmClock->SetEnabled(true);
  ports_.tray.ShowIdle(text);
  ShowLines();
  ClockTick();
}

void MainDisplay::DisplayCallerUpdateByNumber(const std::string& number, const std::string& name,
                                              const std::string& address, bool useName) {
  Trapped(
      "fMain.DisplayCallerUpdateByNumber",
      [&] {
        if (ports_.waitingRun) ports_.waitingRun(number, name, address);
        const auto row = std::ranges::find_if(rows_, [&](const Row& one) {
          return one.record && useName && !number.empty() && one.record->DataNumber() == number;
        });
        if (row != rows_.end() && name != "-") {
          row->record->Name(name);
          row->record->Address(address);
          row->isFound = true;
          ChangeDisplayData(static_cast<std::size_t>(row - rows_.begin()), false, name);
        }
        DisplayResize();
      },
      number, name, address, useName);
}

void MainDisplay::DisplayCallerUpdateWithBook() {
  Trapped("fMain.DisplayCallerUpdateWithBook", [&] {
    for (std::size_t line = 0; line < rows_.size(); ++line) {
      const auto record = rows_[line].record;
      if (!record || record->DataNumber().empty()) continue;
      // A miss empties what it is asked for: the line keeps what it has.
      oDataCall found(*record);
      if (ports_.book.GetNumberData(found, false, false) != kNamed) continue;
      // The book may have let the loop run, and the lines may be others now.
      if (line >= rows_.size() || rows_[line].record != record) break;
      Row& row = rows_[line];
      row.record->NameMode = kNamed;
      row.isFound = false;
      row.record->Name(found.Name());
      row.record->Address(found.Address());
      row.record->DataCallerView = PartyView(*row.record);
      ShowCall(row);
    }
    ShowLines();
  });
}

void MainDisplay::DisplayReset(bool keepWindows) {
  Trapped(
      "fMain.DisplayReset",
      [&] {
        ports_.timers.tmClock->SetEnabled(true);
        if (ports_.calls.IsEmpty()) rows_.assign(1, Row{});
        if (!keepWindows) {
          ports_.windows.CloseCard();
          ports_.windows.CloseNewCalls();
        }
        DisplayUpdate(false);
        DisplayResize();
      },
      keepWindows);
}

void MainDisplay::HideDisplay() {
  Trapped("fMain.HideDisplay", [&] { ports_.windows.SetVisible(!ports_.settings.General.SilentMode); });
}

void MainDisplay::DisplayResize() {
  Trapped("fMain.DisplayResize", [&] {
    ShowLines();
    ports_.hiding.DisplayResize();
    ports_.tray.Refresh();
  });
}

void MainDisplay::DisplayWidth() {
  ShowLines();
}

void MainDisplay::ButtonEnableBell(int place, bool enabled) {
  if (DisplayLine* line = LineOfCall(place)) line->bellEnabled = enabled;
  ShowLines();
}

void MainDisplay::ButtonEnableHangUp(int place, HangUpMode mode, bool enabled) {
  if (DisplayLine* line = LineOfCall(place)) {
    line->hangUp = mode;
    line->hangUpEnabled = enabled;
  }
  ShowLines();
}

// Lines have other places where a call is hidden. With no call left it is the line that stays; an idle line has no
// buttons.
DisplayLine* MainDisplay::LineOfCall(int place) {
  const auto call = ports_.calls.Listed(place);
  const auto row =
      call ? std::ranges::find_if(rows_,
                                  [&](const Row& one) { return one.record && ShownCalls::IsSame(*one.record, *call); })
           : rows_.begin();
  return row != rows_.end() && row->record ? &row->shown : nullptr;
}

void MainDisplay::ButtonDisableBells() {
  for (Row& row : rows_)
    row.shown.bellEnabled = false;
  ShowLines();
}

void MainDisplay::MarkBlocked(std::int32_t PLCI, const std::string& reason) {
  Trapped(
      "fMain.MarkBlocked",
      [&] {
        // A line id is used again: a call that is over is another.
        const auto row = std::ranges::find_if(rows_, [&](const Row& one) {
          return one.record && one.record->PLCI == PLCI && ports_.calls.IsInProgress(*one.record);
        });
        if (row == rows_.end()) return;
        row->shown.isBlockMarked = true;
        row->shown.blockReason = reason;
        ShowLines();
      },
      PLCI, reason);
}

std::shared_ptr<oDataCall> MainDisplay::Record(std::size_t line) const {
  return line < rows_.size() ? rows_[line].record : nullptr;
}

bool MainDisplay::IsCallShown() const {
  return rows_.front().record && IsCallInDisplay(rows_.front().shown.text);
}

// Only what has changed goes to the view.
void MainDisplay::ShowLines() {
  const auto& general = ports_.settings.General;
  DisplayContent content{
      .lines = {}, .lineState = lineState_, .rejectsAll = general.BlockAll || general.BlockAllByTime};
  for (Row& row : rows_) {
    row.shown.isActive = row.record && ports_.calls.IsInProgress(*row.record);
    content.lines.push_back(row.shown);
  }
  if (content == content_) return;
  content_ = content;
  ports_.view.ShowLines(content_);
}

void MainDisplay::ClockTick() {
  if (rows_.front().record) return;
  const DateTime now = ports_.clock.Now();
  ports_.view.ShowClock(ports_.settings.General.DisplayDateHide ? std::string() : GetFormatedDateByDate(now),
                        GetFormatedTime(now));
}

}  // namespace vorlix
