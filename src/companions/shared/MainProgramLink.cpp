#include "companions/shared/MainProgramLink.h"

#include <utility>

namespace vorlix {
namespace {

// A single failure may be a main program that is being replaced; two in a row are one that is gone.
constexpr int kMostFailed = 2;

}  // namespace

MainProgramLink::MainProgramLink(MessageLink& link, MessageLoop& loop, WindowHandle main, std::uint32_t source,
                                 std::function<void(const std::string&)> leave)
    : link_(link),
      main_(main),
      source_(source),
      leave_(std::move(leave)),
      sign_(loop.MakeTimer(kLifeSign, [this] { Tick(); })) {}

bool MainProgramLink::Start() {
  const WindowHandle own = HandleForText(std::to_string(main_) + "/" + std::to_string(source_));
  if (!link_.Open(own, *this)) {
    // Two instances would forward each line twice: the former has to leave, and loses its name if it does not answer.
    link_.Send(own, source_ | kHelperEnd, {});
    if (!link_.Open(own, *this, true)) return false;
  }
  sign_->SetEnabled(true);
  Tick();
  return true;
}

void MainProgramLink::Tick() {
  if (!link_.OwnsEndpoint()) return Leave("another instance has taken over");
  if (++unanswered_ > kMostUnanswered) return Leave("the main program does not answer");
  if (!SendToMain(kHelperLifeSign, std::to_string(link_.Own()))) {
    if (++failed_ >= kMostFailed) Leave("the main program is gone");
    return;
  }
  // Behind the silence may stand a new main program under the old handle, which does not know the state.
  if (std::exchange(failed_, 0) > 0 && state_) waiting_.push_back({*state_, {}});
  Flush();
}

void MainProgramLink::Tell(HelperCommand command, const std::string& text) {
  if (leave_ == nullptr) return;
  if (!link_.OwnsEndpoint()) return Leave("another instance has taken over");
  if (command != kHelperLine) state_ = command;
  waiting_.push_back({command, text});
  if (waiting_.size() > kMostWaiting) waiting_.pop_front();
  if (waiting_.size() == 1) Flush();
}

// What could not be sent waits for the next tick, in its order.
void MainProgramLink::Flush() {
  while (!waiting_.empty() && SendToMain(waiting_.front().command, waiting_.front().text)) {
    waiting_.pop_front();
  }
}

bool MainProgramLink::SendToMain(HelperCommand command, const std::string& text) {
  return link_.Send(main_, source_ | command, text);
}

void MainProgramLink::OnMessage(MessageLink::Peer peer, std::uint32_t word, const std::string&) {
  if ((word & ~kHelperCommandMask) != source_) return;
  if ((word & kHelperCommandMask) == kHelperLifeSign) {
    mainPeer_ = peer;
    unanswered_ = 0;
  } else if ((word & kHelperCommandMask) == kHelperEnd) {
    Leave("told to end");
  }
}

void MainProgramLink::OnPeerGone(MessageLink::Peer peer) {
  if (peer == mainPeer_ && mainPeer_ != 0) Leave("the main program is gone");
}

void MainProgramLink::Leave(const std::string& reason) {
  sign_->SetEnabled(false);
  if (const auto leave = std::exchange(leave_, nullptr)) leave(reason);
}

}  // namespace vorlix
