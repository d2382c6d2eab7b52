// Holds memory while it lives.
#include <string>

#include "plugins/TestExecutor.h"
#include "runtime/Module.h"

namespace commandfilter::testing {

class MemoryExecutor final : public TestExecutor<MemoryExecutor> {
 public:
  static const Class kClass;

  explicit MemoryExecutor(ICommandFilterContext& filterContext) : TestExecutor(filterContext) {}

  Value executeCommand(const String& /*command*/) override {
    return Value(Number::integer(static_cast<int>(held_.size())));
  }

 private:
  static constexpr std::size_t kSize = 4000;
  std::string held_ = std::string(kSize, 'm');
};

constinit const Class MemoryExecutor::kClass = executorClass<MemoryExecutor>("MemoryExecutor");

constexpr const Class* kClasses[] = {&MemoryExecutor::kClass};

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::testing::kClasses);
