// The questions for the own country and area code, asked when a line source has started and they cannot be used; and,
// with a CAPI driver, the test call by which the driver's prefix of national numbers is found out. Decides what is
// asked and what an answer means; how it is asked is the view's.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "core/pipeline_ports.h"
#include "data/Settings.h"
#include "data/modSettings.h"
#include "screens/Questions.h"

namespace vorlix {

struct AreaCodes {
  std::string myVWL, myVWO;
};

// The first page.
struct AreaCodePage {
  std::string note;
  AreaCodes codes;
  bool isWrongVWL = false, isWrongVWO = false;
};

// A view may answer from inside the call or later; each answer is given once.
class fInputVorwahlView {
 public:
  virtual ~fInputVorwahlView() = default;
  // Shows the first page, or other content on it. Nothing is answered when the user leaves off.
  virtual void AskCodes(const AreaCodePage& page,
                        std::function<void(const std::optional<AreaCodes>& codes)> answered) = 0;
  // Shows the second page, which asks for a call of the own line, until the user goes on.
  virtual void AskTestCall(const std::string& text, std::function<void()> finished) = 0;
  // What the test call has told, on the second page.
  virtual void ShowTestCall(const std::string& text) = 0;
  virtual void Close() = 0;
};

// The pages as questions.
class AreaCodeQuestions : public fInputVorwahlView {
 public:
  explicit AreaCodeQuestions(Questions& view) : view_(view) {}

  void AskCodes(const AreaCodePage& page, std::function<void(const std::optional<AreaCodes>& codes)> answered) override;
  void AskTestCall(const std::string& text, std::function<void()> finished) override;
  void ShowTestCall(const std::string& text) override { view_.Tell(text); }
  void Close() override {}

 private:
  Questions& view_;
};

class fInputVorwahl : public PrefixInput {
 public:
  struct Ports {
    fInputVorwahlView& view;
    std::function<bool()> canAsk;  // somebody is there to answer
    Settings& settings;
    modSettings& store;
    std::function<void()> reloadTables;  // what depends on the own country
  };

  // All ports must outlive the object.
  explicit fInputVorwahl(Ports ports) : ports_(std::move(ports)) {}

  // Both are usable codes.
  static bool CheckData(const std::string& myVWL, const std::string& myVWO);

  void Open() override;
  bool IsAsking() override { return PrefixActiveCheck_; }
  // The number of the test call, with what the driver put in front of it: the network's prefix and the zeros.
  void DataToPrefixCheck(const std::string& number, const std::string& infoPrefix, const std::string& zeros);

 private:
  void AskCodes(const AreaCodePage& page);
  void TakeCodes(const std::optional<AreaCodes>& codes);
  void AskTestCall();
  void Finish();
  void Store();
  void Close();

  Ports ports_;
  bool PrefixActiveCheck_ = false;
  bool open_ = false;
};

}  // namespace vorlix
