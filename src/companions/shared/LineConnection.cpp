#include "companions/shared/LineConnection.h"

#include <utility>

namespace vorlix {
namespace {

constexpr std::chrono::seconds kLasting{10};

}  // namespace

LineConnection::LineConnection(MessageLoop& loop, Listener& listener, std::size_t mostText,
                               const MakeClient& makeClient)
    : clock_(loop.GetClock()),
      listener_(listener),
      splitter_(mostText),
      retry_(loop.MakeTimer(RetryDelay::kFirst, [this] { Attempt(); })),
      client_(makeClient(*this)) {}

void LineConnection::Start(const std::string& host, std::uint16_t port) {
  host_ = host;
  port_ = port;
  Attempt();
}

void LineConnection::Attempt() {
  retry_->SetEnabled(false);
  splitter_.Reset();
  client_->Connect(host_, port_);
}

void LineConnection::OnConnected() {
  connectedAt_ = clock_.Steady();
  if (std::exchange(state_, State::kUp) != State::kUp) listener_.OnUp();
}

// A server that accepts and hangs up at once is no better than one that refuses: the wait begins anew only behind a
// line that was of use or a connection that lasted.
void LineConnection::OnData(std::string_view bytes) {
  splitter_.Feed(bytes, [this](const std::string& line) {
    if (listener_.OnLine(line)) delay_.Reset();
  });
}

void LineConnection::OnClosed(const std::string& reason) {
  if (state_ == State::kUp && clock_.Steady() - connectedAt_ >= kLasting) delay_.Reset();
  retry_->SetInterval(delay_.Next());
  retry_->SetEnabled(true);
  if (std::exchange(state_, State::kDown) != State::kDown) listener_.OnDown(reason);
}

}  // namespace vorlix
