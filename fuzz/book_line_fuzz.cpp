// Lines of the phone book and of the search results.
#include "check.h"
#include "data/book_item.h"
#include "services/text.h"

namespace {

bool IsOneLine(const std::string& line) {
  return line.find_first_of("\r\n") == line.size() - 2;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorlix;
  PlainNumbers numbers;
  const auto noSound = [](const std::string&) { return false; };
  for (const std::string& line : Split(fuzz::Text(data, size), kLineEnd)) {
    if (const BookItem found = SearchResultItem(line, numbers)) {
      fuzz::Check(IsOneLine(SearchResultLine(*found)), "a search result is one line");
    }
    const BookItem item = BookData_MakeItem(line, numbers, noSound);
    if (!item) continue;
    const std::string once = BookLine(*item);
    fuzz::Check(IsOneLine(once), "an entry is one line");
    const BookItem again = BookData_MakeItem(once.substr(0, once.size() - kLineEnd.size()), numbers, noSound);
    if (again) fuzz::Check(BookLine(*again) == once, "what was written is read as it was");
  }
  return 0;
}
