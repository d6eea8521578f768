// Cuts a stream of bytes into lines, whatever pieces it comes in. Lines end in CR LF or LF; empty ones are left out. A
// line is cut at the given length, so that no peer can make us hold more; control characters become blanks.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace vorlix {

class LineSplitter {
 public:
  using Sink = std::function<void(const std::string& line)>;

  explicit LineSplitter(std::size_t mostText) : mostText_(mostText) {}

  void Feed(std::string_view bytes, const Sink& line);
  // Forgets the beginning of a line: its end is lost with the connection.
  void Reset() { line_.clear(); }

 private:
  std::size_t mostText_;
  std::string line_;
};

}  // namespace vorlix
