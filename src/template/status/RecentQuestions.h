// What the proxies of a service remember of the questions that they were asked last.
#pragma once

#include "template/status/RecentAnswers.h"
#include "template/status/RecentMessages.h"

namespace commandfilter {

/// Both, for one service.
struct RecentQuestions {
  /// Forgets the service and its answers.
  void forgetService() noexcept {
    answers.forgetAnswers();
    messages.forget();
  }

  RecentAnswers answers;
  RecentMessages messages;
};

}  // namespace commandfilter
