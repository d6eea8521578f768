#include "screens/LogoFiles.h"

#include "services/clsErrorHandling.h"

namespace vorlix {

// The card names a file, not a path: a card that came from elsewhere may not lead out of the folder.
std::string LogoFiles::BookPicture(const oDataCall& call) {
  return Trapped("LogoFiles.BookPicture", [&]() -> std::string {
    const std::string& image = call.Card().BookVCsImage;
    if (image.empty() || image.find_first_of(std::string_view("/\\\0", 3)) != std::string::npos) return {};
    std::string path = ports_.folders.GetMainPath(R"(\data\callerpics\)" + image);
    return ports_.files.Stat(path).IsFile() ? path : std::string();
  });
}

std::string LogoFiles::NumberPicture(const std::string& number) {
  return Trapped("LogoFiles.NumberPicture", [&] {
    std::string picture = ports_.networkPicture(number);
    return picture.empty() ? ports_.countryPicture(number) : picture;
  });
}

}  // namespace vorlix
