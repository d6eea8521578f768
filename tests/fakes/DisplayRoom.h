// The caller display with everything around it, on virtual time: views that remember what they show, a book of names,
// and a tape of what the other windows were asked.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/null_ports.h"
#include "fakes/ManualReactor.h"
#include "screens/CallFeed.h"
#include "screens/CallerDisplay.h"
#include "screens/null_views.h"

namespace vorlix {

class RecordingBar : public MainDisplayView {
 public:
  DisplayContent content;
  BarPlace place = BarPlace::kShown;
  std::string clock;
  int tops = 0;
  bool isInUse = false;

  void ShowLines(const DisplayContent& now) override { content = now; }
  void ShowClock(const std::string& date, const std::string& time) override { clock = date + " " + time; }
  void BringToTop() override { ++tops; }
  void SetPlace(BarPlace now) override { place = now; }
  bool IsInUse() override { return isInUse; }
  void ShowSkin(const Skin&) override {}
};

class RecordingTray : public TrayView {
 public:
  bool isThere = true;
  TrayIcon icon = TrayIcon::kIdle;
  std::string tip;
  std::vector<Balloon> balloons;  // all that were opened
  bool isOpen = false;

  bool IsThere() override { return isThere; }
  void ShowIcon(TrayIcon now, const std::string& text) override {
    icon = now;
    tip = text;
  }
  void ShowBalloon(const Balloon& balloon) override {
    balloons.push_back(balloon);
    isOpen = true;
  }
  void CloseBalloon() override { isOpen = false; }
};

class RecordingMaxi : public MaxiDisplayWindow {
 public:
  MaxiContent content;
  bool isOpen = false;

  void Show(const MaxiContent& now) override {
    content = now;
    isOpen = true;
  }
  void Hide() override { isOpen = false; }
};

// What the display asks of everybody else, in order.
class DisplaySurroundings : public LineStateSource,
                            public ForegroundWindow,
                            public NoPhoneBook,
                            public NoBlocking,
                            public DisplayLogos,
                            public AutomaticSearch,
                            public CallerWindows,
                            public DisplayWindows,
                            public BlackListAdding,
                            public NoCapiLine,
                            public MsgBoxDoor {
 public:
  std::vector<std::string> tape;
  std::vector<std::string> Taken() { return std::exchange(tape, {}); }

  LineStates states{.CAPI = {}, .AVM = {true, true}, .NCID = {}};
  ForegroundWindow::State foreground;           // see DisplayRoom::PutGameInFront()
  std::map<std::string, std::string> names;     // of the book, by number
  std::map<std::string, std::string> pictures;  // of the book
  std::string listed;                           // a number on the blacklist
  bool hasEditor = false;

  LineStates Read() const override { return states; }
  ForegroundWindow::State Read() override { return foreground; }
  int GetNumberData(oDataCall& call, bool, bool) override {
    const auto name = names.find(call.DataNumber());
    call.NameMode = name == names.end() ? 0 : 1;
    call.Name(name == names.end() ? std::string() : name->second);
    call.Address({});
    return call.NameMode;
  }
  void FuncBlocking_GetStatus(oDataCall& call) override {
    if (call.DataNumber() != listed) return;
    call.Blocked = true;
    call.BlockFunction = 6;
  }
  std::string FuncBlocking_GetDescription(int code) override {
    return code == 0 ? std::string() : "reason " + std::to_string(code);
  }
  std::string BookPicture(const oDataCall& call) override { return pictures[call.DataNumber()]; }
  std::string NumberPicture(const std::string& number) override { return "/flags/" + number.substr(0, 4) + ".png"; }
  void Start(const oDataCall& call, int line) override {
    Note("search " + call.DataNumber() + " " + std::to_string(line));
  }
  void ShowCard(const oDataCall& call) override { Note("card " + call.Name()); }
  void CloseCard() override { Note("no card"); }
  void CloseNewCalls() override { Note("no new calls"); }
  void SetVisible(bool visible) override { Note(visible ? "windows shown" : "windows hidden"); }
  void MoveAlong() override {}
  bool OpenEditor(const oDataCall& call) override {
    if (hasEditor) Note("edit " + call.DataNumber() + " " + call.Name());
    return hasEditor;
  }
  bool Open(DisplayWindow window) override {
    Note("open " + std::to_string(static_cast<int>(window)));
    return isWindowThere;
  }
  bool isWindowThere = true;
  void FuncBlackList_NumberToList(const std::string& number, const std::string& name) override {
    Note("list " + number + " " + name);
  }
  void CAPIResponse(bool, std::int32_t PLCI, bool, int) override { Note("refuse " + std::to_string(PLCI)); }
  MsgBoxAnswer Show(std::string_view text, int, std::string_view, bool) override {
    Note("box " + std::string(text));
    return MsgBoxAnswer::kOk;
  }

 private:
  void Note(const std::string& text) { tape.push_back(text); }
};

// Numbers show with their place.
class NumbersWithPlace : public PlainNumbers {
 public:
  NumberTexts GetOVW(const std::string& number) override {
    NumberTexts texts = PlainNumbers::GetOVW(number);
    texts.VW_FormatedFull = number + " Ort";
    texts.VW_FormatedLocation = "Ort";
    return texts;
  }
};

// Own numbers that show all their calls, but for one.
class OwnNumbersWithSwitches : public NoOwnNumbers {
 public:
  std::string silent;
  bool IsMSNFunctionActiv(const std::string& MSN, int) override { return MSN != silent || silent.empty(); }
};

// `Bar` is the view under test: one that remembers, or the terminal's.
template <class Bar>
class DisplayRoom {
 public:
  template <class... Arguments>
  explicit DisplayRoom(Arguments&&... arguments) : bar(std::forward<Arguments>(arguments)...) {
    settings.General.CallMode_CAPI = false;
  }
  // For a bar that asks for the time.
  explicit DisplayRoom(CallFeedView& feed) : bar(feed, loop.GetClock()) { settings.General.CallMode_CAPI = false; }

