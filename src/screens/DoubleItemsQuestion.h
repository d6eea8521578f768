// Two telephone-book entries of one number: asks which is to stay, question by question.
#pragma once

#include <functional>

#include "data/modBook.h"
#include "screens/FirstStart.h"

namespace vorlix {

class DoubleItemsQuestion : public AskForDoubleItems {
 public:
  // Where nobody is there to answer, the entry that is there stays. The view must outlive the object.
  DoubleItemsQuestion(FirstStartView& view, std::function<bool()> canAsk) : view_(view), canAsk_(std::move(canAsk)) {}

  DoubleItem ShowDialog(const std::string& number, const std::string& oldName, const std::string& oldAddress,
                        std::string& newName, std::string& newAddress) override;

 private:
  FirstStartView& view_;
  std::function<bool()> canAsk_;
};

}  // namespace vorlix
