// The text of a settings file.
#include "check.h"
#include "services/ini_document.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorlix;
  const std::string text(fuzz::Text(data, size));
  IniDocument document(text);
  fuzz::Check(document.Text() == text, "what is not changed stays");
  for (const char* section : {"General", "CAPI", ""}) {
    document.Section(section);
    document.Set(section, "Key", "value");
    fuzz::Check(document.Get(section, "Key") == "value", "what was set is there");
    fuzz::Check(IniDocument(document.Text()).Get(section, "Key") == "value", "and in the file");
    document.DeleteKey(section, "Key");
  }
  document.DeleteSection("General");
  document.Text();
  return 0;
}
