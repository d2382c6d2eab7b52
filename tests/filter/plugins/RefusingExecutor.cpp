// Refuses to be initialised.
#include <array>

#include "plugins/TestExecutor.h"
#include "runtime/Module.h"

namespace commandfilter::testing {

class RefusingExecutor final : public TestExecutor<RefusingExecutor> {
 public:
  static const Class kClass;

  static RefPtr<RefusingExecutor> initWithFilterContext(ICommandFilterContext* /*context*/) {
    return nullptr;
  }

  explicit RefusingExecutor(ICommandFilterContext& filterContext) : TestExecutor(filterContext) {}

  Value executeCommand(const String& command) override { return Value::sharing(&command); }
};

constinit const Class RefusingExecutor::kClass =
    executorClass<RefusingExecutor>("RefusingExecutor");

constexpr const Class* kClasses[] = {&RefusingExecutor::kClass};

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::testing::kClasses);
