#include <span>

#include "filter/ACommandFilterMain.h"
#include "filter/Process.h"
#include "runtime/ProcessInfo.h"
#include "template/LibraryClasses.h"

int main(int argc, char* argv[]) {
  using namespace commandfilter;  // NOLINT(google-build-using-namespace): the program's only scope
  reserveDescriptors();
  ignoreBrokenPipes();
  ProcessInfo::recordArguments(std::span(argv, static_cast<std::size_t>(argc)));
  registerLibraryClasses();
  return ACommandFilterMain();
}
