// The status protocols as data.
#include "template/status/ADMFeaturePathSource.h"
#include "template/status/ADMMessageSource.h"
#include "template/status/ADMStatusServiceCreator.h"

namespace commandfilter {

constinit const Protocol ADMFeaturePathSource::kProtocol{"ADMFeaturePathSource"};
const Value& ADMFeaturePathSource::knownValueForFeaturePathComponents(
    const Array& /*components*/) const {
  static constexpr Value kNone;
  return kNone;
}

constinit const Protocol ADMMessageSource::kProtocol{"ADMMessageSource"};
constinit const Protocol ADMStatusServiceCreator::kProtocol{"ADMStatusServiceCreator"};

}  // namespace commandfilter
