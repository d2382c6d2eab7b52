// The status protocols as data.
#include "template/status/ADMFeaturePathSource.h"
#include "template/status/ADMStatusServiceCreator.h"

namespace commandfilter {

constinit const Protocol ADMFeaturePathSource::kProtocol{"ADMFeaturePathSource"};
constinit const Protocol ADMStatusServiceCreator::kProtocol{"ADMStatusServiceCreator"};

}  // namespace commandfilter
