// A MessageLink with memory: keeps what was sent, and lets a test play the other side.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/MessageLink.h"

namespace vorlix {

class FakeMessageLink : public MessageLink {
 public:
  struct Message {
    WindowHandle target = 0;
    std::uint32_t word = 0;
    std::string text;
    friend bool operator==(const Message&, const Message&) = default;
  };

  // What the world answers.
  bool canOpen = true;  // otherwise another has it
  bool ownsEndpoint = true;
  bool sendSucceeds = true;
  std::function<bool(const Message&)> onSend;  // when set, gives the result of Send(); may call Deliver()

  // What was asked.
  std::vector<Message> sent;  // failed ones too
  bool tookOver = false;
  int opened = 0;

  bool IsOpen() const { return receiver_ != nullptr; }
  void Deliver(std::uint32_t word, const std::string& text = {}, Peer peer = 1) {
    if (receiver_ != nullptr) receiver_->OnMessage(peer, word, text);
  }
  void LosePeer(Peer peer = 1) {
    if (receiver_ != nullptr) receiver_->OnPeerGone(peer);
  }
  // The messages sent since the last call.
  std::vector<Message> TakeSent() { return std::exchange(sent, {}); }

  LinkOpening Open(WindowHandle own, Receiver& receiver, bool takeOver = false) override {
    ++opened;
    tookOver = takeOver;
    if (!canOpen) return {LinkOpening::State::kInUse, {}};
    own_ = own;
    receiver_ = &receiver;
    return {LinkOpening::State::kOpen, {}};
  }
  WindowHandle Own() const override { return own_; }
  bool OwnsEndpoint() const override { return IsOpen() && ownsEndpoint; }
  void Close() override {
    own_ = 0;
    receiver_ = nullptr;
  }
  bool Send(WindowHandle target, std::uint32_t word, std::string_view text) override {
    sent.push_back({target, word, std::string(text.substr(0, kMostText))});
    if (!onSend) return sendSucceeds;
    const Message message = sent.back();
    return onSend(message);
  }

 private:
  WindowHandle own_ = 0;
  Receiver* receiver_ = nullptr;
};

}  // namespace vorlix
