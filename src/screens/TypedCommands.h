// What a person can ask the running program for by typing a line: a number with its analysis and book entry, the last
// lines of the journal, entries of the telephone book, a simulated call. Decides what a line means and what is shown.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/pipeline_ports.h"
#include "screens/CallFeed.h"
#include "screens/fSimulation.h"

namespace vorlix {

class TypedCommands {
 public:
  using Calls = std::vector<std::shared_ptr<oDataCall>>;

  struct Ports {
    CallFeedView& view;
    NumberAnalysis& numbers;
    OwnNumbers& ownNumbers;
    PhoneBook& book;
    Blocking& blocking;
    fSimulation& simulation;
    std::function<bool()> isBusy;                         // a real call is in progress
    std::function<Calls(std::size_t count)> readJournal;  // the newest, newest first, with names
    std::function<const clsCollection&()> bookCollection;
  };

  // A typed simulation that nobody ends would hide real calls unseen: it ends by itself. One with a window does not.
  static constexpr int kSecondsOfASimulation = 60;

  // All ports must outlive the object.
  explicit TypedCommands(Ports ports) : ports_(std::move(ports)) {}

  // One line without its end. An empty line does nothing; what is no command and no number gets the list of commands.
  void Run(std::string_view line);
  // Once a second.
  void TimerTick();

 private:
  void ShowHelp();
  void ShowNumber(const std::string& typed);
  void ShowJournal(std::string_view argument);
  void ShowBook(std::string_view search);
  void Ring(std::string_view argument);
  void HangUp();
  void ShowPair(const std::string& label, const std::string& text);
  std::string JournalLine(const oDataCall& call);

  Ports ports_;
  int simulationSeconds_ = 0;
  bool isTypedSimulation_ = false;
};

}  // namespace vorlix
