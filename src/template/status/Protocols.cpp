// The status protocols as data.
#include "template/status/ADMFeaturePathSource.h"

namespace commandfilter {

constinit const Protocol ADMFeaturePathSource::kProtocol{"ADMFeaturePathSource"};

}  // namespace commandfilter
