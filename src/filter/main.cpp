#include <span>

#include "filter/ACommandFilterMain.h"
#include "filter/Process.h"
#include "runtime/ClassRegistry.h"
#include "runtime/ProcessInfo.h"

int main(int argc, char* argv[]) {
  using namespace commandfilter;  // NOLINT(google-build-using-namespace): the program's only scope
  reserveDescriptors();
  ignoreBrokenPipes();
  ProcessInfo::recordArguments(std::span(argv, static_cast<std::size_t>(argc)));
  ClassRegistry::shared().add(runtimeClasses()).keep();
  return ACommandFilterMain();
}
