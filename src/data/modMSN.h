// The own numbers of the line and which functions run for calls to each. The row "all" stands for every number that has
// none of its own. Stored in section MSN of the main settings file, a row under each of the keys 0 to 64.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/oDataMSN.h"
#include "core/pipeline_ports.h"
#include "data/Settings.h"
#include "data/modAPI_INI.h"

namespace vorlix {

class modMSN : public OwnNumbers {
 public:
  // References must outlive the object.
  struct Ports {
    modAPI_INI& ini;
    const Settings& settings;
    const WriteBlocks& blocks;
    // Told for each number that has a hot key: the row in the table of hot keys, 0 to 5. May be empty.
    std::function<void(int row, const std::string& msn)> tieHotKey;
  };

  explicit modMSN(Ports ports) : ports_(std::move(ports)) {}

  // Fills the table anew. A section of before version 2.10 is written back in today's form. Needs no loaded settings:
  // the start reads the own numbers first.
  void MSNRead();
  // Rewrites the section in the order of the table. Hot keys of single numbers are cleared, in the table too, unless
  // that copy mode is on.
  void MSNWrite();

  bool IsMSNFunctionActiv(const std::string& msn, int function) override;
  // The row "all" is no number.
  bool IsOwnNumber(const std::string& msn) override;
  // Its owner may change it; MSNWrite keeps the change.
  clsCollection& Table() override { return table_; }

 private:
  void Write(int copyOption);
  void AddRow(const std::string& stored);

  Ports ports_;
  clsCollection table_;
};

}  // namespace vorlix
