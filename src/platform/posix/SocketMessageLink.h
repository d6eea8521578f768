// The message link over sequenced-packet local sockets. A message goes out on a connection that is kept for its target,
// and the other side answers with one packet when its receiver is done. Connections carry messages one way: two
// processes that talk to each other hold two. The socket's name follows the folder of the links: where that went, or
// another has come to be in use, the name is made again within a few seconds; connections outlive that.
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <sys/types.h>
#include <vector>

#include "platform/MessageLink.h"
#include "platform/Reactor.h"
#include "platform/posix/Acceptor.h"

struct pollfd;

namespace vorlix {

class SocketMessageLink : public MessageLink {
 public:
  // The reactor must outlive the link.
  explicit SocketMessageLink(Reactor& reactor);
  ~SocketMessageLink() override;

  LinkOpening Open(WindowHandle own, Receiver& receiver, bool takeOver = false) override;
  WindowHandle Own() const override { return own_; }
  bool OwnsEndpoint() const override;
  void Close() override;
  bool Send(WindowHandle target, std::uint32_t word, std::string_view text) override;

 private:
  struct Inbound;
  struct Outbound;
  // kLate: the message was taken, its answer is still to come or never will; kDead: it was not taken and never will be.
  enum class Outcome { kAnswered, kLate, kFull, kDead };
  // What was taken in while a Send() waited, or the end of a connection.
  struct Waiting {
    Peer peer;
    bool gone;
    std::uint32_t word;
    std::string text;
  };

  LinkOpening OpenAt(const std::string& path, bool takeOver);
  bool Listen(const std::string& path);
  bool IsAlive(const std::string& path) const;
  void KeepName();
  void Take(Descriptor connection);
  void OnReadable(const std::shared_ptr<Inbound>& connection);
  void TakeIn(const std::shared_ptr<Inbound>& connection);
  void Drop(const std::shared_ptr<Inbound>& connection);
  void DeliverLater(Waiting event);
  void DeliverWaiting();

  Outbound* Connected(WindowHandle target);
  bool SendPacket(WindowHandle target, std::string_view packet);
  Outcome Exchange(Outbound& connection, std::string_view packet);
  Outcome AwaitAnswers(Outbound& connection);
  void OnOutboundReady(WindowHandle target);
  void ServeWhileWaiting();
  void FillDescriptors(int answering);

  Reactor& reactor_;
  Receiver* receiver_ = nullptr;
  WindowHandle own_ = 0;
  std::string path_;
  ino_t inode_ = 0;
  Acceptor acceptor_;
  std::unique_ptr<Timer> keeper_;
  std::vector<std::shared_ptr<Inbound>> inbound_;
  Peer lastPeer_ = 0;
  std::map<WindowHandle, std::unique_ptr<Outbound>> outbound_;
  std::deque<Waiting> waiting_;
  std::shared_ptr<char> posted_;  // held by a delivery that stands in the loop's queue
  std::vector<pollfd> descriptors_;
  std::vector<std::shared_ptr<Inbound>> polled_;
};

}  // namespace vorlix
