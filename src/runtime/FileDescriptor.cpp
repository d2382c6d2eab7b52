#include "runtime/FileDescriptor.h"

#include <unistd.h>

namespace commandfilter {

FileDescriptor::~FileDescriptor() {
  if (descriptor_ >= 0) close(descriptor_);
}

}  // namespace commandfilter
