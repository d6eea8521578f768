#include "platform/posix/TcpServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include "services/clsErrorHandling.h"

namespace vorlix {

bool TcpServer::Start(std::uint16_t port) {
  return Trapped(
      "TcpServer_Start",
      [&] {
        Stop();
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(port != 0 ? port : port_);
        auto* plain = reinterpret_cast<sockaddr*>(&address);
        socklen_t size = sizeof address;
        Descriptor made(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
        const int on = 1;  // the port may be taken again at once
        setsockopt(made.Get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
        if (bind(made.Get(), plain, size) != 0 || listen(made.Get(), SOMAXCONN) != 0) return false;
        if (getsockname(made.Get(), plain, &size) != 0) return false;
        port_ = ntohs(address.sin_port);
        acceptor_.Start(std::move(made));
        return true;
      },
      port);
}

void TcpServer::Take(Descriptor connection) {
  const Client client = ++last_;
  clients_[client] =
      std::make_unique<SocketStream>(reactor_, std::move(connection), static_cast<SocketStream::Handler&>(*this));
  listener_.OnClient(client);
}

bool TcpServer::Send(Client client, std::string_view bytes) {
  const auto found = clients_.find(client);
  return found != clients_.end() && found->second->Send(bytes);
}

void TcpServer::SendToAll(std::string_view bytes) {
  for (auto& [client, stream] : clients_)
    stream->Send(bytes);
}

TcpServer::Client TcpServer::ClientOf(const SocketStream& stream) const {
  for (const auto& [client, known] : clients_) {
    if (known.get() == &stream) return client;
  }
  return 0;
}

void TcpServer::OnBytes(SocketStream& stream, std::string_view bytes) {
  listener_.OnData(ClientOf(stream), bytes);
}

void TcpServer::OnEnd(SocketStream& stream, int) {
  const Client client = ClientOf(stream);
  Drop(client);
  listener_.OnGone(client);
}

}  // namespace vorlix
