#include "filter/Process.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace commandfilter {

void reserveDescriptors() noexcept {
  constexpr int kSideChannel = 4;
  // The lowest free number is always the next, so the first above the side channel ends the walk.
  int descriptor = -1;
  do {
    descriptor = open("/", O_PATH | O_CLOEXEC);
  } while (descriptor >= 0 && descriptor <= kSideChannel);
  if (descriptor >= 0) close(descriptor);
}

void ignoreBrokenPipes() noexcept { static_cast<void>(std::signal(SIGPIPE, SIG_IGN)); }

}  // namespace commandfilter
