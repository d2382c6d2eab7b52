// A status service for tests.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "expression/Expressions.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/ValueVector.h"
#include "template/status/ADMFeaturePathSource.h"

namespace commandfilter::testing {

/// Answers the messages "state" with "ready", "levelOf:" with "level of " and the argument, and
/// "same:" with its argument, which it notes, and every feature path with its components; a path
/// that ends with "worse" fails.
class TestService final : public Implements<Object, ADMFeaturePathSource> {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<TestService> create() { return make<TestService>(); }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] Value state() const { return stringOf("ready"); }
  [[nodiscard]] Value levelOf(const Value& element) const {
    return stringOf("level of " + descriptionOf(element));
  }
  Value same(const Value& element) {
    asked.push_back(descriptionOf(element));
    return element;
  }
  Value valueForFeaturePathComponents_errorInfo(const Array& components,
                                                RefPtr<String>& errorInfo) override {
    ValueVector path(components.begin(), components.end());
    if (!path.empty() && descriptionOf(path.back()) == "worse") {
      errorInfo = String::create("no such %path");
      return {};
    }
    return Array::create(std::move(path));
  }

  std::vector<std::string> asked;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  TestService() = default;
  ~TestService() override = default;
};

inline constexpr auto kTestServiceProtocols = conformances<TestService, ADMFeaturePathSource>();
inline constexpr std::array kTestServiceMethods{
    method<&TestService::state>("state"),
    method<&TestService::levelOf>("levelOf:"),
    method<&TestService::same>("same:"),
};
inline constinit const Class TestService::kClass{.name = "TestService",
                                                 .base = &Object::kClass,
                                                 .protocols = kTestServiceProtocols,
                                                 .methods = kTestServiceMethods};

}  // namespace commandfilter::testing