  // A call that the pipeline has taken up, shown.
  std::shared_ptr<oDataCall> Ring(int PLCI, const std::string& number, const std::string& name = {}) {
    auto call = Take(PLCI, number, name);
    Show();
    return call;
  }
  std::shared_ptr<oDataCall> Take(int PLCI, const std::string& number, const std::string& name = {}) {
    auto call = std::make_shared<oDataCall>(&numbers);
    call->Key = std::to_string(PLCI);
    call->PLCI = PLCI;
    call->DataNumber(number);
    call->Name(name);
    call->NameMode = name.empty() ? 0 : 1;
    call->MSN = "1234";
    call->MSNAlias = "Praxis";
    call->MSNColor = kMSNColorUnknown;
    call->CallDateTime = loop.GetClock().Now();
    call->NewCall = true;
    call->Active = true;
    state.ActiveCallList.Add(call);
    return call;
  }
  void Show(bool search = true) {
    screen.display.DisplayUpdate(search);
    screen.display.DisplayResize();
  }
  void PutGameInFront() {
    settings.General.NoViewGame = true;
    world.foreground = {.fillsScreen = true, .isDesktop = false, .modules = {"C:\\windows\\D3D9.dll"}};
  }
  // As the pipeline ends a call.
  void End(const oDataCall& call) {
    state.ActiveCallList.RemoveByKeyName(call.Key);
    if (state.ActiveCallList.Count() > 0) return Show();
    screen.display.ButtonEnableHangUp(0, HangUpMode::kEraser, true);
    screen.display.ButtonEnableBell(0, false);
    screen.display.DisplayResize();
    if (!settings.General.HideAllw) timers.tmHide->SetEnabled(false);
  }

  ManualReactor loop;
  MainTimers timers{loop};
  Settings settings;
  PipelineState state;
  NumbersWithPlace numbers;
  OwnNumbersWithSwitches ownNumbers;
  DisplaySurroundings world;
  modAll_MsgBox messages{world};
  NoSimulationWindow simulation;
  Bar bar;
  RecordingTray tray;
  RecordingMaxi maxi;
  CallerDisplay screen{{bar, tray, maxi, world},
                       {.loop = loop,
                        .timers = timers,
                        .settings = settings,
                        .state = state,
                        .ownNumbers = ownNumbers,
                        .lines = world,
                        .book = world,
                        .blocking = world,
                        .messages = messages,
                        .capi = world,
                        .simulation = simulation,
                        .blackList = world,
                        .logos = world,
                        .search = world,
                        .callerWindows = world,
                        .windows = world,
                        .stopSound = {},
                        .resetCAPI = {},
                        .alertText = {},
                        .waitingRun = {}}};
};

}  // namespace vorlix
