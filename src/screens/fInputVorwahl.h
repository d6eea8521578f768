// The questions for the own country and area code, asked when a line source has started and they cannot be used; and,
// with a CAPI driver, the test call by which the driver's prefix of national numbers is found out. Decides what is
// asked and what an answer means; how it is asked is the view's.
#pragma once

#include <functional>
#include <string>

#include "core/pipeline_ports.h"
#include "data/Settings.h"
#include "data/modAPI_INI.h"
#include "screens/FirstStart.h"

namespace vorlix {

class fInputVorwahl : public PrefixInput {
 public:
  struct Ports {
    FirstStartView& view;
    std::function<bool()> canAsk;  // somebody is there to answer
    Settings& settings;
    modAPI_INI& ini;
    std::function<void()> reloadTables;  // what depends on the own country
  };

  // All ports must outlive the object.
  explicit fInputVorwahl(Ports ports) : ports_(std::move(ports)) {}

  // Usable codes: digits without the zeros that are dialled in front of them.
  static bool CheckData(const std::string& myVWL, const std::string& myVWO);

  void Open() override;
  bool IsAsking() override { return PrefixActiveCheck_; }
  // The number of the test call, with what the driver put in front of it: the network's prefix and the zeros.
  void DataToPrefixCheck(const std::string& number, const std::string& infoPrefix, const std::string& zeros);

 private:
  bool AskCodes();
  void Store();

  Ports ports_;
  bool PrefixActiveCheck_ = false;
  bool open_ = false;
};

}  // namespace vorlix
