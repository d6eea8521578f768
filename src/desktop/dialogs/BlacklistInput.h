// The input of one entry of the blacklist, "number|own numbers|name": a field for each.
#pragma once

#include <functional>
#include <string>

#include "desktop/dialogs/dialog_parts.h"

namespace vorlix {

class BlacklistInput : public QDialog {
 public:
  // Takes the text; the input stays open while that gives false.
  using Take = std::function<bool(const std::string& text)>;

  // Holds the parent until it is closed, and deletes itself then.
  BlacklistInput(QWidget& parent, const std::string& text, bool isNew, Take take);

 private:
  void Check();

  Take take_;
  QLineEdit *number_, *MSN_, *name_;
};

}  // namespace vorlix
