#include "companions/shared/LineSplitter.h"

#include <fstream>
#include <map>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vorlix {
namespace {

using Lines = std::vector<std::string>;

Lines SplitPieces(const Lines& pieces, std::size_t mostText = 255) {
  LineSplitter splitter(mostText);
  Lines lines;
  for (const std::string& piece : pieces) {
    splitter.Feed(piece, [&lines](const std::string& line) { lines.push_back(line); });
  }
  return lines;
}

TEST(LineSplitter, TakesEveryPieceAndEveryLineEnd) {
  const std::string nul(1, '\0');
  struct Row {
    const char* what;
    Lines pieces, lines;
  };
  const Row rows[] = {
      {"both line ends", {"a;1\r\nb;2\nc;3\r\n"}, {"a;1", "b;2", "c;3"}},
      {"CR and LF apart", {"a;1\r", "\nb;2", "\r", "\n"}, {"a;1", "b;2"}},
      {"empty lines and pieces", {"\r\n\n", "", "\r\n", "a\n\n"}, {"a"}},
      {"no end yet", {"a;1\r\nhalf", " a line"}, {"a;1"}},
      {"a NUL does not end a line", {"a" + nul + "b\n"}, {"a b"}},
      {"controls become blanks, upper bytes stay", {"a\tb\x1B[2J\x7F\xE4\xFF\n"}, {"a b [2J \xE4\xFF"}},
      {"a lone CR is no line end", {"a\rb\r\r\n"}, {"a b "}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(SplitPieces(row.pieces), row.lines) << row.what;
  }
}

TEST(LineSplitter, CutsALineAtTheLengthOfAMessage) {
  for (const auto& [bytes, kept] : std::map<std::string, std::string>{{"1234\r\n", "1234"},
                                                                      {"1234\n", "1234"},
                                                                      {"12345\r\n", "1234"},
                                                                      {"1234\r56\n", "1234"},
                                                                      {"123\r5\n", "123 "},
                                                                      {std::string(50'000, '9') + "\n", "9999"}}) {
    EXPECT_EQ(SplitPieces({bytes + "x\n"}, 4), Lines({kept, "x"}));
    Lines pieces;
    for (const char byte : bytes) {
      pieces.emplace_back(1, byte);
    }
    EXPECT_EQ(SplitPieces(pieces, 4), Lines{kept});
  }
}

TEST(LineSplitter, GivesTheSameLinesWhereverASessionIsCutInTwo) {
  std::ifstream file(VORLIX_TEST_DATA "/router_sessions/02_incoming_isdn_and_withheld.txt", std::ios::binary);
  std::stringstream content;
  content << file.rdbuf();
  const std::string session = content.str();
  Lines expected;
  for (std::string line; std::getline(content, line);) {
    if (line.ends_with('\r')) line.pop_back();
    expected.push_back(line);
  }
  ASSERT_GT(expected.size(), 3u);
  for (std::size_t cut = 0; cut <= session.size(); ++cut) {
    ASSERT_EQ(SplitPieces({session.substr(0, cut), session.substr(cut)}), expected) << "cut at " << cut;
  }
}

}  // namespace
}  // namespace vorlix
