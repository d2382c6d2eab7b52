// Which devices are reached over the CUPS side channel.
#pragma once

#include "runtime/Array.h"
#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/device_model/ADMIOProvider.h"

namespace commandfilter {

/// Tells the device-model framework to reach a device over the side channel.
class ADMCUPSSideChannelIOProvider final : public Implements<Object, ADMIOProvider> {
 public:
  static const Class kClass;

  /// A new provider; it has no state.
  [[nodiscard]] static Ref<ADMCUPSSideChannelIOProvider> create();

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  /// The side-channel device for "IDMDevice"; nullptr for every other name.
  const Class* implementorClassForProtocolWithName(const String* name) override;

  /// "mdns", "dnssd", "riousbprint", "bluetooth".
  [[nodiscard]] static Ref<Array> supportedSchemes();
  /// True for a URI of these schemes, exactly as they are written here: "mdns" and "dnssd" only
  /// when the URI names the service type "_riousbprint", "bluetooth" only with an operating system
  /// above 10.6.2. NO for nil.
  [[nodiscard]] static bool supportsURI(const String* uri);

  /// The operating system's version as a number (see SystemVersion.h), computed once in a process;
  /// 0x1060 when it cannot be read.
  [[nodiscard]] static int systemVersion();
  /// The operating system's version as its record spells it; nil when it cannot be read.
  [[nodiscard]] static RefPtr<String> systemVersionString();
  /// Sets the number that `systemVersion` answers; 0 makes it compute the number anew.
  static void cacheSystemVersion(int version) noexcept;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  ADMCUPSSideChannelIOProvider() noexcept = default;
  ~ADMCUPSSideChannelIOProvider() override = default;
};

}  // namespace commandfilter
