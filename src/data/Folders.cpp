#include "data/Folders.h"

#include "data/paths.h"
#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/ini_document.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::string_view kPathsFile = "/Vorlixpaths.ini";
constexpr std::string_view kProgramNames = R"(\base\)";
constexpr std::string_view kDataNames[] = {R"(\data\)", R"(\update\)", R"(\log\)", R"(\archiv\)", R"(\backup\)"};

std::string DefaultFolder(const Folders::Surroundings& surroundings) {
  const std::string base =
      surroundings.dataHome.starts_with("/") ? surroundings.dataHome : surroundings.home + "/.local/share";
  return WithoutFinalSlash(base) + "/Vorlix";
}

}  // namespace

std::string RealPath(std::string_view path, const std::string& folder) {
  std::string real = WithoutFinalSlash(Replace(path, "\\", "/"));
  if (real.starts_with("/")) return real;
  if (real.starts_with("./")) real.erase(0, 2);
  return folder + "/" + real;
}

Folders::Folders(const FileStore& files, Surroundings surroundings)
    : programFolder_(WithoutFinalSlash(surroundings.programFolder)) {
  Trapped("modAPI_INI.ReadPaths", [&] {
    const std::string defaultFolder = DefaultFolder(surroundings);
    programData_ = defaultFolder;
    ReadPathsFile(files, defaultFolder);
    if (!surroundings.chosenFolder.empty()) {
      programData_ = RealPath(surroundings.chosenFolder, programFolder_);
      bookPath_.clear();
      notice_.clear();
    }
    if (bookPath_.empty()) bookPath_ = programData_ + "/data";
    bookPath_ += "/";
  });
}

void Folders::ReadPathsFile(const FileStore& files, const std::string& defaultFolder) {
  const std::string path = programFolder_ + std::string(kPathsFile);
  std::string text;
  if (!files.Stat(path).IsFile() || !files.Read(path, text)) return;
  const IniDocument paths(text);
  bookRefresh_ = LeadingInteger(paths.Get("Paths", "BookRefresh").value_or("0")).value_or(0) > 0;
  std::string data = Replace(paths.Get("Paths", "ProgramData").value_or("1"), "\\", "/");
  if (data.ends_with('/')) data.pop_back();
  if (data.empty()) data = "0";
  if (!IsNumeric(data)) {
    programData_ = RealPath(data, programFolder_);
  } else if (LeadingInteger(data).value_or(1) == 0) {
    DataBesideProgram(files, defaultFolder);
  }
  const std::string book = paths.Get("Paths", "BookPath").value_or("");
  if (!book.empty() && !IsNumeric(book)) bookPath_ = RealPath(book, programFolder_);
}

void Folders::DataBesideProgram(const FileStore& files, const std::string& defaultFolder) {
  if (files.IsWritableFolder(programFolder_)) {
    programData_ = programFolder_;
    return;
  }
  programData_ = defaultFolder;
  const std::string lineEnd(kLineEnd);
  notice_ = std::string("Das aktuelle Datenverzeichnis ist"_ansi) + " " + programFolder_ + lineEnd + lineEnd +
            std::string("In einem Unterverzeichnis von"_ansi) + " " + programFolder_ + " " +
            std::string("ist das Schreiben nicht erlaubt!"_ansi) + lineEnd + programFolder_ + std::string(kPathsFile) +
            " " + std::string("wird ignoriert!"_ansi) + lineEnd +
            std::string("Bitte lassen Sie das Problem vom Setup korrigieren!"_ansi);
}

std::string Folders::GetMainPath(std::string_view file) const {
  if (file.empty()) return programData_ + "/data/Vorlix.ini";
  if (StartsWithNoCase(file, kProgramNames)) return programFolder_ + Replace(file, "\\", "/");
  for (const std::string_view name : kDataNames) {
    if (StartsWithNoCase(file, name)) return programData_ + Replace(file, "\\", "/");
  }
  return std::string(file);
}

}  // namespace vorlix
