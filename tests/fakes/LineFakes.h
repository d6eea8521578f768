// What a line source talks to, as one list of texts in the order in which it was told.
#pragma once

#include <string>
#include <vector>

#include "core/call_events.h"
#include "core/call_watch.h"
#include "core/null_ports.h"
#include "lines/line_options.h"

namespace vorlix::fakes {

using Tape = std::vector<std::string>;

// Answers a new call with a fixed time and a normal form of its own.
class TapedEvents : public CallEvents {
 public:
  explicit TapedEvents(Tape& tape) : tape_(tape) {}
  DateTime now = DateTime::FromCivil(2020, 6, 17, 10, 28, 30);
  std::string normalised;  // empty: as it came

  DateTime CAPI_FunctionsForwarder(int source, int event, std::int32_t PLCI, std::int16_t CIP, std::string& number,
                                   const std::string& MSN, bool simulated) override {
    std::string entry = "event " + std::to_string(event) + " of " + std::to_string(source);
    if (event == kEventNewCall) {
      entry += ": " + number + " to " + MSN + ", id " + std::to_string(PLCI) + ", CIP " + std::to_string(CIP);
    } else if (event == kEventCallEnd) {
      entry += ": id " + std::to_string(PLCI);
    }
    tape_.push_back(entry + (simulated ? ", simulated" : ""));
    if (event != kEventNewCall) return {};
    if (!normalised.empty()) number = normalised;
    return now;
  }

 private:
  Tape& tape_;
};

class TapedRecords : public CallRecords {
 public:
  explicit TapedRecords(Tape& tape) : tape_(tape) {}
  std::string GetCallDataAsMailString(const oDataCall& call) override { return call.DataNumber(); }
  std::string GetCallDataAsFileString(const oDataCall& call) override {
    return call.CallDateView() + " " + call.CallTimeView() + " " + call.DataNumber() + " " + call.MSN + " " +
           std::to_string(static_cast<int>(call.AVMDirection));
  }
  void WriteCallDataToJournalFile(const std::string& line) override { tape_.push_back("journal " + line); }
  void WriteCallActiveData(const clsCollection&) override { tape_.push_back("active file"); }
  void SetCallPeriodInJournalFile(const oDataCall& call) override {
    tape_.push_back("period " + call.CallTimeView() + " " + call.DataNumber() + " " +
                    std::to_string(call.AVMCallperiod));
  }

 private:
  Tape& tape_;
};

class TapedWatch : public CallWatch {
 public:
  explicit TapedWatch(Tape& tape) : tape_(tape) {}
  void OnDialled(const oDataCall& call) override { tape_.push_back("dialled " + call.DataNumber()); }
  void OnAnswered(const oDataCall& call) override { tape_.push_back("answered " + call.DataNumber()); }
  void OnEnded(const oDataCall& call) override { tape_.push_back("ended " + call.DataNumber()); }
  void OnOver(std::int32_t PLCI) override { tape_.push_back("over " + std::to_string(PLCI)); }

 private:
  Tape& tape_;
};

class FixedLineSwitches : public LineSwitches {
 public:
  LineOptions options;
  LineOptions Read() const override { return options; }
};

class AskingPrefix : public NoPrefixInput {
 public:
  bool asking = false;
  bool IsAsking() override { return asking; }
};

class OpenSimulation : public NoSimulationWindow {
 public:
  bool open = false;
  bool IsOpen() override { return open; }
};

// Own numbers whose journal switch can be taken off.
class FewOwnNumbers : public NoOwnNumbers {
 public:
  clsCollection table;
  std::string notJournalled;
  bool IsOwnNumber(const std::string& MSN) override { return table.ItemByKey(MSN) != nullptr; }
  const clsCollection& Table() override { return table; }
  bool IsMSNFunctionActiv(const std::string& MSN, int function) override {
    return !(function == kMSNLogJournal && MSN == notJournalled);
  }
};

}  // namespace vorlix::fakes
