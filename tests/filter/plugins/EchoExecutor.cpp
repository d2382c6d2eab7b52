// Answers with its command, and tells of its own birth and death.
#include "plugins/TestExecutor.h"
#include "runtime/Format.h"
#include "runtime/Module.h"

namespace commandfilter::testing {

class EchoExecutor final : public TestExecutor<EchoExecutor> {
 public:
  static const Class kClass;

  explicit EchoExecutor(ICommandFilterContext& filterContext) : TestExecutor(filterContext) {
    context().reportMessageWithFormat("echo is born");
  }
  ~EchoExecutor() override { context().reportMessageWithFormat("echo is dead"); }

  Value executeCommand(const String& command) override {
    return format("echo answers: %@", command);
  }
};

constinit const Class EchoExecutor::kClass = executorClass<EchoExecutor>("EchoExecutor");

constexpr const Class* kClasses[] = {&EchoExecutor::kClass};

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::testing::kClasses);
