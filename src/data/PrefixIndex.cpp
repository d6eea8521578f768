#include "data/PrefixIndex.h"

#include <algorithm>
#include <tuple>

namespace vorlix {
namespace {

// Numbers that compare as the first eight bytes do; equal ones say nothing, as a text may end in NUL.
std::uint64_t Head(std::string_view text) {
  const std::size_t length = std::min<std::size_t>(text.size(), 8);
  std::uint64_t head = 0;
  for (std::size_t i = 0; i < length; ++i) {
    head = head << 8 | static_cast<unsigned char>(text[i]);
  }
  return length == 0 ? 0 : head << 8 * (8 - length);
}

std::size_t SameLength(std::string_view a, std::string_view b) {
  return static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin());
}

}  // namespace

PrefixIndex::PrefixIndex(std::vector<Code> codes) {
  std::sort(codes.begin(), codes.end(),
            [](const Code& a, const Code& b) { return std::tie(a.text, a.row) < std::tie(b.text, b.row); });
  for (std::size_t i = 0; i < codes.size(); ++i) {
    const bool lastOfItsCode = i + 1 == codes.size() || codes[i + 1].text != codes[i].text;
    if (lastOfItsCode) Append(codes[i]);
  }
}

void PrefixIndex::Append(const Code& code) {
  const auto previous = entries_.empty() ? kNoEntry : static_cast<std::uint32_t>(entries_.size() - 1);
  Entry entry{bytes_.size(), code.text.size(), code.row, FirstThatBegins(previous, code.text)};
  if (entry.shorter != kNoEntry) entry.lastRow = std::max(entry.lastRow, entries_[entry.shorter].lastRow);
  bytes_ += code.text;
  heads_.push_back(Head(code.text));
  entries_.push_back(entry);
}

// Of all codes that begin a text, each begins the longer ones, and the greatest code that does not stand behind the
// text is or begins with the longest of them. So the way from there to ever shorter codes meets it first.
std::uint32_t PrefixIndex::FirstThatBegins(std::uint32_t entry, std::string_view text) const {
  if (entry == kNoEntry) return kNoEntry;
  const std::size_t same = SameLength(CodeOf(entries_[entry]), text);
  while (entry != kNoEntry && entries_[entry].length > same) {
    entry = entries_[entry].shorter;
  }
  return entry;
}

std::uint32_t PrefixIndex::NotBehind(std::string_view text) const {
  const std::uint64_t head = Head(text);
  auto behind = std::upper_bound(heads_.begin(), heads_.end(), head) - heads_.begin();
  if (behind > 0 && heads_[static_cast<std::size_t>(behind - 1)] == head) {
    const auto same = std::lower_bound(heads_.begin(), heads_.begin() + behind, head) - heads_.begin();
    behind = std::upper_bound(entries_.begin() + same, entries_.begin() + behind, text,
                              [this](std::string_view a, const Entry& b) { return a < CodeOf(b); }) -
             entries_.begin();
  }
  return behind == 0 ? kNoEntry : static_cast<std::uint32_t>(behind - 1);
}

std::size_t PrefixIndex::LastRow(std::string_view text) const {
  const std::uint32_t entry = FirstThatBegins(NotBehind(text), text);
  return entry == kNoEntry ? kNoRow : entries_[entry].lastRow;
}

}  // namespace vorlix
