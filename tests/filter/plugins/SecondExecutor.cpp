// Carries out the same command as the echo bundle, in capitals.
#include "plugins/TestExecutor.h"
#include "runtime/Format.h"
#include "runtime/Module.h"

namespace commandfilter::testing {

class SecondExecutor final : public TestExecutor<SecondExecutor> {
 public:
  static const Class kClass;

  explicit SecondExecutor(ICommandFilterContext& filterContext) : TestExecutor(filterContext) {}

  Value executeCommand(const String& command) override {
    return format("second answers: %@", command);
  }
};

constinit const Class SecondExecutor::kClass = executorClass<SecondExecutor>("SecondExecutor");

constexpr const Class* kClasses[] = {&SecondExecutor::kClass};

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::testing::kClasses);
