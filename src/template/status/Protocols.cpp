// The status protocols as data, and what they answer by themselves.
#include "template/status/ADMFeaturePathSource.h"
#include "template/status/ADMMessageSource.h"
#include "template/status/ADMStatusServiceCreator.h"
#include "template/status/RecentQuestions.h"

namespace commandfilter {

namespace {

constexpr Value kNone;

}  // namespace

constinit const Protocol ADMFeaturePathSource::kProtocol{"ADMFeaturePathSource"};
constinit const Protocol ADMMessageSource::kProtocol{"ADMMessageSource"};
constinit const Protocol ADMStatusServiceCreator::kProtocol{"ADMStatusServiceCreator"};

RefPtr<RecentQuestions> ADMStatusServiceCreator::recentQuestionsForServiceName(
    const String& /*name*/) {
  return nullptr;
}

const Value& ADMFeaturePathSource::knownValueForFeaturePathComponents(
    const Array& /*components*/) const {
  return kNone;
}

const Value& ADMMessageSource::knownAnswer(const Selector& /*selector*/,
                                           const Value& /*object*/) const noexcept {
  return kNone;
}

}  // namespace commandfilter
