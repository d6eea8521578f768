// Plays recorded call-monitor sessions to every client that connects, as a router does on its port.
//
//   router_replay [--port N] [--pace MS | --real-time] [--now] [--verbose] [--once] FILE...
//
// Prints the port it listens on first, and "end" behind the last line; the connection then stays as a silent router's
// does, and the next client that connects starts the session anew. --real-time keeps the pauses that the lines' own
// stamps tell; --now puts the present moment into each line; --verbose prints each line as it goes out; --once ends the
// program behind the last line.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/posix/PollReactor.h"
#include "platform/posix/SignalWatch.h"
#include "platform/posix/TcpServer.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace {

using namespace vorlix;

struct Arguments {
  int port = 0;
  int pace = 700;
  bool realTime = false, now = false, verbose = false, once = false;
  std::vector<std::string> files;
};

// True when a word is a whole number within the limit.
bool TakeNumber(const std::string& word, int most, int& number) {
  if (!IsDigits(word)) return false;
  number = LeadingInteger(word).value_or(0);
  return number <= most;
}

std::optional<Arguments> Parse(int count, char** words) {
  Arguments parsed;
  for (int i = 1; i < count; ++i) {
    const std::string word = words[i];
    const std::string next = i + 1 < count ? words[i + 1] : "";
    if (word == "--port" || word == "--pace") {
      ++i;
      if (!(word == "--port" ? TakeNumber(next, 65535, parsed.port) : TakeNumber(next, 3600'000, parsed.pace)))
        return {};
    } else if (word == "--real-time") {
      parsed.realTime = true;
    } else if (word == "--now") {
      parsed.now = true;
    } else if (word == "--verbose") {
      parsed.verbose = true;
    } else if (word == "--once") {
      parsed.once = true;
    } else if (word.starts_with("--")) {
      return {};
    } else {
      parsed.files.push_back(word);
    }
  }
  if (parsed.files.empty()) return {};
  return parsed;
}

// False when a file cannot be read.
bool ReadLines(const std::vector<std::string>& files, std::vector<std::string>& lines) {
  for (const std::string& name : files) {
    std::ifstream file(name);
    for (std::string line; std::getline(file, line);) {
      if (line.ends_with('\r')) line.pop_back();
      if (!line.empty() && !line.starts_with('#')) lines.push_back(line);
    }
    if (!file.eof()) {
      std::fprintf(stderr, "router_replay: %s cannot be read\n", name.c_str());
      return false;
    }
  }
  return true;
}

void Print(const std::string& text) {
  std::printf("%s\n", text.c_str());
  std::fflush(stdout);
}

// The moment in a line's first field; "no date" when there is none.
DateTime StampOf(const std::string& line) {
  const std::string field = line.substr(0, line.find(';'));
  const auto blank = field.find(' ');
  return blank == std::string::npos ? DateTime() : CDateNew(field.substr(0, blank), field.substr(blank + 1));
}

class Replay : private TcpServer::Listener {
 public:
  Replay(Reactor& reactor, const Arguments& arguments, std::vector<std::string> lines)
      : reactor_(reactor),
        arguments_(arguments),
        lines_(std::move(lines)),
        next_(lines_.size()),
        server_(reactor, *this),
        pace_(reactor.MakeTimer(Pace(), [this] { SendNext(); })) {}

  bool Start() { return server_.Start(static_cast<std::uint16_t>(arguments_.port)); }
  std::uint16_t Port() const { return server_.Port(); }

 private:
  // A client that comes meanwhile hears the session from where it is, as with a router.
  void OnClient(TcpServer::Client) override {
    if (pace_->Enabled()) return;
    next_ = 0;
    pace_->SetInterval(Pace());
    pace_->SetEnabled(true);
  }

  void SendNext() {
    if (next_ == lines_.size()) return End();
    const std::string line = Stamped(lines_[next_++]);
    server_.SendToAll(line + "\r\n");
    if (arguments_.verbose) Print("-> " + line);
    pace_->SetInterval(PauseBeforeNext());
  }

  void End() {
    pace_->SetEnabled(false);
    Print("end");
    if (arguments_.once) reactor_.Quit();
  }

  // A timer without an interval would never tick.
  std::chrono::milliseconds Pace() const { return std::chrono::milliseconds(std::max(arguments_.pace, 1)); }

  std::chrono::milliseconds PauseBeforeNext() const {
    if (!arguments_.realTime || next_ == lines_.size()) return Pace();
    const DateTime before = StampOf(lines_[next_ - 1]);
    const DateTime then = StampOf(lines_[next_]);
    if (!before || !then) return Pace();
    const auto seconds = static_cast<long>(then.DaysSince(before) * 86400 + 0.5);
    return std::chrono::milliseconds(std::max(seconds * 1000, 1L));
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
  std::size_t next_;
  TcpServer server_;
  std::unique_ptr<Timer> pace_;
};

}  // namespace

int main(int count, char** words) {
  const auto arguments = Parse(count, words);
  if (!arguments) {
    std::fprintf(stderr,
                 "usage: router_replay [--port N] [--pace MS | --real-time] [--now] [--verbose] [--once] FILE...\n");
    return 2;
  }
  std::vector<std::string> lines;
  if (!ReadLines(arguments->files, lines)) return 1;
  PollReactor reactor;
  const SignalBlock block;
  const SignalWatch signals(reactor, block, [&reactor](int) { reactor.Quit(); });
  Replay replay(reactor, *arguments, std::move(lines));
  if (!replay.Start()) {
    std::fprintf(stderr, "router_replay: port %d is not to be had\n", arguments->port);
    return 1;
  }
  Print(std::to_string(replay.Port()));
  reactor.Run();
  return 0;
}
