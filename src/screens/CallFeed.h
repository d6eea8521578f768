// The course of the calls as a list of lines, the display of a terminal: one line for each ring, answer, end and
// refusal, and one whenever the state of the line interfaces changes. Decides what is shown; how it looks is the
// view's.
#pragma once

#include <map>
#include <string>

#include "core/CallPipeline.h"
#include "core/call_watch.h"
#include "screens/LineStates.h"
#include "services/DateTime.h"

namespace vorlix {

class CallFeedView {
 public:
  virtual ~CallFeedView() = default;
  // One finished line, without line end and without control characters.
  virtual void ShowLine(const std::string& line) = 0;
};

class CallFeed : public CallDisplay, public CallWatch {
 public:
  struct Ports {
    CallFeedView& view;
    const CivilClock& clock;
    const PipelineState& state;
    const LineStateSource& lines;
    Blocking& blocking;
  };

  // All ports must outlive the object.
  explicit CallFeed(Ports ports) : ports_(ports) {}

  // The state of the sources in use, joined with "/": "CAPI2.0 Init OK/AVM Fehler"; "kein Anruf" when none is.
  std::string Display_NoCall() const;

  void DisplayUpdate(bool search) override;
  void DisplayResize() override {}
  void ChangeDisplayData(const std::string& idleText) override;
  void DisplayWidth() override {}
  void ButtonEnableBell(int, bool) override {}
  void ButtonEnableHangUp(int, int, bool) override {}
  void MarkBlocked(std::int32_t PLCI, const std::string& reason) override;

  void OnDialled(const oDataCall& call) override;
  void OnAnswered(const oDataCall& call) override;
  void OnEnded(const oDataCall& call) override;
  void OnOver(std::int32_t PLCI) override;

 private:
  void ShowState(const std::string& text);
  void ShowRing(const oDataCall& call);
  void Show(const std::string& what, const std::string& text);

  Ports ports_;
  std::string shownState_;
  struct Shown {
    DateTime rang;
    std::string party;
  };

  // Calls whose ring was shown and whose end was not: what is hidden stays hidden to its end.
  std::map<std::int32_t, Shown> shown_;
};

}  // namespace vorlix
