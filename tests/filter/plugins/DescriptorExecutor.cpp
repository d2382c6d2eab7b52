// Tells which number a file gets that is opened now.
#include <fcntl.h>
#include <unistd.h>

#include "plugins/TestExecutor.h"
#include "runtime/Format.h"
#include "runtime/Module.h"

namespace commandfilter::testing {

class DescriptorExecutor final : public TestExecutor<DescriptorExecutor> {
 public:
  static const Class kClass;

  explicit DescriptorExecutor(ICommandFilterContext& filterContext) : TestExecutor(filterContext) {}

  Value executeCommand(const String& /*command*/) override {
    const int descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (descriptor >= 0) close(descriptor);
    return format("a new file has the number %d", descriptor);
  }
};

constinit const Class DescriptorExecutor::kClass =
    executorClass<DescriptorExecutor>("DescriptorExecutor");

constexpr const Class* kClasses[] = {&DescriptorExecutor::kClass};

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::testing::kClasses);
