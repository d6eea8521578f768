// Plays recorded call-monitor sessions to every client that connects, as a router does on its port.
//
//   router_replay [--port N] [--pace MS] [--now] FILE...
//
// Prints the port it listens on first, and "end" behind the last line; the connection then stays as a silent router's
// does. --now puts the present moment into each line.
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "platform/posix/PollReactor.h"
#include "platform/posix/TcpServer.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace {

using namespace vorlix;

struct Arguments {
  std::uint16_t port = 0;
  std::chrono::milliseconds pace{700};
  bool now = false;
  std::vector<std::string> files;
};

Arguments Parse(int count, char** arguments) {
  Arguments parsed;
  for (int i = 1; i < count; ++i) {
    const std::string argument = arguments[i];
    const bool more = i + 1 < count;
    if (argument == "--port" && more) {
      parsed.port = static_cast<std::uint16_t>(std::atoi(arguments[++i]));
    } else if (argument == "--pace" && more) {
      parsed.pace = std::chrono::milliseconds(std::atoi(arguments[++i]));
    } else if (argument == "--now") {
      parsed.now = true;
    } else {
      parsed.files.push_back(argument);
    }
  }
  return parsed;
}

std::vector<std::string> ReadLines(const std::vector<std::string>& files) {
  std::vector<std::string> lines;
  for (const std::string& name : files) {
    std::ifstream file(name);
    for (std::string line; std::getline(file, line);) {
      if (line.ends_with('\r')) line.pop_back();
      if (!line.empty() && !line.starts_with('#')) lines.push_back(line);
    }
  }
  return lines;
}

class Replay : private TcpServer::Listener {
 public:
  Replay(Reactor& reactor, const Arguments& arguments)
      : reactor_(reactor),
        arguments_(arguments),
        lines_(ReadLines(arguments.files)),
        server_(reactor, *this),
        pace_(reactor.MakeTimer(arguments.pace, [this] { SendNext(); })) {}

  bool Start() { return !lines_.empty() && server_.Start(arguments_.port); }
  std::uint16_t Port() const { return server_.Port(); }

 private:
  // A client that comes later hears the session from where it is, as with a router.
  void OnClient(TcpServer::Client) override { pace_->SetEnabled(next_ < lines_.size()); }

  void SendNext() {
    if (next_ == lines_.size()) {
      pace_->SetEnabled(false);
      std::printf("end\n");
      std::fflush(stdout);
      return;
    }
    server_.SendToAll(Stamped(lines_[next_++]) + "\r\n");
  }

  std::string Stamped(const std::string& line) const {
    const auto field = line.find(';');
    if (!arguments_.now || field == std::string::npos) return line;
    const DateTime now = reactor_.GetClock().Now();
    return Padded(now.Day(), 2) + "." + Padded(now.Month(), 2) + "." + Padded(now.Year() % 100, 2) + " " +
           GetFormatedTime(now) + line.substr(field);
  }

  Reactor& reactor_;
  Arguments arguments_;
  std::vector<std::string> lines_;
  std::size_t next_ = 0;
  TcpServer server_;
  std::unique_ptr<Timer> pace_;
};

}  // namespace

int main(int count, char** arguments) {
  PollReactor reactor;
  Replay replay(reactor, Parse(count, arguments));
  if (!replay.Start()) {
    std::fprintf(stderr, "usage: router_replay [--port N] [--pace MS] [--now] FILE...\n");
    return 2;
  }
  std::printf("%d\n", replay.Port());
  std::fflush(stdout);
  reactor.Run();
  return 0;
}
