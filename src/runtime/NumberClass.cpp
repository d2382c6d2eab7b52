// The classes of the values that are no objects: the methods that expressions find on them.
#include <array>

#include "runtime/Class.h"

namespace commandfilter {

namespace {

std::int8_t charValue(const Value& receiver) { return receiver.number().charValue(); }
std::int16_t shortValue(const Value& receiver) { return receiver.number().shortValue(); }
std::int32_t intValue(const Value& receiver) { return receiver.number().intValue(); }
std::int64_t longValue(const Value& receiver) { return receiver.number().longValue(); }
float floatValue(const Value& receiver) { return receiver.number().floatValue(); }
double doubleValue(const Value& receiver) { return receiver.number().doubleValue(); }

constexpr std::array kNumberMethods{
    method<&charValue>("charValue"),     method<&shortValue>("shortValue"),
    method<&intValue>("intValue"),       method<&longValue>("longValue"),
    method<&longValue>("integerValue"),  method<&floatValue>("floatValue"),
    method<&doubleValue>("doubleValue"),
};

}  // namespace

constinit const Class kNumberClass{
    .name = "Number", .base = &Object::kClass, .methods = kNumberMethods};
constinit const Class kNullClass{.name = "Null", .base = &Object::kClass};

}  // namespace commandfilter
