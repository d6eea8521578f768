// The one container of the system: a list keyed by text that keeps the order of insertion, and a bounded text queue.
// Positions count from 1. No operation throws; each says by true or false, nothing or an empty text how it went.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <variant>

namespace vorlix {

// What a collection holds besides plain text. Objects are shared by reference: one may stand in several collections.
class CollectionItem {
 public:
  std::string Key;

  virtual ~CollectionItem() = default;

  // A copy for another owner, or nothing where the kind of object is shared instead of copied.
  virtual std::shared_ptr<CollectionItem> Clone() const { return nullptr; }

 protected:
  CollectionItem() = default;
  CollectionItem(const CollectionItem&) = default;
  CollectionItem& operator=(const CollectionItem&) = default;
};

class clsCollection {
 public:
  using Object = std::shared_ptr<CollectionItem>;
  using Value = std::variant<Object, std::string>;

  // The queue holds no more than this, whatever its limit.
  static constexpr std::size_t kQueueFull = 10000;

  // Events; any may be left empty. A listener may change the collection.
  std::function<void()> QueueAdded;
  std::function<void()> QueueFull;
  std::function<void()> QueueSize;  // for listeners of the vocabulary; no operation raises it
  std::function<void()> QueueTimerStart;

  std::int16_t Queue_Limit = 0;      // 0 = none
  std::int16_t Queue_InfoDealy = 0;  // 0 = none

  // A new collection: objects that can be cloned are, others are shared; keys are taken from the objects. Texts keep
  // theirs.
  clsCollection Clone() const;

  // Adds a text behind the others. At 10000 elements QueueFull is raised instead and the result is false.
  bool Queue_Add(std::string_view text);
  // The oldest text, despite the name, removed; empty on an empty queue.
  std::string Queue_ReadLast();
  std::string Queue_ViewLast() const;
  std::string Queue_GetByIndex(std::size_t index) const;

  // Adds under the object's own Key; false, and nothing changes, when the key is taken or the object is nothing.
  bool Add(const Object& object);
  // Adds the text key=value under the key.
  bool AddByINIData(std::string_view key, std::string_view value);
  // False, as for Add, also for an empty key.
  bool AddByKeyValue(std::string_view key, Value value);
  // Puts key=value in place of the entry of that key; the entry moves to the end. An unknown key changes nothing.
  void ChangeByKeyValue(std::string_view key, std::string_view value);
  // The text of the entry without its leading key and "="; the default where there is none.
  std::string ItemByKeyValue(std::string_view key, std::string_view fallback) const;
  std::string GetItemByIndexByKeyValue(std::size_t index) const;

  bool RemoveByKeyName(std::string_view key);
  bool RemoveByIndex(std::size_t index);
  bool RemoveByIndex(std::string_view index);  // only a numeric text removes
  bool RemoveFirst();

  // The object of that key, or nothing.
  Object ItemByKey(std::string_view key) const;
  template <class T>
  std::shared_ptr<T> ItemByKeyAs(std::string_view key) const {
    return std::dynamic_pointer_cast<T>(ItemByKey(key));
  }
  // The element goes to the end under the new key; nothing changes when the new key is taken.
  bool ChangeKey(std::string_view oldKey, std::string_view newKey);
  bool GetItemByKey(std::string_view key, Object& object) const;
  // Counted from 1; nothing outside.
  Object GetItemByIndex(std::size_t index) const;
  template <class T>
  std::shared_ptr<T> ItemByIndexAs(std::size_t index) const {
    return std::dynamic_pointer_cast<T>(GetItemByIndex(index));
  }

  std::size_t Count() const { return entries_.size(); }
  void Clear();

  struct Entry {
    std::uint64_t sequence;  // ascending with the position: finds an entry by its key in O(log n)
    std::string key;
    Value value;
  };
  // The elements in their order; good until the collection changes.
  const std::deque<Entry>& GetCollection() const { return entries_; }

 private:
  struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
  };

  std::deque<Entry>::const_iterator Position(std::string_view key) const;
  const Entry* Find(std::string_view key) const;
  bool AddEntry(std::string_view key, Value value);
  void Erase(const std::deque<Entry>::const_iterator& position);

  std::deque<Entry> entries_;
  std::unordered_map<std::string, std::uint64_t, TextHash, std::equal_to<>> keys_;
  std::uint64_t nextSequence_ = 0;
  std::int32_t queueCounter_ = 0;  // used only to build keys
};

}  // namespace vorlix
