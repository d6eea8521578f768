#include "companions/SocketNCID/NCIDLines.h"

#include <algorithm>
#include <map>

#include "services/ansi.h"
#include "services/text.h"

namespace vorlix {
namespace {

// Rings of the line, of a gateway or a telephone, a second call on a busy line, a ring-back.
constexpr std::string_view kCalls[] = {"CID:", "PID:", "WID:", "RID:"};
constexpr std::string_view kHungUp = "HUP:";
constexpr std::string_view kWaiting = "WID:";
// Ends a call for the main program; only that it has no "*" counts.
constexpr const char* kEnd = "HUP";

struct Key {
  std::string_view name;
  std::size_t mostText;
};
// What is handed over, in this order. Whatever a server writes, together it fits into a message, the number included.
constexpr Key kHandedOver[] = {{"DATE", 8}, {"TIME", 8}, {"LINE", 80}, {"NMBR", 64}, {"MESG", 16}, {"NAME", 32}};
// Keys that newer servers put among them.
constexpr std::string_view kOtherKeys[] = {"FNMBR", "NTYPE", "CTRY", "LOCA", "CARI"};

using Fields = std::map<std::string, std::string, std::less<>>;

bool IsKey(std::string_view part) {
  return std::any_of(std::begin(kHandedOver), std::end(kHandedOver),
                     [part](const Key& key) { return EqualNoCase(key.name, part); }) ||
         std::any_of(std::begin(kOtherKeys), std::end(kOtherKeys),
                     [part](std::string_view key) { return EqualNoCase(key, part); });
}

// Values are not escaped: stars may stand in front of one, and a star within it ends it.
Fields FieldsOf(std::string_view line) {
  Fields fields;
  const std::vector<std::string> parts = Split(line, "*");
  for (auto part = parts.begin(); part != parts.end();) {
    const std::string& key = *part++;
    if (!IsKey(key)) continue;
    const bool isPlain = part != parts.end() && !part->empty();
    part = std::find_if(part, parts.end(), [](const std::string& text) { return !text.empty(); });
    const bool isThere = part != parts.end() && (isPlain || !IsKey(*part));
    // A name may look like a further field: the first of each kind counts.
    fields.try_emplace(Upper(key), isThere ? *part++ : std::string());
  }
  return fields;
}

// A withheld number is a word, or a dash.
std::string NumberOf(const std::string& value) {
  return std::any_of(value.begin(), value.end(), IsDigit) ? Replace(value, " ", "") : std::string();
}

std::string HandedOver(std::string_view label, Fields fields) {
  std::string& number = fields["NMBR"];
  number = NumberOf(number);
  std::string line(label);
  line += " *";
  for (const Key& key : kHandedOver) {
    line += std::string(key.name) + "*" + fields[std::string(key.name)].substr(0, key.mostText) + "*";
  }
  return line;
}

}  // namespace

std::vector<std::string> NCIDLinesToHandOver(std::string_view line) {
  const std::string_view label = line.substr(0, line.find(':') + 1);
  const bool isHungUp = label == kHungUp;
  if (!isHungUp && std::find(std::begin(kCalls), std::end(kCalls), label) == std::end(kCalls)) return {};
  const Fields fields = FieldsOf(FromUtf8(line.substr(label.size())));
  if (fields.empty()) return {};
  const std::string call = HandedOver(label, fields);
  // There is one call at a time: what still rings ends first, or this one would not be taken.
  if (isHungUp) return {kEnd, call, kEnd};
  return label == kWaiting ? std::vector<std::string>{kEnd, call} : std::vector{call};
}

}  // namespace vorlix
