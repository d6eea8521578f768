// The pictures beside a call as they lie on the disk: the caller's own below "\data\callerpics\", then the number's
// network or country from the tables.
#pragma once

#include <functional>
#include <string>

#include "data/Folders.h"
#include "screens/display_ports.h"

namespace vorlix {

class LogoFiles : public DisplayLogos {
 public:
  struct Ports {
    const FileStore& files;
    const Folders& folders;
    std::function<std::string(const std::string& number)> networkPicture;  // Get_ProviderFile
    std::function<std::string(const std::string& number)> countryPicture;  // Get_StateFlagFile
  };

  // All ports must outlive the object.
  explicit LogoFiles(Ports ports) : ports_(std::move(ports)) {}

  std::string BookPicture(const oDataCall& call) override;
  std::string NumberPicture(const std::string& number) override;

 private:
  Ports ports_;
};

}  // namespace vorlix
