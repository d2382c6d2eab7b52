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

Value ADMSuppliesManagement::suppliesStateAcknowledgment() { return {}; }
void ADMSuppliesManagement::scheduleInRunLoop_forMode(RunLoop* /*runLoop*/,
                                                      const String* /*mode*/) {}
void ADMSuppliesManagement::removeFromRunLoop_forMode(RunLoop* /*runLoop*/,
                                                      const String* /*mode*/) {}
void ADMSuppliesManagement::scheduleRetrieveSuppliesWarrantyValue() {}

}  // namespace commandfilter
