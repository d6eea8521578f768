#include "services/ini_document.h"

#include <gtest/gtest.h>

namespace vorlix {
namespace {

TEST(IniDocument, ReadsUnderTheProfileRules) {
  struct Row {
    std::string text;
    const char* value;  // of key b in section A
  };
  const Row rows[] = {
      {"[A]\r\nb=1\r\n", "1"},
      {"[a]\nB = 1 \n", "1"},
      {"[A]\r\nb=\" 1 \"\r\n", " 1 "},
      {"[A]\r\nb='1'\r\nb=2\r\n", "1"},
      {"[A]\r\n;b=0\r\nb=1;2\r\n", "1;2"},
      {"\xEF\xBB\xBF[A]\r\nb=1", "1"},
      {"[X]\r\nb=0\r\n[A]\r\nc=0\r\n[A]\r\nb=1\r\n", "1"},
      {"[ A ]\r\n  b  =  1=2\r\n", "1=2"},
      {std::string("\0\0junk\n[A\n=x\n[A]\nb=1\n", 20), "1"},
      {"[A]\r\nb=\r\n", ""},
      {"b=1\r\n", nullptr},
      {"[A]\r\n;b=1\r\n", nullptr},
      {"", nullptr},
      {"[A]", nullptr},
      {"[", nullptr},
      {"=\n[]\n=\n", nullptr},
  };
  for (const Row& row : rows) {
    const auto value = IniDocument(row.text).Get("A", "b");
    EXPECT_EQ(value.has_value(), row.value != nullptr) << row.text;
    if (value && row.value != nullptr) {
      EXPECT_EQ(*value, row.value) << row.text;
    }
    EXPECT_EQ(IniDocument(row.text).Text(), row.text);
  }
}

TEST(IniDocument, AWriteTouchesItsOwnLineOnly) {
  struct Row {
    const char* before;
    const char* after;  // with b=9 in section A
  };
  const Row rows[] = {
      {"", "[A]\r\nb=9\r\n"},
      {"; kept\r\n[A]\r\n  b = 1 \r\n\r\n; c\r\nx\r\n", "; kept\r\n[A]\r\nb=9\r\n\r\n; c\r\nx\r\n"},
      {"[A]\nc=1\n\n[B]\nb=1\n", "[A]\nc=1\nb=9\n\n[B]\nb=1\n"},
      {"[B]\r\nb=1", "[B]\r\nb=1\r\n[A]\r\nb=9\r\n"},
      {"[A]", "[A]\r\nb=9\r\n"},
      {"[a]\r\nb=1\r\nB=2\r\n", "[a]\r\nb=9\r\nB=2\r\n"},
  };
  for (const Row& row : rows) {
    IniDocument document(row.before);
    document.Set("A", "b", "9");
    EXPECT_EQ(document.Text(), row.after);
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

TEST(IniDocument, KeepsTheByteOrderMarkWhateverItsFirstLineSuffers) {
  IniDocument document(
      "\xEF\xBB\xBF"
      "a=1\r\nb=2\r\n[A]\r\nc=3\r\n");
  EXPECT_EQ(document.Section("").front().first, "a");
  document.Set("", "a", "4");
  EXPECT_EQ(document.Text(),
            "\xEF\xBB\xBF"
            "a=4\r\nb=2\r\n[A]\r\nc=3\r\n");
  EXPECT_TRUE(document.DeleteKey("", "a"));
  EXPECT_TRUE(document.DeleteSection(""));
  EXPECT_EQ(document.Text(), "\xEF\xBB\xBF[A]\r\nc=3\r\n");
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

TEST(IniDocument, DeletesKeysAndSections) {
  IniDocument document("[A]\r\nb=1\r\nc=2\r\n[B]\r\nb=3\r\n[a]\r\nd=4\r\n");
  EXPECT_TRUE(document.DeleteKey("A", "B"));
  EXPECT_FALSE(document.DeleteKey("A", "b"));
  EXPECT_EQ(document.Get("B", "b"), "3");
  EXPECT_EQ(document.Section("A").size(), 2u);
  EXPECT_TRUE(document.DeleteSection("A"));
  EXPECT_FALSE(document.DeleteSection("A"));
  EXPECT_EQ(document.Text(), "[B]\r\nb=3\r\n");
}

}  // namespace
}  // namespace vorlix
