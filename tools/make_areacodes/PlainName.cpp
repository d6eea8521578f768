#include "PlainName.h"

#include <algorithm>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>

#include "services/ansi.h"
#include "services/text.h"

namespace area_codes {
namespace {

// Letters whose stroke or missing dot is no accent that could be taken off, and apostrophes.
struct Likeness {
  char32_t character;
  char plain;
};
constexpr Likeness kLikenesses[] = {{U'ł', 'l'}, {U'Ł', 'L'},       {U'đ', 'd'},      {U'Đ', 'D'},
                                    {U'ħ', 'h'}, {U'Ħ', 'H'},       {U'ı', 'i'},      {U'ə', 'e'},
                                    {U'Ə', 'E'}, {U'\u02BB', '\''}, {U'\u02BC', '\''}};

bool IsAccent(UChar32 character) {
  return u_charType(character) == U_NON_SPACING_MARK;
}

// Adds the character; false if nothing in the code page is like it.
bool AddPlain(UChar32 character, std::string& name) {
  const auto wanted = static_cast<char32_t>(character);
  const auto* like = std::ranges::find(kLikenesses, wanted, &Likeness::character);
  const int byte = like != std::end(kLikenesses) ? like->plain : vorlix::ansi_literal::ByteOf(wanted);
  if (byte >= 0) name += static_cast<char>(byte);
  return byte >= 0;
}

bool AddWithoutAccents(UChar32 character, std::string& name) {
  if (AddPlain(character, name)) return true;
  UErrorCode status = U_ZERO_ERROR;
  icu::UnicodeString parts;
  const icu::Normalizer2* normalizer = icu::Normalizer2::getNFKDInstance(status);
  if (U_FAILURE(status) || !normalizer->getDecomposition(character, parts)) return IsAccent(character);
  bool added = true;
  for (int at = 0; at < parts.length(); at = parts.moveIndex32(at, 1)) {
    if (!IsAccent(parts.char32At(at))) added = AddPlain(parts.char32At(at), name) && added;
  }
  return added;
}

}  // namespace

std::string PlainName(const std::string& utf8) {
  const icu::UnicodeString text = icu::UnicodeString::fromUTF8(utf8);
  std::string name;
  bool hasLetter = false;
  for (int at = 0; at < text.length(); at = text.moveIndex32(at, 1)) {
    const UChar32 character = text.char32At(at);
    hasLetter = hasLetter || u_isalpha(character);
    if (!AddWithoutAccents(character, name)) return {};
  }
  if (!hasLetter) return {};
  return std::string(vorlix::Trim(vorlix::Replace(vorlix::WithoutControls(name), "|", "/")));
}

}  // namespace area_codes
