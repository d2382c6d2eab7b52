// A principal class that could make instances and run commands but does not declare the protocol.
#include <array>

#include "runtime/Class.h"
#include "runtime/Module.h"
#include "runtime/Object.h"
#include "runtime/String.h"

namespace commandfilter::testing {

class NotAnExecutor final : public Object {
 public:
  static const Class kClass;

  static RefPtr<NotAnExecutor> initWithFilterContext(Object* /*context*/) {
    return make<NotAnExecutor>();
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value executeCommand(const String* /*command*/) { return Value(Number::integer(1)); }
};

constexpr std::array kMethods{method<&NotAnExecutor::executeCommand>("executeCommand:")};
constexpr std::array kInitializers{
    initializer<&NotAnExecutor::initWithFilterContext>("initWithFilterContext:")};

constinit const Class NotAnExecutor::kClass{.name = "NotAnExecutor",
                                            .base = &Object::kClass,
                                            .methods = kMethods,
                                            .initializers = kInitializers};

constexpr const Class* kClasses[] = {&NotAnExecutor::kClass};

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::testing::kClasses);
