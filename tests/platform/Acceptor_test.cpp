#include <sys/resource.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "fakes/Loopback.h"
#include "fakes/ManualReactor.h"
#include "platform/posix/TcpServer.h"

namespace vorlix {
namespace {

using namespace std::chrono_literals;

// As long as it lives the process gets no descriptor more.
class NoMoreDescriptors {
 public:
  NoMoreDescriptors() {
    getrlimit(RLIMIT_NOFILE, &former_);
    const Descriptor lowestFree(dup(STDIN_FILENO));
    const rlimit none{static_cast<rlim_t>(lowestFree.Get()), former_.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
  }
  ~NoMoreDescriptors() { setrlimit(RLIMIT_NOFILE, &former_); }
  NoMoreDescriptors(const NoMoreDescriptors&) = delete;
  NoMoreDescriptors& operator=(const NoMoreDescriptors&) = delete;

 private:
  rlimit former_{};
};

TEST(Acceptor, RestsASecondWhenThereIsNoDescriptorForANewConnection) {
  ManualReactor reactor;
  TcpServer::Listener ignored;
  TcpServer server(reactor, ignored);
  ASSERT_TRUE(server.Start());
  const Descriptor client(socket(AF_INET, SOCK_STREAM, 0));
  ASSERT_EQ(connect(client.Get(), Loopback(server.Port()).Plain(), sizeof(sockaddr_in)), 0);
  // The sanitizer opens descriptors itself when it meets a type for the first time.
  reactor.WatchDescriptor(client.Get(), {})->WantRead(false);
  {
    const NoMoreDescriptors shortage;
    reactor.RunPending();
  }
  reactor.RunPending();
  EXPECT_EQ(server.ClientCount(), 0u);  // it rests, though a client waits and could be had
  reactor.Advance(1100ms);
  EXPECT_EQ(server.ClientCount(), 1u);
}

}  // namespace
}  // namespace vorlix
