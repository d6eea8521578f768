// What every helper program with a network connection is: lines from a server, handed over to the main program.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

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

  // Quits the loop when there is no more reason to run. All ports must outlive the object.
  SocketCompanion(Ports ports, WindowHandle main, std::uint32_t source);

  // False when the link cannot be opened.
  bool Start(const ServerAddress& server);

  void OnLine(const std::string& line) override;
  void OnUp() override;
  void OnDown(const std::string& reason) override;

 private:
  void Debug(const std::string& text) const;

  Ports ports_;
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
