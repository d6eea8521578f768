#include "services/modLanguage.h"

#include "services/clsErrorHandling.h"
#include "services/ini_document.h"
#include "services/text.h"

namespace vorlix {
namespace {

// The catalogue, process-wide as the texts are.
struct Catalogue {
  std::string code = "de";
  std::string file;
  bool missing = true;
  bool developmentRun = false;
  IniDocument document;
};

Catalogue& Current() {
  static Catalogue catalogue;
  return catalogue;
}

constexpr std::string_view kSection = "Data";

std::string Expanded(std::string_view text) {
  return Replace(Replace(text, "<CR>", kLineEnd), "<TAB>", "\t");
}

// In a development run one sees at a glance what is and what is not translated.
std::string Marked(std::string_view key, const std::string& value, std::string_view fallback) {
  const bool named = key == "Language" || key == "CountryID";
  if (!Current().developmentRun || named) return value.empty() ? std::string(fallback) : value;
  if (!value.empty()) return "[" + value + "]";
  modLanguage::Log(key, fallback);
  return "?" + std::string(fallback) + "?";
}

}  // namespace

namespace modLanguage {

void LanguageInit(std::string_view code, const ReadFile& read) {
  Trapped(
      "modLanguage.LanguageInit",
      [&] {
        Catalogue& catalogue = Current();
        if (!code.empty()) catalogue.code = code;
        catalogue.file = R"(\base\language_)" + catalogue.code + ".ini";
        catalogue.missing = true;  // should reading fail, the texts of the former language are not shown as this one's
        const auto text = read(catalogue.file);
        catalogue.missing = !text.has_value();
        catalogue.document = IniDocument(text.value_or(std::string()));
      },
      code);
}

std::string_view CurrentCode() {
  return Current().code;
}

std::string_view CurrentFile() {
  return Current().file;
}

bool IsFileMissing() {
  return Current().missing;
}

void SetDevelopmentRun(bool on) {
  Current().developmentRun = on;
}

void Log(std::string_view key, std::string_view fallback) {
  ErrorHandling().LogMissingText(key, fallback);
}

}  // namespace modLanguage

std::string LoadLangKey(std::string_view key, std::string_view fallback) {
  return Trapped("modLanguage.LoadLangKey", [&] {
    if (Current().missing) return Expanded(fallback);
    return Expanded(Marked(key, Current().document.Get(kSection, key).value_or(std::string()), fallback));
  });
}

}  // namespace vorlix
