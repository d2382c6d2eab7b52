#include "runtime/device_model/ADMSuppliesManagement.h"

#include <array>

namespace commandfilter {

namespace {

constexpr std::array kRows{
    method<&ADMSuppliesManagement::suppliesStateAcknowledgment>("suppliesStateAcknowledgment"),
    method<&ADMSuppliesManagement::scheduleRetrieveSuppliesWarrantyValue>(
        "scheduleRetrieveSuppliesWarrantyValue"),
};

}  // namespace

constinit const Protocol ADMSuppliesManagement::kProtocol{"ADMSuppliesManagement"};
constinit const MethodGroup ADMSuppliesManagement::kMethods{"ADMSuppliesManagement", kRows};

}  // namespace commandfilter
