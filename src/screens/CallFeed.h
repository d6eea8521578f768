// The course of the calls as a list of lines, the caller display of a terminal: one line for each ring, answer, end and
// refusal, and one whenever the state of the line interfaces changes. Tells what is new in the display; how it looks is
// the terminal's.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "core/call_watch.h"
#include "screens/MainDisplayView.h"
#include "services/DateTime.h"

namespace vorlix {

class CallFeedView {
 public:
  virtual ~CallFeedView() = default;
  // One finished line, without line end and without control characters.
  virtual void ShowLine(const std::string& line) = 0;
};

class CallFeed : public MainDisplayView, public CallWatch {
 public:
  // Both must outlive the object.
  CallFeed(CallFeedView& view, const CivilClock& clock) : view_(view), clock_(clock) {}

  // Gives a dialled call, which never stands in the display, its name and its own number's alias; may be empty.
  std::function<void(oDataCall& call)> identify;

  void ShowLines(const DisplayContent& content) override;
  void ShowClock(const std::string&, const std::string&) override {}
  void BringToTop() override {}
  void SetPlace(BarPlace) override {}
  bool IsInUse() override { return false; }
  void ShowSkin(const Skin&) override {}

  void OnDialled(const oDataCall& call) override;
  void OnAnswered(const oDataCall& call) override;
  void OnEnded(const oDataCall& call) override;
  void OnOver(std::int32_t PLCI) override;

 private:
  void ShowState(const std::string& text);
  void ShowRing(const DisplayLine& line);
  void Show(const std::string& what, const std::string& text);

  CallFeedView& view_;
  const CivilClock& clock_;
  std::string shownState_;
  struct Shown {
    DateTime rang;
    std::string party;
    bool isRefused = false;
  };

  // Calls whose ring was shown and whose end was not: what is hidden stays hidden to its end.
  std::map<std::int32_t, Shown> shown_;
};

}  // namespace vorlix
