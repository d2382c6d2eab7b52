// Names that the device-model framework and its users agree on.
#pragma once

#include <cstdint>
#include <string_view>

namespace commandfilter {

/// The device class of printers, for `newServiceInfoWithURI:deviceClass:`.
inline constexpr std::string_view kPrinterDeviceClass = "Printer";

/// The key of the nested dictionary of connection parameters in the information that an `IDMDevice`
/// is made from.
inline constexpr std::string_view kParamsProp = "Params";
/// The key of the model name among a device's parameters.
inline constexpr std::string_view kModelNameProp = "ModelName";
/// The key of the vendor name among a device's parameters.
inline constexpr std::string_view kVendorNameProp = "VendorName";

/// The connection type of a service that was found by multicast DNS.
inline constexpr std::string_view kRendezvousConnectionType = "Rendezvous";
/// The key of the device's network address (text) among the connection parameters.
inline constexpr std::string_view kIPAddressParam = "IPAddress";

/// The service state that means resolved; services can be made for no other.
inline constexpr std::int32_t kServiceStateResolved = 1;

}  // namespace commandfilter
