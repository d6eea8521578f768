// The shipped language file against the texts in the code.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include <gtest/gtest.h>

#include "services/ini_document.h"
#include "services/text.h"

namespace vorlix {
namespace {

const std::string kRoot = std::string(VORLIX_TEST_DATA) + "/../..";

using Texts = std::map<std::string, std::string>;

std::string OutputOf(const std::string& command) {
  std::string output;
  FILE* pipe = popen(command.c_str(), "r");
  for (int byte = pipe == nullptr ? EOF : std::fgetc(pipe); byte != EOF; byte = std::fgetc(pipe))
    output += static_cast<char>(byte);
  EXPECT_TRUE(pipe != nullptr && pclose(pipe) == 0) << command;
  return output;
}

// Key to German default.
Texts TextsInTheCode() {
  Texts texts;
  for (const std::string& line : Split(OutputOf("'" + kRoot + "/tools/language_keys'"), "\n")) {
    if (line.empty()) continue;
    const std::size_t equals = line.find('=');
    const std::string key = line.substr(0, equals);
    EXPECT_TRUE(texts.emplace(key, line.substr(equals + 1)).second) << key << " has two different German defaults";
  }
  EXPECT_GT(texts.size(), 100U);
  return texts;
}

std::size_t Count(const std::string& text, std::string_view part) {
  return Split(text, part).size() - 1;
}

TEST(EnglishLanguageFile, HasExactlyTheKeysOfTheCode) {
  std::ifstream in(kRoot + "/base/language_en.ini", std::ios::binary);
  const std::string whole{std::istreambuf_iterator<char>(in), {}};
  EXPECT_EQ(Count(whole, "\n"), Count(whole, kLineEnd));
  EXPECT_TRUE(whole.ends_with(kLineEnd));
  Texts file, code = TextsInTheCode();
  for (const auto& [key, text] : IniDocument(whole).Section("Data"))
    EXPECT_TRUE(file.emplace(key, text).second) << key << " stands twice";
  EXPECT_EQ(file["CountryID"] + file["Language"], "enenglish");
  code.emplace("CountryID", "de");
  code.emplace("Language", "deutsch");
  for (const auto& [key, text] : code)
    EXPECT_TRUE(file.contains(key)) << "base/language_en.ini lacks " << key << "=" << text;

  // What the program puts behind or into a text finds the same place in the translation.
  for (const auto& [key, text] : file) {
    EXPECT_TRUE(code.contains(key)) << "base/language_en.ini has a key that the code does not know: " << key;
    const std::string& german = code[key];
    EXPECT_FALSE(text.empty()) << key;
    EXPECT_EQ(text.ends_with(':'), german.ends_with(':')) << key;
    for (const char* mark : {"<CR>", "<TAB>", "#"})
      EXPECT_EQ(Count(text, mark), Count(german, mark)) << key << mark;
  }
}

}  // namespace
}  // namespace vorlix
