// Throws what its command names.
#include <stdexcept>

#include "plugins/TestExecutor.h"
#include "runtime/Exception.h"
#include "runtime/Module.h"

namespace commandfilter::testing {

class ThrowingExecutor final : public TestExecutor<ThrowingExecutor> {
 public:
  static const Class kClass;

  explicit ThrowingExecutor(ICommandFilterContext& filterContext) : TestExecutor(filterContext) {}
  ~ThrowingExecutor() override { context().reportMessageWithFormat("thrower is dead"); }

  Value executeCommand(const String& command) override {
    if (command.view() == "Throw platform exception") throw Exception("a platform exception");
    if (command.view() == "Throw standard exception") throw std::runtime_error("a standard one");
    if (command.view() == "Throw ill-formed reason") throw std::runtime_error("\xFF");
    throw 7;
  }
};

constinit const Class ThrowingExecutor::kClass =
    executorClass<ThrowingExecutor>("ThrowingExecutor");

constexpr const Class* kClasses[] = {&ThrowingExecutor::kClass};

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::testing::kClasses);
