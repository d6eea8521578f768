// Lines of the journal.
#include "check.h"
#include "data/journal_line.h"
#include "services/text.h"

namespace {

using namespace vorlix;

// The line as the program writes it; empty for one that is no record.
std::string Rewritten(std::string_view line, NumberAnalysis& numbers) {
  const auto call = ReadJournalLine(line, numbers);
  if (!call) return {};
  const std::string text = RewrittenJournalLine(*call, false);
  fuzz::Check(text.find(kLineEnd) == text.size() - kLineEnd.size(), "a record is one line");
  return text.substr(0, text.size() - kLineEnd.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  PlainNumbers numbers;
  for (const std::string_view line : JournalLines(fuzz::Text(data, size))) {
    const std::string once = Rewritten(line, numbers);
    if (once.empty()) continue;
    // The first time a stray byte becomes a blank, and with that a text may become a date.
    const std::string twice = Rewritten(once, numbers);
    fuzz::Check(!twice.empty() && Rewritten(twice, numbers) == twice, "what was written is read as it was");
  }
  return 0;
}
