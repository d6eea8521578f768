// The text of an INI file under the rules of the Windows profile functions: section and key names without case, the
// first match wins, ";" begins a comment line, blanks around names and values and one pair of quotes around a value are
// dropped. A change touches its own line only; every other byte stays. A byte-order mark, NUL bytes and lines that are
// no entry are kept and not read. A section that stands twice counts as one. Works on text alone; who owns the file
// reads and writes it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vorlix {

class IniDocument {
 public:
  IniDocument() = default;
  explicit IniDocument(std::string_view text);

  // The value of a key, or nothing where section or key is missing.
  std::optional<std::string> Get(std::string_view section, std::string_view key) const;

  // Changes the first entry of that name, or adds it at the end of the section, or adds the section. A CR, LF or NUL in
  // section, key or value becomes a blank: it could forge another entry.
  void Set(std::string_view section, std::string_view key, std::string_view value);

  // Puts "; text" below the head of the section, or adds the section with it. A comment that stands there already
  // stays alone: the user may have changed it.
  void Comment(std::string_view section, std::string_view text);

  // Removes the first entry of that name; false if there was none.
  bool DeleteKey(std::string_view section, std::string_view key);
  // Removes the section with all its lines; false if there was none.
  bool DeleteSection(std::string_view section);

  // Keys of a section in file order, with their values.
  std::vector<std::pair<std::string, std::string>> Section(std::string_view section) const;

  // Whether any section but that one has an entry. What stands ahead of the first section belongs to none.
  bool HasEntriesBeside(std::string_view section) const;

  std::string Text() const;

 private:
  void Index();
  void IndexLine(std::size_t number, std::string& section);
  std::string_view EntryValue(std::size_t number) const;
  void Insert(std::size_t number, const std::string& content);
  std::string_view LineEnd() const;

  std::string mark_;                                          // the byte-order mark, if there is one
  std::vector<std::string> lines_;                            // each with its own line end
  std::unordered_map<std::string, std::size_t> entries_;      // lower-case "section\nkey" -> its line
  std::unordered_map<std::string, std::size_t> sectionEnds_;  // lower-case name -> the line where a new entry goes
};

}  // namespace vorlix
