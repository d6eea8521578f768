#include "screens/SkinLoader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <span>
#include <vector>

#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/ini_document.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {
namespace {

enum class Kind { kImage, kClassic, kBoth };

struct PictureRow {
  std::string_view name;
  Kind kind;
  bool isButton = false;
};

constexpr PictureRow kPictures[] = {
    {"display_background", Kind::kImage},  {"background_top", Kind::kImage},    {"background_mid", Kind::kImage},
    {"background_bot", Kind::kImage},      {"display_glass", Kind::kImage},     {"display_glass_color", Kind::kImage},
    {"newslist_background", Kind::kImage}, {"vcard_background", Kind::kImage},  {"classic_background", Kind::kClassic},
    {"display_grip", Kind::kBoth},         {"display_grip_color", Kind::kBoth}, {"nobody", Kind::kBoth},
    {"button_stop", Kind::kBoth, true},    {"button_bell", Kind::kBoth, true},  {"button_eraser", Kind::kBoth, true},
};

// In the order in which they are looked for.
constexpr std::array<std::string_view, 2> kPictureKinds{".jpg", ".gif"};
constexpr std::array<std::string_view, 1> kButtonKinds{".png"};

constexpr std::string_view kPlaces[] = {R"(\data\designs\)", R"(\base\designs\)"};

// The name is written by hand: it may not lead out of the folder.
bool IsUsable(const std::string& name) {
  return !name.empty() && !name.starts_with('.') && name.find_first_of("/\\") == std::string::npos;
}

// The entry of a folder, a real path with "/" at its end: of that very name, or else of one that differs in case only.
std::string EntryOf(const FileStore& files, const std::string& folder, const std::string& name) {
  const std::vector<std::string> entries = files.List(folder);
  if (std::ranges::find(entries, name) != entries.end()) return folder + name;
  const auto like = std::ranges::find_if(entries, [&](const std::string& entry) { return EqualNoCase(entry, name); });
  return like == entries.end() ? std::string() : folder + *like;
}

// A file that is empty, cut at its front or of another kind cannot be loaded: it counts as missing.
bool IsPicture(const FileStore& files, const std::string& path) {
  std::string bytes;
  if (!files.Stat(path).IsFile() || !files.Read(path, bytes)) return false;
  return bytes.starts_with("\xFF\xD8\xFF") || bytes.starts_with("GIF87a") || bytes.starts_with("GIF89a");
}

// Of a button only the path is kept.
std::string PicturePath(const FileStore& files, const std::string& folder, const PictureRow& row) {
  for (const std::string_view kind : row.isButton ? std::span<const std::string_view>(kButtonKinds)
                                                  : std::span<const std::string_view>(kPictureKinds)) {
    std::string path = folder + std::string(row.name) + std::string(kind);
    if (row.isButton ? files.Stat(path).IsFile() : IsPicture(files, path)) return path;
  }
  return {};
}

Rgb ColorOf(const IniDocument& file, std::string_view key, Rgb fallback) {
  return HexToLong(file.Get("skin", key).value_or(""), fallback);
}

}  // namespace

Rgb HexToLong(std::string_view digits, Rgb fallback) {
  Rgb color = 0;
  const char* const end = digits.data() + digits.size();
  const auto [read, error] = std::from_chars(digits.data(), end, color, 16);
  return digits.size() == 6 && error == std::errc() && read == end ? color : fallback;
}

bool SkinLoader::SkinData(const std::string& name, Skin& skin, bool report) {
  return Trapped(
      "modSettings.SkinData",
      [&] {
        Skin loaded;
        const std::string fault = Load(name, loaded);
        skin = fault.empty() ? std::move(loaded) : Skin{};
        skin.name = name;
        if (!fault.empty()) Tell(name, fault, report);
        return fault.empty();
      },
      name, report);
}

void SkinLoader::Tell(const std::string& name, const std::string& fault, bool report) {
  if (report) {
    ports_.messages.MsgBoxLock(fault, kMsgWarning);
  } else {
    ErrorHandling().ErrorLogForceWrite("modSettings.SkinData", {name}, 0, WithoutControls(fault));
  }
}

// The real path of the skin's own file. The name is typed by hand: its case does not matter.
std::string SkinLoader::FindFile(const std::string& name) const {
  if (!IsUsable(name)) return {};
  for (const std::string_view place : kPlaces) {
    const std::string folder = EntryOf(ports_.files, ports_.folders.GetMainPath(place), name);
    if (folder.empty()) continue;
    std::string file = EntryOf(ports_.files, folder + "/", "skin_" + name + ".ini");
    if (ports_.files.Stat(file).IsFile()) return file;
  }
  return {};
}

// The lines of the fault text; empty for a whole skin.
std::string SkinLoader::Load(const std::string& name, Skin& skin) const {
  const std::string path = FindFile(name);
  std::string text;
  if (path.empty() || !ports_.files.Read(path, text)) {
    return LoadLangKey("ModuleSettings_Msg_SkinsFault", "Die Skins sind unvollständig!"_ansi) + std::string(kLineEnd);
  }
  const std::string folder = path.substr(0, path.rfind('/') + 1);
  const IniDocument file(text);
  skin.isNeutral = false;
  skin.isClassic = EqualNoCase(file.Get("skin", "mode").value_or(""), "classic");
  skin.colorText = ColorOf(file, "colorText", 0xFFFFFF);
  skin.colorMainBack = ColorOf(file, "colorMainBack", 0x636563);
  skin.colorTextBack = ColorOf(file, "colorTextBack", 0x090A0B);
  std::string fault;
  for (const PictureRow& row : kPictures) {
    if (row.kind == (skin.isClassic ? Kind::kImage : Kind::kClassic)) continue;
    const std::string picture = PicturePath(ports_.files, folder, row);
    if (picture.empty()) {
      fault += std::string(row.name) + (row.isButton ? " PNG " : " GIF/JPG ") +
               LoadLangKey("ModuleSettings_Msg_SkinsMissing", "fehlt!"_ansi) + std::string(kLineEnd);
    } else {
      skin.pictures.emplace(row.name, picture);
    }
  }
  return fault;
}

}  // namespace vorlix
