#include "services/clsCollection.h"

#include <algorithm>

#include "services/text.h"

namespace vorlix {
namespace {

void Raise(const std::function<void()>& event) {
  if (event) event();
}

std::string TextOf(const clsCollection::Value& value) {
  const auto* text = std::get_if<std::string>(&value);
  return text == nullptr ? std::string() : *text;
}

}  // namespace

clsCollection clsCollection::Clone() const {
  clsCollection copy;
  copy.Queue_Limit = Queue_Limit;
  copy.Queue_InfoDealy = Queue_InfoDealy;
  for (const Entry& entry : entries_) {
    const auto* object = std::get_if<Object>(&entry.value);
    if (object == nullptr) {
      copy.AddByKeyValue(entry.key, entry.value);
    } else {
      const Object clone = (*object)->Clone();
      copy.Add(clone ? clone : *object);
    }
  }
  return copy;
}

bool clsCollection::Queue_Add(std::string_view text) {
  if (Count() >= kQueueFull) {
    Raise(QueueFull);
    return false;
  }
  AddEntry(std::to_string(++queueCounter_) + "Key", std::string(text));
  while (Queue_Limit != 0 && Count() > static_cast<std::size_t>(Queue_Limit)) {
    RemoveFirst();
  }
  const bool waits = Queue_InfoDealy != 0 && Count() <= static_cast<std::size_t>(Queue_InfoDealy);
  Raise(waits ? QueueTimerStart : QueueAdded);
  return true;
}

std::string clsCollection::Queue_ReadLast() {
  std::string text = Queue_ViewLast();
  RemoveFirst();
  return text;
}

std::string clsCollection::Queue_ViewLast() const {
  return Queue_GetByIndex(1);
}

std::string clsCollection::Queue_GetByIndex(std::size_t index) const {
  return index >= 1 && index <= Count() ? TextOf(entries_[index - 1].value) : std::string();
}

bool clsCollection::Add(const Object& object) {
  return object && AddByKeyValue(object->Key, object);
}

bool clsCollection::AddByINIData(std::string_view key, std::string_view value) {
  return AddByKeyValue(key, std::string(key) + "=" + std::string(value));
}

bool clsCollection::AddByKeyValue(std::string_view key, Value value) {
  if (!AddEntry(key, std::move(value))) return false;
  Raise(QueueAdded);
  return true;
}

void clsCollection::ChangeByKeyValue(std::string_view key, std::string_view value) {
  const std::string name(key);  // the caller's may be the key of the entry that goes
  std::string text = name + "=" + std::string(value);
  if (RemoveByKeyName(name)) AddEntry(name, std::move(text));
}

std::string clsCollection::ItemByKeyValue(std::string_view key, std::string_view fallback) const {
  const Entry* entry = Find(key);
  const std::string text = entry == nullptr ? std::string() : TextOf(entry->value);
  const std::string head = std::string(key) + "=";
  return text.starts_with(head) ? text.substr(head.size()) : std::string(fallback);
}

std::string clsCollection::GetItemByIndexByKeyValue(std::size_t index) const {
  return Queue_GetByIndex(index);
}

bool clsCollection::RemoveByKeyName(std::string_view key) {
  const auto position = Position(key);
  if (position == entries_.end()) return false;
  Erase(position);
  return true;
}

bool clsCollection::RemoveByIndex(std::size_t index) {
  if (index < 1 || index > Count()) return false;
  Erase(entries_.begin() + static_cast<std::ptrdiff_t>(index - 1));
  return true;
}

bool clsCollection::RemoveByIndex(std::string_view index) {
  if (!IsNumeric(index)) return false;
  const int position = LeadingInteger(index).value_or(0);
  return position >= 1 && RemoveByIndex(static_cast<std::size_t>(position));
}

bool clsCollection::RemoveFirst() {
  return RemoveByIndex(std::size_t{1});
}

clsCollection::Object clsCollection::ItemByKey(std::string_view key) const {
  Object object;
  GetItemByKey(key, object);
  return object;
}

bool clsCollection::ChangeKey(std::string_view oldKey, std::string_view newKey) {
  const Entry* entry = Find(oldKey);
  if (entry == nullptr || newKey.empty() || (oldKey != newKey && Find(newKey) != nullptr)) return false;
  Value value = entry->value;
  const std::string key(newKey);
  RemoveByKeyName(oldKey);
  return AddEntry(key, std::move(value));
}

bool clsCollection::GetItemByKey(std::string_view key, Object& object) const {
  const Entry* entry = Find(key);
  const auto* found = entry == nullptr ? nullptr : std::get_if<Object>(&entry->value);
  if (found == nullptr) return false;
  object = *found;
  return true;
}

clsCollection::Object clsCollection::GetItemByIndex(std::size_t index) const {
  if (index < 1 || index > Count()) return nullptr;
  const auto* object = std::get_if<Object>(&entries_[index - 1].value);
  return object == nullptr ? nullptr : *object;
}

void clsCollection::Clear() {
  entries_.clear();
  keys_.clear();
}

std::deque<clsCollection::Entry>::const_iterator clsCollection::Position(std::string_view key) const {
  const auto known = keys_.find(key);
  if (known == keys_.end()) return entries_.end();
  return std::lower_bound(entries_.begin(), entries_.end(), known->second,
                          [](const Entry& entry, std::uint64_t sequence) { return entry.sequence < sequence; });
}

const clsCollection::Entry* clsCollection::Find(std::string_view key) const {
  const auto position = Position(key);
  return position == entries_.end() ? nullptr : &*position;
}

bool clsCollection::AddEntry(std::string_view key, Value value) {
  const auto* object = std::get_if<Object>(&value);
  if (key.empty() || (object != nullptr && !*object)) return false;
  if (!keys_.try_emplace(std::string(key), nextSequence_).second) return false;
  entries_.push_back({nextSequence_++, std::string(key), std::move(value)});
  return true;
}

void clsCollection::Erase(const std::deque<Entry>::const_iterator& position) {
  keys_.erase(position->key);
  entries_.erase(position);
}

}  // namespace vorlix
