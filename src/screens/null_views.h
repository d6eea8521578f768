// Null objects for what a program without a desktop has not got.
#pragma once

#include "screens/MainDisplayView.h"
#include "screens/display_ports.h"

namespace vorlix {

class NoTrayView : public TrayView {
 public:
  bool IsThere() override { return false; }
  void ShowIcon(TrayIcon, const std::string&) override {}
  void ShowBalloon(const Balloon&) override {}
  void CloseBalloon() override {}
};

class NoMaxiDisplayWindow : public MaxiDisplayWindow {
 public:
  void Show(const MaxiContent&) override {}
  void Hide() override {}
};

class NoForegroundWindow : public ForegroundWindow {
 public:
  State Read() override { return {}; }
};

class NoAutomaticSearch : public AutomaticSearch {
 public:
  void Start(const oDataCall&, int) override {}
};

class NoCallerWindows : public CallerWindows {
 public:
  void ShowCard(const oDataCall&) override {}
  void CloseCard() override {}
  void CloseNewCalls() override {}
  void SetVisible(bool) override {}
  void MoveAlong() override {}
};

class NoDisplayWindows : public DisplayWindows {
 public:
  bool OpenEditor(const oDataCall&) override { return false; }
  bool Open(DisplayWindow) override { return false; }
};

}  // namespace vorlix
