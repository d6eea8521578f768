// Processes with memory: starts nothing, keeps what should have been started.
#pragma once

#include <cerrno>
#include <string>
#include <vector>

#include "platform/Processes.h"

namespace vorlix {

class FakeProcesses : public Processes {
 public:
  struct Program {
    std::string file;
    std::vector<std::string> arguments;
    friend bool operator==(const Program&, const Program&) = default;
  };

  bool startSucceeds = true;

  std::vector<Program> started;  // successful starts only
  std::vector<Program> refused;

  IoResult Start(const std::string& file, const std::vector<std::string>& arguments) override {
    (startSucceeds ? started : refused).push_back({file, arguments});
    return startSucceeds ? IoResult{} : IoResult{EACCES, "start " + file + ": Permission denied"};
  }
};

}  // namespace vorlix
