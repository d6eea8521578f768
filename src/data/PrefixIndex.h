// Answers the question that a walk over a table of codes from its last row to its first would answer: which row is the
// first whose code begins this text? The order of the rows alone decides, not the length of the code, and an empty code
// begins every text. The walk reads every row; this reads some ten codes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorlix {

class PrefixIndex {
 public:
  static constexpr std::size_t kNoRow = static_cast<std::size_t>(-1);

  struct Code {
    std::string_view text;
    std::size_t row;
  };

  PrefixIndex() = default;
  // The texts are copied.
  explicit PrefixIndex(std::vector<Code> codes);

  // The highest row whose code begins the text; kNoRow where there is none.
  std::size_t LastRow(std::string_view text) const;

 private:
  static constexpr std::uint32_t kNoEntry = static_cast<std::uint32_t>(-1);

  struct Entry {
    std::size_t begin, length;  // the code within bytes_
    std::size_t lastRow;        // of this code and of all that begin it
    std::uint32_t shorter;      // the longest other code that begins this one
  };

  std::string_view CodeOf(const Entry& entry) const {
    return std::string_view(bytes_).substr(entry.begin, entry.length);
  }
  void Append(const Code& code);
  // The entry of the greatest code that does not stand behind the text in the alphabet.
  std::uint32_t NotBehind(std::string_view text) const;
  std::uint32_t FirstThatBegins(std::uint32_t entry, std::string_view text) const;

  std::vector<std::uint64_t> heads_;  // the first eight bytes of each code, as numbers in order
  std::vector<Entry> entries_;        // by code
  std::string bytes_;
};

}  // namespace vorlix
