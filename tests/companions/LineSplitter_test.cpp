#include "companions/shared/LineSplitter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorlix {
namespace {

using Lines = std::vector<std::string>;

Lines SplitPieces(const Lines& pieces, std::size_t mostText) {
  LineSplitter splitter(mostText);
  Lines lines;
  for (const std::string& piece : pieces) {
    splitter.Feed(piece, [&lines](const std::string& line) { lines.push_back(line); });
  }
  return lines;
}

TEST(LineSplitter, GivesTheSameLinesWhereverTheBytesAreCut) {
  struct Row {
    const char* what;
    std::string bytes;
    Lines lines;
    std::size_t mostText = 255;
  };
  const Row rows[] = {
      {"both line ends", "a;1\r\nb;2\nc;3\r\n", {"a;1", "b;2", "c;3"}},
      {"empty lines", "\r\n\n\r\na\n\n", {"a"}},
      {"no end yet", "a;1\r\nhalf a line", {"a;1"}},
      {"controls become blanks, upper bytes stay", {"a\0b\tc\x1B[2J\x7F\xE4\xFF\n", 13}, {"a b c [2J \xE4\xFF"}},
      {"a lone CR is no line end", "a\rb\r\r\n", {"a b "}},
      {"as long as a message, and longer", "1234\r\nx\n1234\n12345\r\n", {"1234", "x", "1234", "1234"}, 4},
      {"a CR at the limit", "1234\r56\nx\n123\r5\n", {"1234", "x", "123 "}, 4},
      {"very long", std::string(2000, '9') + "\nx\n", {"9999", "x"}, 4},
  };
  for (const Row& row : rows) {
    for (std::size_t cut = 0; cut <= row.bytes.size(); ++cut) {
      EXPECT_EQ(SplitPieces({row.bytes.substr(0, cut), "", row.bytes.substr(cut)}, row.mostText), row.lines)
          << row.what << ", cut at " << cut;
    }
  }
}

}  // namespace
}  // namespace vorlix
