#include "companions/shared/LineSplitter.h"

#include <algorithm>
#include <utility>

#include "services/text.h"

namespace vorlix {

void LineSplitter::Feed(std::string_view bytes, const Sink& sink) {
  while (!bytes.empty()) {
    const std::size_t lineEnd = bytes.find('\n');
    const std::string_view part = bytes.substr(0, lineEnd);
    // One more than is kept: the CR of a line of full length.
    const std::size_t room = mostText_ + 1 - std::min(line_.size(), mostText_ + 1);
    line_ += part.substr(0, room);
    if (lineEnd == std::string_view::npos) return;
    bytes.remove_prefix(lineEnd + 1);
    std::string line = std::exchange(line_, {});
    if (line.ends_with('\r')) line.pop_back();
    line.resize(std::min(line.size(), mostText_));
    if (!line.empty()) sink(WithoutControls(line));
  }
}

}  // namespace vorlix
