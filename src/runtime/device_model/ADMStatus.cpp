#include "runtime/device_model/ADMStatus.h"

#include <array>

namespace commandfilter {

namespace {

constexpr std::array kRows{
    method<&ADMStatus::delegate>("delegate"),
    method<&ADMStatus::setDelegate>("setDelegate:"),
    method<&ADMStatus::supportedFeatures>("supportedFeatures"),
    method<&ADMStatus::isSupportedFeature>("isSupportedFeature:"),
    method<&ADMStatus::supportedPropertiesForFeature>("supportedPropertiesForFeature:"),
    method<&ADMStatus::isSupportedProperty_forFeature>("isSupportedProperty:forFeature:"),
    method<&ADMStatus::identifiersForFeature>("identifiersForFeature:"),
    method<&ADMStatus::valueForFeature>("valueForFeature:"),
    method<&ADMStatus::valueForFeature_property>("valueForFeature:property:"),
    method<&ADMStatus::valueForFeature_property_identifier>("valueForFeature:property:identifier:"),
    method<&ADMStatus::addObserver_selector_feature>("addObserver:selector:feature:"),
    method<&ADMStatus::addObserver_selector_feature_property>(
        "addObserver:selector:feature:property:"),
    method<&ADMStatus::addObserver_selector_feature_property_identifier>(
        "addObserver:selector:feature:property:identifier:"),
    method<&ADMStatus::removeObserver_feature_property_identifier>(
        "removeObserver:feature:property:identifier:"),
    method<&ADMStatus::removeObserver_feature_property>("removeObserver:feature:property:"),
    method<&ADMStatus::removeObserver_feature>("removeObserver:feature:"),
    method<&ADMStatus::removeObserver>("removeObserver:"),
    method<&ADMStatus::scheduleInRunLoop_forMode>("scheduleInRunLoop:forMode:"),
    method<&ADMStatus::removeFromRunLoop_forMode>("removeFromRunLoop:forMode:"),
};

constexpr std::array<const Protocol*, 1> kAdopts{&ADMInterface::kProtocol};

}  // namespace

constinit const Protocol ADMStatus::kProtocol{"ADMStatus", kAdopts};
constinit const MethodGroup ADMStatus::kMethods{"ADMStatus", kRows};

}  // namespace commandfilter
