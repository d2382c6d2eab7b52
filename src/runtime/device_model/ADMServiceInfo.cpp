#include "runtime/device_model/ADMServiceInfo.h"

#include <array>

namespace commandfilter {

namespace {

constexpr std::array kRows{
    method<&ADMServiceInfo::serviceState>("serviceState"),
    method<&ADMServiceInfo::uri>("uri"),
    method<&ADMServiceInfo::connectionType>("connectionType"),
    method<&ADMServiceInfo::vendorName>("vendorName"),
    method<&ADMServiceInfo::modelName>("modelName"),
    method<&ADMServiceInfo::connectionParams>("connectionParams"),
    method<&ADMServiceInfo::modelInfo>("modelInfo"),
};

}  // namespace

constinit const Protocol ADMServiceInfo::kProtocol{"ADMServiceInfo"};
constinit const MethodGroup ADMServiceInfo::kMethods{"ADMServiceInfo", kRows};

}  // namespace commandfilter
