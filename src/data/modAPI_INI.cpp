#include "data/modAPI_INI.h"

#include <cmath>
#include <cstdlib>

#include "data/paths.h"
#include "services/clsErrorHandling.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::size_t kMostText = 2047;
constexpr std::size_t kMostNumber = 254;

}  // namespace

std::string modAPI_INI::GetSettStr(std::string_view section, std::string_view key, std::string_view fallback,
                                   std::string_view file, bool defaultIfEmpty, bool numericOnly) {
  return Trapped(
      "modAPI_INI.GetSettStr",
      [&] {
        std::string value = Load(file).document.Get(section, key).value_or(std::string(fallback)).substr(0, kMostText);
        const bool unusable = (defaultIfEmpty && value.empty()) || (numericOnly && !IsNumeric(value));
        return unusable ? std::string(fallback) : value;
      },
      section, key);
}

int modAPI_INI::GetSettLng(std::string_view section, std::string_view key, int fallback, int minimum, int maximum,
                           bool useDefaultOutside, std::string_view file) {
  return Trapped(
      "modAPI_INI.GetSettLng",
      [&] {
        const auto text = Load(file).document.Get(section, key);
        const int value = text ? LeadingInteger(*text).value_or(0) : fallback;
        if (minimum == 0 && maximum == 0) return value;
        return Range(minimum, maximum, value, useDefaultOutside, fallback);
      },
      section, key);
}

bool modAPI_INI::GetSettBool(std::string_view section, std::string_view key, bool fallback, std::string_view file) {
  return GetSettLng(section, key, fallback ? 1 : 0, 0, 1, false, file) == 1;
}

double modAPI_INI::GetSettCur(std::string_view section, std::string_view key, double fallback, std::string_view file) {
  return Trapped(
      "modAPI_INI.GetSettCur",
      [&] {
        const auto text = Load(file).document.Get(section, key);
        if (!text || !IsNumeric(text->substr(0, kMostNumber))) return fallback;
        const double value = std::strtod(Replace(text->substr(0, kMostNumber), ",", ".").c_str(), nullptr);
        return std::round(value * 10000) / 10000;
      },
      section, key);
}

void modAPI_INI::SetSettStr(std::string_view section, std::string_view key, std::string_view value,
                            std::string_view file) {
  if (blocks_.SettingsWriteBlocked) return;
  Trapped(
      "modAPI_INI.SetSettStr",
      [&] {
        File& loaded = Load(file);
        if (loaded.document.Get(section, key) == std::string(value)) return;
        loaded.document.Set(section, key, value);
        Changed(GetMainPath(file), loaded);
      },
      section, key);
}

void modAPI_INI::SetComment(std::string_view section, std::string_view text) {
  if (blocks_.SettingsWriteBlocked) return;
  Trapped(
      "modAPI_INI.SetComment",
      [&] {
        File& loaded = Load({});
        const std::string before = loaded.document.Text();
        loaded.document.Comment(section, text);
        if (loaded.document.Text() != before) Changed(GetMainPath({}), loaded);
      },
      section);
}

void modAPI_INI::DeleteKey(std::string_view section, std::string_view key, std::string_view file) {
  Trapped(
      "modAPI_INI.DeleteKey",
      [&] {
        File& loaded = Load(file);
        if (loaded.document.DeleteKey(section, key)) Changed(GetMainPath(file), loaded);
      },
      section, key);
}

void modAPI_INI::DeleteSection(std::string_view section, std::string_view file) {
  Trapped(
      "modAPI_INI.DeleteSection",
      [&] {
        File& loaded = Load(file);
        if (loaded.document.DeleteSection(section)) Changed(GetMainPath(file), loaded);
      },
      section);
}

int modAPI_INI::Range(int minimum, int maximum, int value, bool useDefaultOutside, int fallback) {
  const bool below = value < minimum;
  const bool above = maximum != 0 && value > maximum;
  if (!below && !above) return value;
  if (useDefaultOutside) return fallback;
  return below ? minimum : maximum;
}

// Another program may write the file too: it is read again whenever it looks different from what was left.
modAPI_INI::File& modAPI_INI::Load(std::string_view name) {
  const std::string path = GetMainPath(name);
  const auto [entry, isNew] = loaded_.try_emplace(path);
  File& file = entry->second;
  if (file.fresh && batches_ > 0) return file;
  const FileInfo info = files_.Stat(path);
  if (isNew || info != file.info || !file.readable) {
    std::string text;
    file.readable = !info.IsFile() || files_.Read(path, text);
    if (!file.readable) text.clear();
    file.document = IniDocument(text);
    file.info = info;
  }
  file.fresh = batches_ > 0;
  return file;
}

void modAPI_INI::Changed(const std::string& path, File& file) {
  file.changed = true;
  if (batches_ == 0) Write(path, file);
}

void modAPI_INI::Write(const std::string& path, File& file) {
  if (!file.changed) return;
  file.changed = false;
  // A file that cannot be read now still holds all settings: it is not replaced by one that knows a single key.
  const bool written = file.readable && OverwriteMakingFolder(files_, path, file.document.Text());
  file.info = files_.Stat(path);
  // What is on disk counts: a value that could not be written is not kept in memory either.
  if (!written) loaded_.erase(path);
}

void modAPI_INI::EndBatch() {
  if (--batches_ > 0) return;
  for (auto next = loaded_.begin(); next != loaded_.end();) {
    const auto entry = next++;
    entry->second.fresh = false;
    Trapped("modAPI_INI.EndBatch", [&] { Write(entry->first, entry->second); });
  }
}

}  // namespace vorlix
