// Throws while it is initialised.
#include "plugins/TestExecutor.h"
#include "runtime/Exception.h"
#include "runtime/Module.h"

namespace commandfilter::testing {

class ThrowingInitializer final : public TestExecutor<ThrowingInitializer> {
 public:
  static const Class kClass;

  explicit ThrowingInitializer(ICommandFilterContext& filterContext) : TestExecutor(filterContext) {
    throw Exception("no initialisation");
  }

  Value executeCommand(const String& command) override { return Value::sharing(&command); }
};

constinit const Class ThrowingInitializer::kClass =
    executorClass<ThrowingInitializer>("ThrowingInitializer");

constexpr const Class* kClasses[] = {&ThrowingInitializer::kClass};

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::testing::kClasses);
