#include "template/status/FrameworkStatus.h"

#include <optional>

#include "runtime/Ref.h"
#include "runtime/device_model/ADMCoreFactory.h"
#include "runtime/device_model/ADMStatusFactory.h"

namespace commandfilter {

Value frameworkStatus(const Protocol& protocol, const Value& serviceInfo) {
  const std::optional<ADMCoreFactory> framework = ADMCoreFactory::find();
  if (!framework) return {};
  const RefPtr<ADMStatusFactory> factory = framework->newStatusFactory();
  return factory ? factory->interfaceForProtocol_serviceInfo(protocol, serviceInfo) : Value();
}

}  // namespace commandfilter
