#include "app/CommandLine.h"

#include <gtest/gtest.h>

#include "core/CommandLineWords.h"

namespace vorlix {
namespace {

TEST(CommandLine, OptionsAndTheirValuesAreNoWords) {
  const CommandLine line = ParseCommandLine({"--console", "--data", "/autohaus/\xC3\xA4", "restart"});
  EXPECT_EQ(line.dataFolder, "/autohaus/\xC3\xA4");
  EXPECT_FALSE(HasWord(line.words, "auto"));
  EXPECT_TRUE(HasWord(line.words, "restart"));
  EXPECT_EQ(line.error, "");
  EXPECT_EQ(ParseCommandLine({"--data=/x"}).dataFolder, "/x");
}

TEST(CommandLine, UnknownAndIncompleteOptionsAreRefused) {
  EXPECT_NE(ParseCommandLine({"--dta"}).error, "");
  EXPECT_NE(ParseCommandLine({"--data"}).error, "");
  EXPECT_TRUE(ParseCommandLine({"-h"}).help);
  EXPECT_EQ(VersionText(), "Vorlix v3.00");
}

}  // namespace
}  // namespace vorlix
