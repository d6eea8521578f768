// Starting programs, and what this process is.
#pragma once

#include <string>
#include <vector>

namespace vorlix {

class Processes {
 public:
  virtual ~Processes() = default;
  // Starts an executable on its own feet: it outlives us, its end is of no concern, it inherits no descriptor of ours
  // but the standard ones. False when it cannot be started (missing, not executable).
  virtual bool Start(const std::string& file, const std::vector<std::string>& arguments) = 0;
};

}  // namespace vorlix
