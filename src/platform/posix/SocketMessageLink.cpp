#include "platform/posix/SocketMessageLink.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/LinkPacket.h"
#include "platform/RunCallback.h"
#include "platform/posix/LinkFolder.h"
#include "services/ansi.h"

namespace vorlix {
namespace {

using std::chrono::steady_clock;

constexpr std::chrono::milliseconds kMostWait{2000};
constexpr std::chrono::seconds kNameCheck{5};
constexpr int kBacklog = 128;
constexpr char kAnswer = 1;

Descriptor LocalSocket() {
  return Descriptor(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}

int ConnectTo(int socket, const std::string& path) {
  const sockaddr_un address = LinkAddress(path);
  return connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 ? 0 : errno;
}

// Held while endpoints are opened and closed, so that of two processes one comes first.
Descriptor LockFolder(const std::string& path) {
  Descriptor folder(open(path.substr(0, path.rfind('/')).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  while (folder && flock(folder.Get(), LOCK_EX) != 0 && errno == EINTR) {
  }
  return folder;
}

ino_t InodeOf(const std::string& path) {
  struct stat info {};
  return lstat(path.c_str(), &info) == 0 ? info.st_ino : 0;
}

LinkOpening OpeningFailed(const std::string& path, int error) {
  return {LinkOpening::State::kFailed, FailureText("open " + FromUtf8(path), error)};
}

void Acknowledge(int socket) {
  send(socket, &kAnswer, 1, MSG_NOSIGNAL | MSG_DONTWAIT);
}

}  // namespace

struct SocketMessageLink::Inbound {
  Peer peer;
  Descriptor socket;
  std::unique_ptr<Watch> watch;
  bool spoke = false;  // a connection that never brought a message is not worth a farewell
};

struct SocketMessageLink::Outbound {
  Descriptor socket;
  std::unique_ptr<Watch> watch;
  bool used = false;
  int awaited = 0;  // answers that are still to come, each in its message's order
};

SocketMessageLink::SocketMessageLink(Reactor& reactor)
    : reactor_(reactor),
      acceptor_(reactor, [this](Descriptor connection) { Take(std::move(connection)); }),
      keeper_(reactor.MakeTimer(kNameCheck, [this] { KeepName(); })) {}

SocketMessageLink::~SocketMessageLink() {
  Close();
}

bool SocketMessageLink::IsAlive(const std::string& path) const {
  const Descriptor probe = LocalSocket();
  const int error = ConnectTo(probe.Get(), path);
  return error == 0 || error == EAGAIN;  // a full queue belongs to somebody too
}

LinkOpening SocketMessageLink::Open(WindowHandle own, Receiver& receiver, bool takeOver) {
  return Trapped(
      "SocketMessageLink_Open",
      [&] {
        Close();
        if (own == 0) return OpeningFailed("0", EINVAL);
        LinkOpening opening = OpenAt(LinkPath(own), takeOver);
        if (!opening) return opening;
        own_ = own;
        receiver_ = &receiver;
        keeper_->SetEnabled(true);
        return opening;
      },
      own, takeOver);
}

LinkOpening SocketMessageLink::OpenAt(const std::string& path, bool takeOver) {
  if (path.empty()) return OpeningFailed(LinkFolderName(), errno);
  const Descriptor lock = LockFolder(path);
  if (!lock) return OpeningFailed(LinkFolderName(), errno);
  if (!takeOver && IsAlive(path)) return {LinkOpening::State::kInUse, {}};
  if (!Listen(path)) return OpeningFailed(path, errno);
  return {LinkOpening::State::kOpen, {}};
}

// The socket listens before it gets its name, so that the name is never one that nobody answers.
bool SocketMessageLink::Listen(const std::string& path) {
  const std::string temporary = path + "." + std::to_string(getpid());
  const sockaddr_un address = LinkAddress(temporary);
  Descriptor listener = LocalSocket();
  if (!listener) return false;
  unlink(temporary.c_str());
  if (bind(listener.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) return false;
  const ino_t inode = InodeOf(temporary);
  if (listen(listener.Get(), kBacklog) != 0 || std::rename(temporary.c_str(), path.c_str()) != 0) {
    const int error = errno;
    unlink(temporary.c_str());
    errno = error;
    return false;
  }
  path_ = path;
  inode_ = inode;
  acceptor_.Start(std::move(listener));
  return true;
}

bool SocketMessageLink::OwnsEndpoint() const {
  const ino_t there = InodeOf(path_);
  return acceptor_.IsListening() && (there == 0 || there == inode_);
}

// The folder goes when the user's last session ends, and comes back with the next one; the name follows it, so that
// later copies and helpers find this process.
void SocketMessageLink::KeepName() {
  const std::string path = LinkPath(own_);
  if (path.empty() || (path == path_ && InodeOf(path) != 0)) return;
  const Descriptor lock = LockFolder(path);
  if (!lock) return;
  const std::string former = path_;
  const bool formerIsOurs = InodeOf(former) == inode_;
  if (IsAlive(path)) {
    path_ = path;  // somebody was quicker, and owns the name now
  } else if (!Listen(path)) {
    return;
  }
  if (formerIsOurs && former != path) unlink(former.c_str());
}

void SocketMessageLink::Close() {
  Trapped("SocketMessageLink_Close", [&] {
    keeper_->SetEnabled(false);
    if (acceptor_.IsListening()) {
      const Descriptor lock = LockFolder(path_);
      if (InodeOf(path_) == inode_) unlink(path_.c_str());
    }
    acceptor_.Stop();
    inbound_.clear();
    outbound_.clear();
    waiting_.clear();
    posted_.reset();
    own_ = 0;
    receiver_ = nullptr;
  });
}

void SocketMessageLink::Take(Descriptor made) {
  if (!PeerIsOurUser(made.Get())) return;
  auto connection = std::make_shared<Inbound>();
  connection->peer = ++lastPeer_;
  connection->socket = std::move(made);
  // The watch lies in the connection, so the callback must not keep the connection alive.
  connection->watch = reactor_.WatchDescriptor(
      connection->socket.Get(), [this, weak = std::weak_ptr(connection)](Reactor::Ready) { OnReadable(weak.lock()); });
  inbound_.push_back(std::move(connection));
}

namespace {

enum class Arrival { kPacket, kNothing, kEnd };

// Reads one packet; anything but a whole one ends the connection.
Arrival ReceivePacket(int socket, std::array<char, LinkPacket::kMost + 1>& buffer, LinkPacket::Content& content) {
  const auto size = recv(socket, buffer.data(), buffer.size(), MSG_DONTWAIT);
  if (size < 0 && (errno == EAGAIN || errno == EINTR)) return Arrival::kNothing;
  const auto parsed = LinkPacket::Parse({buffer.data(), size < 0 ? 0 : static_cast<std::size_t>(size)});
  if (parsed) content = *parsed;
  return parsed ? Arrival::kPacket : Arrival::kEnd;
}

}  // namespace

// The connection stays alive until the end of the routine: the receiver may close the link, and its last message is
// still to be acknowledged.
void SocketMessageLink::OnReadable(const std::shared_ptr<Inbound>& connection) {
  DeliverWaiting();
  // What was waiting may have let the loop run, and this connection with it.
  if (connection == nullptr || receiver_ == nullptr || connection->watch == nullptr) return;
  std::array<char, LinkPacket::kMost + 1> buffer;
  LinkPacket::Content content;
  const Arrival arrival = ReceivePacket(connection->socket.Get(), buffer, content);
  if (arrival == Arrival::kEnd) {
    Drop(connection);
    DeliverWaiting();
  }
  if (arrival != Arrival::kPacket) return;
  connection->spoke = true;
  RunCallback("SocketMessageLink_OnMessage",
              [&] { receiver_->OnMessage(connection->peer, content.word, std::string(content.text)); });
  Acknowledge(connection->socket.Get());
}

// As above, but for a link that waits for an answer itself.
void SocketMessageLink::TakeIn(const std::shared_ptr<Inbound>& connection) {
  std::array<char, LinkPacket::kMost + 1> buffer;
  LinkPacket::Content content;
  const Arrival arrival = ReceivePacket(connection->socket.Get(), buffer, content);
  if (arrival == Arrival::kEnd) Drop(connection);
  if (arrival != Arrival::kPacket) return;
  connection->spoke = true;
  Acknowledge(connection->socket.Get());
  DeliverLater({connection->peer, false, content.word, std::string(content.text)});
}

void SocketMessageLink::Drop(const std::shared_ptr<Inbound>& connection) {
  connection->watch.reset();
  std::erase(inbound_, connection);
  if (connection->spoke) DeliverLater({connection->peer, true, 0, {}});
}

void SocketMessageLink::DeliverLater(Waiting event) {
  waiting_.push_back(std::move(event));
  if (posted_ != nullptr) return;
  posted_ = std::make_shared<char>();
  reactor_.Post([this, weak = std::weak_ptr(posted_)] {
    if (!weak.expired()) DeliverWaiting();
  });
}

void SocketMessageLink::DeliverWaiting() {
  posted_.reset();
  while (!waiting_.empty()) {
    const Waiting event = std::move(waiting_.front());
    waiting_.pop_front();
    RunCallback("SocketMessageLink_OnMessage", [&] {
      event.gone ? receiver_->OnPeerGone(event.peer) : receiver_->OnMessage(event.peer, event.word, event.text);
    });
  }
}

bool SocketMessageLink::Send(WindowHandle target, std::uint32_t word, std::string_view text) {
  return Trapped(
      "SocketMessageLink_Send", [&] { return SendPacket(target, LinkPacket(word, text).Bytes()); }, target, word);
}

bool SocketMessageLink::SendPacket(WindowHandle target, std::string_view packet) {
  while (Outbound* connection = Connected(target)) {
    const bool first = !std::exchange(connection->used, true);
    const Outcome outcome = Exchange(*connection, packet);
    if (outcome != Outcome::kDead) return outcome != Outcome::kFull;
    outbound_.erase(target);
    // A kept connection may have died since it was used last, and another process may answer now.
    if (first) return false;
  }
  return false;
}

SocketMessageLink::Outbound* SocketMessageLink::Connected(WindowHandle target) {
  auto& connection = outbound_[target];
  if (connection != nullptr) return connection.get();
  const std::string path = LinkPath(target);
  Descriptor socket = LocalSocket();
  if (path.empty() || ConnectTo(socket.Get(), path) != 0 || !PeerIsOurUser(socket.Get())) {
    outbound_.erase(target);
    return nullptr;
  }
  connection = std::make_unique<Outbound>();
  connection->socket = std::move(socket);
  connection->watch =
      reactor_.WatchDescriptor(connection->socket.Get(), [this, target](Reactor::Ready) { OnOutboundReady(target); });
  return connection.get();
}

// Answers are read by the Send() that waits for them; what comes besides is a late one, or the end.
void SocketMessageLink::OnOutboundReady(WindowHandle target) {
  Outbound& connection = *outbound_.at(target);
  char answer = 0;
  const auto size = recv(connection.socket.Get(), &answer, 1, MSG_DONTWAIT);
  if (size < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (size <= 0 || --connection.awaited < 0) outbound_.erase(target);
}

SocketMessageLink::Outcome SocketMessageLink::Exchange(Outbound& connection, std::string_view packet) {
  if (send(connection.socket.Get(), packet.data(), packet.size(), MSG_NOSIGNAL | MSG_DONTWAIT) < 0) {
    return errno == EAGAIN ? Outcome::kFull : Outcome::kDead;
  }
  ++connection.awaited;
  return AwaitAnswers(connection);
}

SocketMessageLink::Outcome SocketMessageLink::AwaitAnswers(Outbound& connection) {
  const int socket = connection.socket.Get();
  const auto end = steady_clock::now() + kMostWait;
  while (connection.awaited > 0) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - steady_clock::now());
    if (left.count() <= 0) return Outcome::kLate;
    FillDescriptors(socket);
    const int ready = poll(descriptors_.data(), descriptors_.size(), static_cast<int>(left.count()));
    if (ready > 0) ServeWhileWaiting();
    polled_.clear();
    if (ready <= 0 || descriptors_[0].revents == 0) continue;
    char answer = 0;
    const auto size = recv(socket, &answer, 1, MSG_DONTWAIT);
    // Who leaves without having read our message resets the connection; who read it and gave no answer only ends it.
    if (size < 0) return errno == ECONNRESET ? Outcome::kDead : Outcome::kLate;
    if (size == 0) return Outcome::kLate;
    --connection.awaited;
  }
  return Outcome::kAnswered;
}

void SocketMessageLink::FillDescriptors(int answering) {
  descriptors_.assign({{answering, POLLIN, 0}, {acceptor_.Polled(), POLLIN, 0}});  // poll() passes over a missing one
  polled_ = inbound_;
  for (const auto& connection : polled_)
    descriptors_.push_back({connection->socket.Get(), POLLIN, 0});
}

void SocketMessageLink::ServeWhileWaiting() {
  if (descriptors_[1].revents != 0) acceptor_.Accept();
  for (std::size_t i = 0; i < polled_.size(); ++i) {
    if (descriptors_[i + 2].revents != 0) TakeIn(polled_[i]);
  }
}

}  // namespace vorlix
