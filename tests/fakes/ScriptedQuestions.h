// A person who answers questions in a given order, and then no more.
#pragma once

#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "screens/Questions.h"

namespace vorlix {

class ScriptedQuestions : public Questions {
 public:
  explicit ScriptedQuestions(std::deque<std::string> answers) : answers_(std::move(answers)) {}

  std::optional<std::string> Ask(const std::string&, const std::string& fallback) override {
    if (answers_.empty()) return std::nullopt;
    std::string answer = answers_.front();
    answers_.pop_front();
    return answer.empty() ? fallback : answer;
  }
  void Tell(const std::string& text) override { told.push_back(text); }

  std::vector<std::string> told;

 private:
  std::deque<std::string> answers_;
};

}  // namespace vorlix
