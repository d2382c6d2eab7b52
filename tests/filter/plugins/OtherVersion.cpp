// A good executor in a module that claims another version of the interface.
#include "plugins/TestExecutor.h"
#include "runtime/Module.h"

namespace commandfilter::testing {

class OtherVersionExecutor final : public TestExecutor<OtherVersionExecutor> {
 public:
  static const Class kClass;

  explicit OtherVersionExecutor(ICommandFilterContext& filterContext)
      : TestExecutor(filterContext) {}

  Value executeCommand(const String& command) override { return Value::sharing(&command); }
};

constinit const Class OtherVersionExecutor::kClass =
    executorClass<OtherVersionExecutor>("OtherVersionExecutor");

constexpr const Class* kClasses[] = {&OtherVersionExecutor::kClass};

constexpr Module otherVersion() {
  Module module = moduleOf(kClasses);
  ++module.interfaceVersion;
  return module;
}

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::testing::otherVersion();
