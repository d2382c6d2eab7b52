// The status protocols as data, and what they answer by themselves.
#include "template/status/ADMFeaturePathSource.h"
#include "template/status/ADMMessageSource.h"
#include "template/status/ADMStatusServiceCreator.h"

namespace commandfilter {

constinit const Protocol ADMFeaturePathSource::kProtocol{"ADMFeaturePathSource"};
constinit const Protocol ADMMessageSource::kProtocol{"ADMMessageSource"};
constinit const Protocol ADMStatusServiceCreator::kProtocol{"ADMStatusServiceCreator"};

const Value& ADMFeaturePathSource::knownValueForFeaturePathComponents(
    const Array& /*components*/) const {
  static constexpr Value kNone;
  return kNone;
}

}  // namespace commandfilter
