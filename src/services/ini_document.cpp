#include "services/ini_document.h"

#include <algorithm>

#include "services/text.h"

namespace vorlix {
namespace {

std::string_view TrimSpace(std::string_view text) {
  constexpr std::string_view kSpace = " \t\r\n";
  const auto first = text.find_first_not_of(kSpace);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

std::string_view Unquoted(std::string_view value) {
  const bool quoted =
      value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front();
  return quoted ? value.substr(1, value.size() - 2) : value;
}

// What reading would strip has to stand between quotes.
std::string Quoted(const std::string& value) {
  return Unquoted(TrimSpace(value)) == value ? value : "\"" + value + "\"";
}

// A line end or NUL in a name or value could forge another entry.
std::string Harmless(std::string_view text) {
  std::string out(text);
  std::replace_if(
      out.begin(), out.end(), [](char c) { return c == '\r' || c == '\n' || c == '\0'; }, ' ');
  return out;
}

// The name in a section's head; nothing for any other line.
std::optional<std::string> HeadName(std::string_view whole) {
  const std::string_view line = TrimSpace(whole);
  if (!line.starts_with('[')) return std::nullopt;
  return Lower(TrimSpace(line.substr(1, line.find(']') - 1)));
}

std::string EntryKey(std::string_view section, std::string_view key) {
  return Lower(TrimSpace(section)) + "\n" + Lower(TrimSpace(key));
}

}  // namespace

IniDocument::IniDocument(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) {
    mark_ = kByteOrderMark;
    text.remove_prefix(kByteOrderMark.size());
  }
  while (!text.empty()) {
    const std::size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
    lines_.emplace_back(text.substr(0, length));
    text.remove_prefix(length);
  }
  Index();
}

std::string IniDocument::Text() const {
  return mark_ + Join(lines_, {});
}

bool IniDocument::HasEntriesBeside(std::string_view section) const {
  const std::string own = EntryKey(section, {});
  return std::ranges::any_of(
      entries_, [&](const auto& entry) { return !entry.first.starts_with(own) && !entry.first.starts_with('\n'); });
}

void IniDocument::Index() {
  entries_.clear();
  sectionEnds_.clear();
  std::string section;
  for (std::size_t number = 0; number < lines_.size(); ++number) {
    IndexLine(number, section);
  }
}

void IniDocument::IndexLine(std::size_t number, std::string& section) {
  const std::string_view line = TrimSpace(lines_[number]);
  const std::size_t equals = line.find('=');
  if (const auto head = HeadName(line)) {
    section = *head;
    sectionEnds_[section] = number + 1;
  } else if (!line.starts_with(';') && equals != std::string_view::npos) {
    entries_.try_emplace(EntryKey(section, line.substr(0, equals)), number);
    sectionEnds_[section] = number + 1;
  }
}

std::string_view IniDocument::EntryValue(std::size_t number) const {
  const std::string_view line = lines_[number];
  return Unquoted(TrimSpace(line.substr(line.find('=') + 1)));
}

std::optional<std::string> IniDocument::Get(std::string_view section, std::string_view key) const {
  const auto found = entries_.find(EntryKey(section, key));
  if (found == entries_.end()) return std::nullopt;
  return std::string(EntryValue(found->second));
}

void IniDocument::Set(std::string_view section, std::string_view key, std::string_view value) {
  const std::string name = Harmless(section);
  const std::string entry = Harmless(key) + "=" + Quoted(Harmless(value));
  if (const auto found = entries_.find(EntryKey(name, Harmless(key))); found != entries_.end()) {
    std::string& line = lines_[found->second];
    const bool cr = line.ends_with("\r\n");
    const bool lf = line.ends_with('\n');
    line = entry + (cr ? "\r\n" : lf ? "\n" : "");
    return;
  }
  const auto end = sectionEnds_.find(Lower(TrimSpace(name)));
  if (end != sectionEnds_.end()) {
    Insert(end->second, entry);
  } else {
    Insert(lines_.size(), "[" + name + "]");
    Insert(lines_.size(), entry);
  }
  Index();
}

void IniDocument::Comment(std::string_view section, std::string_view text) {
  const std::string name = Harmless(section);
  const auto isHead = [&](const std::string& line) { return HeadName(line) == Lower(TrimSpace(name)); };
  auto head = static_cast<std::size_t>(std::find_if(lines_.begin(), lines_.end(), isHead) - lines_.begin());
  if (head == lines_.size()) Insert(lines_.size(), "[" + name + "]");
  if (++head < lines_.size() && TrimSpace(lines_[head]).starts_with(';')) return;
  Insert(head, "; " + Harmless(text));
  Index();
}

// A last line without a line end gets one first.
void IniDocument::Insert(std::size_t number, const std::string& content) {
  const std::string lineEnd(LineEnd());
  if (number > 0 && !lines_[number - 1].ends_with('\n')) lines_[number - 1] += lineEnd;
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(number), content + lineEnd);
}

// The file's own: LF only where its first line ends so.
std::string_view IniDocument::LineEnd() const {
  const bool lf = !lines_.empty() && lines_[0].ends_with('\n') && !lines_[0].ends_with("\r\n");
  return lf ? "\n" : kLineEnd;
}

bool IniDocument::DeleteKey(std::string_view section, std::string_view key) {
  const auto found = entries_.find(EntryKey(section, key));
  if (found == entries_.end()) return false;
  lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(found->second));
  Index();
  return true;
}

bool IniDocument::DeleteSection(std::string_view section) {
  const std::string wanted = Lower(TrimSpace(section));
  if (!sectionEnds_.contains(wanted)) return false;
  bool inside = wanted.empty();  // entries in front of the first section have the empty one
  std::vector<std::string> kept;
  for (std::string& whole : lines_) {
    if (const auto head = HeadName(whole)) inside = *head == wanted;
    if (!inside) kept.push_back(std::move(whole));
  }
  lines_ = std::move(kept);
  Index();
  return true;
}

std::vector<std::pair<std::string, std::string>> IniDocument::Section(std::string_view section) const {
  const std::string head = Lower(TrimSpace(section)) + "\n";
  std::vector<std::size_t> numbers;
  for (const auto& [key, number] : entries_) {
    if (key.starts_with(head)) numbers.push_back(number);
  }
  std::sort(numbers.begin(), numbers.end());
  std::vector<std::pair<std::string, std::string>> entries;
  for (const std::size_t number : numbers) {
    const std::string_view line = lines_[number];
    entries.emplace_back(TrimSpace(line.substr(0, line.find('='))), EntryValue(number));
  }
  return entries;
}

}  // namespace vorlix
