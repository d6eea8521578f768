#include "companions/shared/SocketCompanion.h"

#include <charconv>
#include <string_view>
#include <utility>

#include "services/clsErrorHandling.h"

namespace vorlix {
namespace {

std::vector<std::string> AsItIs(const std::string& line) {
  return {line};
}

}  // namespace

SocketCompanion::SocketCompanion(Ports ports, WindowHandle main, std::uint32_t source, Translation translate)
    : ports_(std::move(ports)),
      translate_(translate ? std::move(translate) : AsItIs),
      main_(ports_.link, ports_.loop, main, source,
            [this](const std::string& reason) {
              Debug("leaving: " + reason);
              ports_.loop.Quit();
            }),
      connection_(ports_.loop, *this, kMostLine, ports_.makeClient) {}

bool SocketCompanion::Start(const ServerAddress& server) {
  return Trapped(
      "SocketCompanion_Start",
      [&] {
        if (!main_.Start()) return false;
        Debug("connecting to " + server.host + ":" + std::to_string(server.port));
        connection_.Start(server.host, server.port);
        return true;
      },
      server.host, server.port);
}

bool SocketCompanion::OnLine(const std::string& line) {
  const std::vector<std::string> lines = translate_(line);
  Debug((lines.empty() ? "not handed over: " : "line: ") + line);
  for (const std::string& text : lines) {
    main_.Tell(kHelperLine, text.substr(0, MessageLink::kMostText));
  }
  return !lines.empty();
}

void SocketCompanion::OnUp() {
  Debug("connected");
  main_.Tell(kHelperConnected);
}

void SocketCompanion::OnDown(const std::string& reason) {
  Debug("lost: " + reason);
  main_.Tell(kHelperLost);
}

void SocketCompanion::Debug(const std::string& text) const {
  if (ports_.debug) ports_.debug(text);
}

CompanionArguments ParseCompanionArguments(int count, const char* const* arguments) {
  CompanionArguments parsed;
  if (count < 2) return parsed;
  const std::string_view handle = arguments[1];
  const auto [end, error] = std::from_chars(handle.data(), handle.data() + handle.size(), parsed.main);
  if (error != std::errc{} || end != handle.data() + handle.size()) parsed.main = 0;
  parsed.debug = count > 2 && std::string_view(arguments[2]) == "debug";
  return parsed;
}

}  // namespace vorlix
