#include "reactions/BlacklistIndex.h"

#include <algorithm>

namespace vorlix {

void BlacklistIndex::Texts::Add(std::string_view text, std::size_t entry) {
  entries_[text].push_back(entry);
  const auto place = std::lower_bound(lengths_.begin(), lengths_.end(), text.size());
  if (place == lengths_.end() || *place != text.size()) lengths_.insert(place, text.size());
}

const std::vector<std::size_t>* BlacklistIndex::Texts::Find(std::string_view text) const {
  const auto found = entries_.find(text);
  return found == entries_.end() ? nullptr : &found->second;
}

BlacklistIndex::BlacklistIndex(const std::vector<BlacklistItem>& items) : items_(items) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    const std::string_view number = items[i].Number;
    if (number.empty()) continue;
    // A pattern is also a plain text: it matches a number that begins with its very characters.
    plain_.Add(number, i);
    if (number.front() == '*') anywhere_.Add(number.substr(1), i);
    if (number.front() != '?') continue;
    const auto count = static_cast<std::size_t>(std::count(number.begin(), number.end(), '?'));
    auto group = std::find_if(free_.begin(), free_.end(), [&](const Free& one) { return one.count == count; });
    if (group == free_.end()) group = free_.insert(group, Free{count, {}});
    group->texts.Add(number.substr(count), i);
  }
}

// One call against the list: keeps the earliest entry found so far.
class BlacklistIndex::Search {
 public:
  Search(const std::vector<BlacklistItem>& items, std::string_view dataNumber, std::string_view MSN)
      : items_(items), dataNumber_(dataNumber), MSN_(MSN) {}

  void Plain(const Texts& texts) {
    for (const std::size_t length : texts.Lengths()) {
      if (length > dataNumber_.size()) return;
      Offer(texts.Find(dataNumber_.substr(0, length)), BlacklistKind::kPlain);
    }
  }

  void Anywhere(const Texts& texts) {
    if (dataNumber_.empty()) return;
    for (const std::size_t length : texts.Lengths()) {
      for (std::size_t at = 0; at + length <= dataNumber_.size(); ++at) {
        Offer(texts.Find(dataNumber_.substr(at, length)), BlacklistKind::kAnywhere);
      }
    }
  }

  // The text must stand right behind the free characters, and must not be found one character earlier: that is where
  // the search of old began, and a list relies on it.
  void BehindFree(const Free& group) {
    for (const std::size_t length : group.texts.Lengths()) {
      if (length == 0 || group.count + length > dataNumber_.size()) continue;
      const std::string_view text = dataNumber_.substr(group.count, length);
      if (dataNumber_.substr(group.count - 1, length) == text) continue;
      Offer(group.texts.Find(text), BlacklistKind::kBehindFree);
    }
  }

  std::optional<BlacklistMatch> Result() const { return best_; }

 private:
  void Offer(const std::vector<std::size_t>* entries, BlacklistKind kind) {
    if (entries == nullptr) return;
    for (const std::size_t entry : *entries) {
      // An entry that matches as a pattern was offered before its plain text.
      if (best_ && best_->index <= entry) return;
      const std::string& listed = items_[entry].MSN;
      if (!listed.empty() && listed.find(MSN_) == std::string::npos) continue;
      best_ = BlacklistMatch{entry, kind};
      return;
    }
  }

  const std::vector<BlacklistItem>& items_;
  std::string_view dataNumber_;
  std::string_view MSN_;
  std::optional<BlacklistMatch> best_;
};

std::optional<BlacklistMatch> BlacklistIndex::Find(std::string_view dataNumber, std::string_view MSN) const {
  Search search(items_, dataNumber, MSN);
  search.Anywhere(anywhere_);
  for (const Free& group : free_) {
    search.BehindFree(group);
  }
  search.Plain(plain_);
  return search.Result();
}

}  // namespace vorlix
