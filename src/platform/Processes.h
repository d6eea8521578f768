// Starting programs, and what this process is.
#pragma once

#include <string>
#include <vector>

#include "platform/FileStore.h"

namespace vorlix {

class Processes {
 public:
  virtual ~Processes() = default;
  // Starts an executable on its own feet: it outlives us, its end is of no concern, it inherits no descriptor of ours
  // but the standard ones. Tells why it cannot be started (missing, not executable).
  virtual IoResult Start(const std::string& file, const std::vector<std::string>& arguments) = 0;
};

}  // namespace vorlix
