// What the executors of the test bundles have in common.
#pragma once

#include <array>
#include <string_view>

#include "filter/protocols/ICommandFilterContext.h"
#include "filter/protocols/ICommandFilterExecutor.h"
#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"

namespace commandfilter::testing {

/// The base of an executor T: keeps the context that it is made with.
template <typename T>
class TestExecutor : public Implements<Object, ICommandFilterExecutor> {
 public:
  static RefPtr<T> initWithFilterContext(ICommandFilterContext* context) {
    if (context == nullptr) return nullptr;
    return make<T>(*context);
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return T::kClass; }

 protected:
  explicit TestExecutor(ICommandFilterContext& context) : context_(context) {}
  ~TestExecutor() override = default;

  [[nodiscard]] ICommandFilterContext& context() const noexcept { return *context_; }

 private:
  Ref<ICommandFilterContext> context_;
};

template <typename T>
inline constexpr auto kExecutorProtocols = conformances<T, ICommandFilterExecutor>();
template <typename T>
inline constexpr std::array kExecutorInitializers{
    initializer<&T::initWithFilterContext>("initWithFilterContext:")};

/// The class of an executor T.
template <typename T>
[[nodiscard]] constexpr Class executorClass(std::string_view name) {
  return {.name = name,
          .base = &Object::kClass,
          .protocols = kExecutorProtocols<T>,
          .initializers = kExecutorInitializers<T>};
}

}  // namespace commandfilter::testing
