#include "PlugIns.h"

#include "UsageError.h"
#include "runtime/Bundle.h"

namespace commandfilter::tools {

void loadPlugIn(const std::string& path) {
  const RefPtr<Bundle> bundle = Bundle::bundleWithPath(path);
  if (!bundle) {
    throw UsageError("plug-in " + path + ": there is no bundle; name the folder NAME.bundle");
  }
  if (!bundle->load()) throw UsageError("plug-in " + path + ": " + bundle->loadFailure());
}

}  // namespace commandfilter::tools
