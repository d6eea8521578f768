// A helper program's side of the link to the main program: life signs, messages in their order, and the reasons to
// leave.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/HelperProtocol.h"
#include "platform/MessageLink.h"
#include "platform/MessageLoop.h"

namespace vorlix {

class MainProgramLink : public MessageLink::Receiver {
 public:
  static constexpr std::chrono::seconds kLifeSign{4};
  // So many life signs may stay without an answer: half a minute.
  static constexpr int kMostUnanswered = 7;
  // While the main program cannot be reached, so many messages wait; beyond, the oldest are given up.
  static constexpr std::size_t kMostWaiting = 1000;

  // `leave` is called once, when this program has no more reason to run: the main program is gone, it said so, or
  // another instance has taken over. Link and loop must outlive the object.
  MainProgramLink(MessageLink& link, MessageLoop& loop, WindowHandle main, std::uint32_t source,
                  std::function<void(const std::string& reason)> leave);

  // Ends a former instance for the same main program and gives the first life sign. False when no endpoint is to be
  // had.
  bool Start();
  // A line, or how the connection stands. Does nothing once it was time to leave.
  void Tell(HelperCommand command, const std::string& text = {});

  void OnMessage(MessageLink::Peer peer, std::uint32_t word, const std::string& text) override;
  void OnPeerGone(MessageLink::Peer peer) override;

 private:
  struct Message {
    HelperCommand command;
    std::string text;
  };

  void Tick();
  void Flush();
  bool SendToMain(HelperCommand command, const std::string& text);
  void Leave(const std::string& reason);

  MessageLink& link_;
  WindowHandle main_;
  std::uint32_t source_;
  std::function<void(const std::string&)> leave_;
  std::unique_ptr<Timer> sign_;
  std::deque<Message> waiting_;
  std::optional<HelperCommand> state_;  // what was told last about the connection
  MessageLink::Peer mainPeer_ = 0;
  int failed_ = 0;
  int unanswered_ = 0;
};

}  // namespace vorlix
