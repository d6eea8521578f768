// A question and its answer, for a screen that has no pages.
#pragma once

#include <optional>
#include <string>

namespace vorlix {

class Questions {
 public:
  virtual ~Questions() = default;
  // One question; an empty answer is the fallback. Nothing when nobody answers any more.
  virtual std::optional<std::string> Ask(const std::string& question, const std::string& fallback) = 0;
  virtual void Tell(const std::string& text) = 0;
};

}  // namespace vorlix
