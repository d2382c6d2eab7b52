// What the proxies of a service remember of the questions that they were asked last.
#pragma once

#include "runtime/Class.h"
#include "runtime/Object.h"
#include "template/status/RecentAnswers.h"
#include "template/status/RecentMessages.h"

namespace commandfilter {

/// Both, for one service.
class RecentQuestions final : public Object {
 public:
  static const Class kClass;

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  /// Forgets the service and its answers.
  void forgetService() noexcept {
    answers.forgetAnswers();
    messages.forget();
  }

  RecentAnswers answers;
  RecentMessages messages;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  RecentQuestions() = default;
  ~RecentQuestions() override = default;
};

}  // namespace commandfilter
