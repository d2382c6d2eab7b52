#include "runtime/device_model/ADMInterface.h"

#include <array>

namespace commandfilter {

namespace {

constexpr std::array kRows{
    method<&ADMInterface::serviceInfo>("serviceInfo"),
    method<&ADMInterface::setParameters>("setParameters:"),
    method<&ADMInterface::parameters>("parameters"),
    method<&ADMInterface::isAvailable>("isAvailable"),
    method<&ADMInterface::lastError>("lastError"),
};

}  // namespace

constinit const Protocol ADMInterface::kProtocol{"ADMInterface"};
constinit const MethodGroup ADMInterface::kMethods{"ADMInterface", kRows};

}  // namespace commandfilter
