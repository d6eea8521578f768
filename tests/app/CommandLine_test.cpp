#include "app/CommandLine.h"

#include <gtest/gtest.h>

#include "core/CommandLineWords.h"

namespace vorlix {
namespace {

TEST(CommandLine, OptionsAndTheirValuesAreNoWordsAndUnknownOrIncompleteOnesAreRefused) {
  const CommandLine line = ParseCommandLine({"--console", "--data", "/autohaus/\xC3\xA4", "restart"});
  EXPECT_EQ(line.dataFolder + line.error, "/autohaus/\xC3\xA4");
  EXPECT_TRUE(HasWord(line.words, "restart") && !HasWord(line.words, "auto"));
  EXPECT_EQ(ParseCommandLine({"--data=/x"}).dataFolder, "/x");
  EXPECT_TRUE(ParseCommandLine({"-h"}).help);
  for (const char* wrong : {"--dta", "--data"})
    EXPECT_NE(ParseCommandLine({wrong}).error, "") << wrong;
}

}  // namespace
}  // namespace vorlix
