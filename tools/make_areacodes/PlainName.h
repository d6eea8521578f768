// Place names as the tables hold them.
#pragma once

#include <string>

namespace area_codes {

// A UTF-8 name in Windows-1252: a letter that the code page lacks loses its accents; a name with a character that has
// no likeness there, or without any letter, comes back empty. No control character and no "|" is in the result.
std::string PlainName(const std::string& utf8);

}  // namespace area_codes
