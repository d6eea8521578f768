#include "services/text.h"

#include <climits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "services/ansi.h"

namespace vorlix {
namespace {

using testing::ElementsAre;

TEST(Ansi, EveryByteSurvivesARoundTrip) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte)
    all += static_cast<char>(byte);
  EXPECT_EQ(FromUtf8(ToUtf8(all)), all);
}

TEST(Ansi, Utf8BecomesWindows1252) {
  for (const auto& [utf8, ansi] :
       {std::pair{"Ü €", "\xDC \x80"}, {"„ Anruf“ – Žluť", "\x84 Anruf\x93 \x96 \x8Elu?"}, {"\xF0\x9F\x93\x9E", "?"}})
    EXPECT_EQ(FromUtf8(utf8), ansi) << utf8;
  // Not UTF-8, overlong, a surrogate, cut off: kept.
  for (const char* kept : {"a\xFFz", "\xC0\xAF", "\xED\xA0\x80", "\xE2\x82"})
    EXPECT_EQ(FromUtf8(kept), kept);
}

TEST(Text, CaseFollowsTheCodePage) {
  EXPECT_EQ(Lower("\xC4\xD6\xDC\xDF\x8A\x9F\xD7"), "\xE4\xF6\xFC\xDF\x9A\xFF\xD7");
  EXPECT_EQ(Upper("\xE4\xF6\xFC\xDF\x9A\xFF\xF7"), "\xC4\xD6\xDC\xDF\x8A\x9F\xF7");
  EXPECT_TRUE(EqualNoCase("UNBEK\xC4NNT", "unbek\xE4nnt") && ContainsNoCase("xx unbekannt yy", "Unbekannt"));
  EXPECT_FALSE(ContainsNoCase("unbekann", "Unbekannt") || StartsWithNoCase("ab", "ABC"));
}

TEST(Text, SplitsAndReplaces) {
  EXPECT_THAT(Split("a;;b;", ";"), ElementsAre("a", "", "b", ""));
  EXPECT_THAT(Split("a\r\nb", "\r\n"), ElementsAre("a", "b"));
  EXPECT_EQ(Replace("aXXbX", "X", "yy") + Replace("abc", "", "x"), "ayyyybyyabc");
  EXPECT_EQ(Trim("  a\t "), "a\t");
  EXPECT_EQ(WithoutControls(std::string("a\0b\tc\x7F\x1B\xE4", 8)), "a b c  \xE4");
}

TEST(Text, TellsNumbersFromOtherTexts) {
  for (const char* numeric : {"0", "-1", "+49", " 12 ", "1.5", "1,5", "007"})
    EXPECT_TRUE(IsNumeric(numeric)) << numeric;
  for (const char* other : {"", " ", "-", "1.2.3", "1a", "--1", "1 2", "+", "\xB2"})
    EXPECT_FALSE(IsNumeric(other)) << other;
  EXPECT_EQ(LeadingInteger(" -12abc"), -12);
  EXPECT_EQ(LeadingInteger("99999999999999999999"), INT_MAX);
  EXPECT_EQ(LeadingInteger("-99999999999999999999"), INT_MIN);
  EXPECT_EQ(LeadingInteger("abc"), std::nullopt);
  EXPECT_FALSE(IsDigits("12a") || IsDigits(""));
}

}  // namespace
}  // namespace vorlix
