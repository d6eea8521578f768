// Finds the first entry of the blacklist that a call matches, as a walk over the whole list would, without walking it.
//
// An entry is a beginning of a number; "*" and a text is a text anywhere in it; "?" stand for that many free characters
// in front of a beginning. An entry with own numbers counts for calls to these only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vorlix {

struct BlacklistItem {
  std::string MSN;  // own numbers it applies to, as free text; empty means all
  std::string Number;
  std::string Name;
};

enum class BlacklistKind { kPlain, kAnywhere, kBehindFree };

struct BlacklistMatch {
  std::size_t index;
  BlacklistKind kind;
};

class BlacklistIndex {
 public:
  // The items must stay as they are as long as the index is asked.
  explicit BlacklistIndex(const std::vector<BlacklistItem>& items);

  // The match that comes first in the list; of one entry, its pattern before its plain text. All comparisons are
  // binary.
  std::optional<BlacklistMatch> Find(std::string_view dataNumber, std::string_view MSN) const;

 private:
  // Texts by their content, each with the entries that have it, in list order.
  class Texts {
   public:
    void Add(std::string_view text, std::size_t entry);
    const std::vector<std::size_t>* Find(std::string_view text) const;
    const std::vector<std::size_t>& Lengths() const { return lengths_; }

   private:
    std::unordered_map<std::string_view, std::vector<std::size_t>> entries_;
    std::vector<std::size_t> lengths_;  // ascending, each once
  };
  // "?" entries with the same number of free characters.
  struct Free {
    std::size_t count;
    Texts texts;
  };

  class Search;

  const std::vector<BlacklistItem>& items_;
  Texts plain_;
  Texts anywhere_;
  std::vector<Free> free_;
};

}  // namespace vorlix
