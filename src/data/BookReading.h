// The book while it is read. A question to the user lets the loop run meanwhile: calls are looked up in the old book
// and add to the new one, and nothing is written before all is read. A replaced entry leaves a gap, which a file full
// of double entries makes by the thousand: closing each at once would take the square of their number.
#pragma once

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "data/book_item.h"
#include "services/clsCollection.h"

namespace vorlix {

class BookReading {
 public:
  // Names itself in `current` while it lives.
  explicit BookReading(BookReading*& current) : current_(current) { current_ = this; }
  ~BookReading() { current_ = nullptr; }
  BookReading(const BookReading&) = delete;
  BookReading& operator=(const BookReading&) = delete;

  BookItem Find(const std::string& number) const {
    const auto found = places_.find(number);
    return found == places_.end() ? nullptr : items_[found->second];
  }
  // In place of the entry of its key, at the end.
  void Put(const BookItem& item) {
    const auto [place, isNew] = places_.try_emplace(item->Key, items_.size());
    if (!isNew) items_[std::exchange(place->second, items_.size())] = nullptr;
    items_.push_back(item);
  }
  std::size_t Count() const { return places_.size(); }
  clsCollection Collection() const {
    clsCollection book;
    for (const BookItem& item : items_) {
      book.Add(item);
    }
    return book;
  }

 private:
  BookReading*& current_;
  std::vector<BookItem> items_;  // in their order, nothing where one was replaced
  std::unordered_map<std::string, std::size_t> places_;
};

}  // namespace vorlix
