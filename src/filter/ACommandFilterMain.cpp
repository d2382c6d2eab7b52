#include "filter/ACommandFilterMain.h"

#include <exception>

#include "filter/ACommandFilterContext.h"
#include "filter/ACommandFilterFile.h"
#include "filter/ACommandFilterPlugInManager.h"
#include "filter/DeviceModelModule.h"
#include "filter/environment/ACommandFilterEnvironment.h"
#include "filter/protocols/ICommandFilterExecutor.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Send.h"

namespace commandfilter {

namespace {

// Finds, makes and runs the executor of one command. Everything that the command made is gone
// when this returns.
void runCommand(const String& command, ACommandFilterContext& context,
                ACommandFilterPlugInManager& manager) {
  const Class* executorClass = manager.executorClassForCommand(command);
  if (executorClass == nullptr) return;
  const Value made =
      instantiate(*executorClass, Selector("initWithFilterContext:"), {Value::sharing(&context)});
  auto* executor = castTo<ICommandFilterExecutor>(made);
  if (executor == nullptr) return;
  context.reportMessageWithFormat("%@", executor->executeCommand(command));
}

// Tells the scheduler's debug log that a step failed; silent when there is no memory for that.
void reportFailure(ACommandFilterContext& context, const char* what, const char* reason) noexcept {
  try {
    if (reason != nullptr) {
      context.reportMessageWithFormat("DEBUG: %s failed: %s", what, reason);
    } else {
      context.reportMessageWithFormat("DEBUG: %s failed", what);
    }
  } catch (...) {
    // Nothing more can be done.
  }
}

// Before the first command: plug-ins look the framework's classes up as services do.
void loadFramework(ACommandFilterContext& context) {
  const std::string failure = loadDeviceModel(*Bundle::mainBundle());
  if (!failure.empty()) reportFailure(context, "The device model", failure.c_str());
}

// Runs one step of the job; what plug-in code throws ends that step and nothing else.
template <typename Step>
void guarded(ACommandFilterContext& context, const char* what, Step&& step) {
  try {
    step();
  } catch (const std::exception& exception) {
    reportFailure(context, what, exception.what());
  } catch (...) {
    reportFailure(context, what, nullptr);
  }
}

}  // namespace

int ACommandFilterMain() {
  if (ACommandFilterEnvironment::environment() == nullptr) return 1;
  const Ref<ACommandFilterFile> file = ACommandFilterFile::commandFile();
  const Ref<ACommandFilterContext> context = ACommandFilterContext::context();
  const Ref<ACommandFilterPlugInManager> manager = ACommandFilterPlugInManager::plugInManager();
  loadFramework(*context);
  if (const RefPtr<Array> commands = file->commands()) {
    for (const Value& command : *commands) {
      const String& line = *castTo<String>(command);
      guarded(*context, line.cString(), [&] { runCommand(line, *context, *manager); });
    }
  }
  guarded(*context, "The dummy job", [&] { context->sendDummyCommand(); });
  return 0;
}

}  // namespace commandfilter
