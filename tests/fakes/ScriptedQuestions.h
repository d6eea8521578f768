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
  explicit ScriptedQuestions(std::deque<std::string> given = {}) : answers(std::move(given)) {}

  std::optional<std::string> Ask(const std::string&, const std::string& fallback) override {
    if (answers.empty()) return std::nullopt;
    std::string answer = answers.front();
    answers.pop_front();
    return answer.empty() ? fallback : answer;
  }
  void Tell(const std::string& text) override { told.push_back(text); }

  std::deque<std::string> answers;
  std::vector<std::string> told;
};

}  // namespace vorlix
