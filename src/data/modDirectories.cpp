#include "data/modDirectories.h"

#include <algorithm>
#include <string>
#include <vector>

#include "data/paths.h"
#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::string_view kShipped[] = {
    R"(\base\designs\)", R"(\base\areacodes\)",     R"(\base\provider\)",  R"(\base\provider\images\)",
    R"(\base\sounds\)",  R"(\base\states\images\)", R"(\base\templates\)",
};

constexpr std::string_view kMade[] = {
    R"(\data\)", R"(\log\)", R"(\archiv\)", R"(\backup\)", R"(\update\)", R"(\data\callerpics\)", R"(\data\search\)",
};

void Tell(modAll_MsgBox& messages, const std::string& text, const std::vector<std::string>& folders) {
  const std::string lineEnd(kLineEnd);
  messages.MsgBoxNew(text + lineEnd + lineEnd + Join(folders, kLineEnd), kMsgError);
}

std::vector<std::string> MissingShipped(const FileStore& files, const Folders& folders) {
  std::vector<std::string> missing;
  for (const std::string_view name : kShipped) {
    const std::string path = folders.GetMainPath(name);
    if (!files.Stat(WithoutFinalSlash(path)).IsFolder()) missing.push_back(path);
  }
  return missing;
}

std::vector<std::string> MakeMissing(FileStore& files, const Folders& folders) {
  std::vector<std::string> wanted{folders.BookPath(), folders.ProgramData()};
  for (const std::string_view name : kMade) {
    wanted.push_back(folders.GetMainPath(name));
  }
  std::vector<std::string> failed;
  for (const std::string& path : wanted) {
    if (!MakeDirectory(files, path)) failed.push_back(path);
  }
  return failed;
}

}  // namespace

bool CheckDirectories(FileStore& files, const Folders& folders, modAll_MsgBox& messages) {
  return Trapped("fMain.CheckDirectories", [&] {
    if (const auto missing = MissingShipped(files, folders); !missing.empty()) {
      Tell(messages, LoadLangKey("Message_DirectoriesNotFound", "Wichtige Verzeichnisse wurden nicht gefunden!"_ansi),
           missing);
      return true;
    }
    const auto failed = MakeMissing(files, folders);
    if (failed.empty()) return true;
    Tell(messages, LoadLangKey("Message_ErrorMakeDir", "Verzeichnis konnte nicht angelegt werden!"_ansi), failed);
    return std::ranges::find(failed, folders.ProgramData()) == failed.end();
  });
}

}  // namespace vorlix
