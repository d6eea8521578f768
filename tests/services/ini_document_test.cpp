#include "services/ini_document.h"

#include <gtest/gtest.h>

#include "fakes/Arrows.h"

namespace vorlix {
namespace {

TEST(IniDocument, ReadsUnderTheProfileRules) {
  using Row = std::pair<std::string, std::optional<std::string>>;  // the value of key b in section A
  for (const auto& [text, value] :
       {Row{"[A]\r\nb=1\r\n", "1"}, Row{"[a]\nB = 1 \n", "1"}, Row{"[A]\r\nb=\" 1 \"\r\n", " 1 "},
        Row{"[A]\r\nb='1'\r\nb=2\r\n", "1"}, Row{"[A]\r\n;b=0\r\nb=1;2\r\n", "1;2"}, Row{"\xEF\xBB\xBF[A]\r\nb=1", "1"},
        Row{"[X]\r\nb=0\r\n[A]\r\nc=0\r\n[A]\r\nb=1\r\n", "1"}, Row{"[ A ]\r\n  b  =  1=2\r\n", "1=2"},
        Row{std::string("\0\0junk\n[A\n=x\n[A]\nb=1\n", 20), "1"}, Row{"[A]\r\nb=\r\n", ""},
        Row{"b=1\r\n", std::nullopt}, Row{"[A]\r\n;b=1\r\n", std::nullopt}, Row{"", std::nullopt},
        Row{"[A]", std::nullopt}, Row{"[", std::nullopt}, Row{"=\n[]\n=\n", std::nullopt}}) {
    EXPECT_EQ(IniDocument(text).Get("A", "b"), value) << text;
    EXPECT_EQ(IniDocument(text).Text(), text);
  }
}

TEST(IniDocument, AWriteTouchesItsOwnLineOnly) {
  for (const auto& [before, after] :
       Arrows({"-> [A]\r\nb=9\r\n",
               "; kept\r\n[A]\r\n  b = 1 \r\n\r\n; c\r\nx\r\n-> ; kept\r\n[A]\r\nb=9\r\n\r\n; c\r\nx\r\n",
               "[A]\nc=1\n\n[B]\nb=1\n-> [A]\nc=1\nb=9\n\n[B]\nb=1\n", "[B]\r\nb=1-> [B]\r\nb=1\r\n[A]\r\nb=9\r\n",
               "[A]-> [A]\r\nb=9\r\n", "[a]\r\nb=1\r\nB=2\r\n-> [a]\r\nb=9\r\nB=2\r\n"})) {
    IniDocument document(before);
    document.Set("A", "b", "9");
    EXPECT_EQ(document.Text(), after);
    EXPECT_EQ(document.Get("a", "B"), "9");
  }
}

TEST(IniDocument, ValuesComeBackAsTheyWereWrittenAndForgeNothing) {
  for (const std::string value : {" blanks ", "\"quoted\"", "'", "a\"b", "", ";", "[x]", "a=b", "\xE4\xF6\xFC"}) {
    IniDocument document("[A]\r\nz=1\r\n");
    document.Set("A", "b", value);
    EXPECT_EQ(IniDocument(document.Text()).Get("A", "b"), value);
  }
  IniDocument document("[A]\r\n");
  document.Set("A", "b", "1\r\n[B]\r\nc=2");
  EXPECT_FALSE(IniDocument(document.Text()).Get("B", "c").has_value());
}

TEST(IniDocument, DeletesKeysAndSectionsAndKeepsTheByteOrderMark) {
  IniDocument document(
      "\xEF\xBB\xBF"
      "a=1\r\nb=2\r\n[A]\r\nb=1\r\nc=2\r\n[B]\r\nb=3\r\n[a]\r\nd=4\r\n");
  document.Set("", "a", "4");
  EXPECT_EQ(document.Section("").front(), std::pair(std::string("a"), std::string("4")));
  EXPECT_TRUE(document.DeleteKey("", "a") && document.DeleteSection(""));
  EXPECT_TRUE(document.DeleteKey("A", "B") && !document.DeleteKey("A", "b"));
  EXPECT_EQ(document.Section("A").size(), 2u);
  EXPECT_TRUE(document.DeleteSection("A") && !document.DeleteSection("A"));
  EXPECT_EQ(document.Text(), "\xEF\xBB\xBF[B]\r\nb=3\r\n");
}

TEST(IniDocument, ACommentComesOnceAndNeverOverTheUsersOwn) {
  const char* rows[][2] = {
      {"[B]\r\nc=1\r\n[a]\r\nb=2", "[B]\r\nc=1\r\n[a]\r\n; why b=3\r\nb=2"},
      {"[A]\r\n ; mine\r\nb=2\r\n", "[A]\r\n ; mine\r\nb=2\r\n"},
      {"c=1", "c=1\r\n[A]\r\n; why b=3\r\n"},
  };
  for (const auto& [before, after] : rows) {
    IniDocument document(before);
    for (int i = 0; i < 2; ++i)
      document.Comment("A", "why\nb=3");
    EXPECT_EQ(document.Text(), after);
  }
}

}  // namespace
}  // namespace vorlix
