// What every helper program with a network connection is: lines from a server, handed over to the main program.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "companions/shared/LineConnection.h"
#include "companions/shared/MainProgramLink.h"

namespace vorlix {

// Where the server is, by the helper's settings file.
struct ServerAddress {
  std::string host;
  std::uint16_t port = 0;
};

class SocketCompanion : public LineConnection::Listener {
 public:
  struct Ports {
    MessageLoop& loop;
    MessageLink& link;
    LineConnection::MakeClient makeClient;
    // Tells what goes on; empty: silent.
    std::function<void(const std::string&)> debug;
  };

  // What the main program is to get of one line of the server; may be nothing.
  using Translation = std::function<std::vector<std::string>(const std::string& line)>;

  // Longer lines are cut, and once more where they are longer than a message.
  static constexpr std::size_t kMostLine = 4096;

  // Quits the loop when there is no more reason to run. All ports must outlive the object. Without a translation every
  // line is handed over as it is.
  SocketCompanion(Ports ports, WindowHandle main, std::uint32_t source, Translation translate = {});

  // False when the link cannot be opened.
  bool Start(const ServerAddress& server);

  bool OnLine(const std::string& line) override;
  void OnUp() override;
  void OnDown(const std::string& reason) override;

 private:
  void Debug(const std::string& text) const;

  Ports ports_;
  Translation translate_;
  MainProgramLink main_;
  LineConnection connection_;
};

// The command line of a helper program: the main program's handle in decimal, then perhaps "debug".
struct CompanionArguments {
  WindowHandle main = 0;  // 0: the line is wrong
  bool debug = false;
};
CompanionArguments ParseCompanionArguments(int count, const char* const* arguments);

}  // namespace vorlix
