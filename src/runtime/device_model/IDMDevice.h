// A device as the framework drives it.
#pragma once

#include "runtime/Array.h"
#include "runtime/Class.h"
#include "runtime/Dictionary.h"
#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// The way to one device, of a class that an `ADMIOProvider` names. Besides conforming, the class
/// has an initialiser row `initFromInfo:withHandler:`, a static function that takes the
/// information (a `const Dictionary*`) and a handler (a `const Value&`, which may be nil) and
/// returns the new device, or nil to refuse.
class COMMANDFILTER_EXPORT IDMDevice : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// A device of the class; nil when it has no such initialiser, refuses, or does not conform. The
  /// information is a dictionary of connection facts; those under `kParamsProp`, a dictionary,
  /// win.
  [[nodiscard]] static RefPtr<IDMDevice> initFromInfo_withHandler(const Class& implementor,
                                                                  const Dictionary& info,
                                                                  const Value& handler);

  /// The values that the device has for the keys, with `kModelNameProp` and `kVendorNameProp`
  /// besides. The handler may be nil.
  virtual Ref<Dictionary> retrieveParameters_withHandler(const Array& keys,
                                                         const Value& handler) = 0;
  /// The IEEE 1284 device ID; nil when the device gives none. The timeout, in seconds, is what the
  /// caller would like; the device may wait longer.
  virtual RefPtr<String> newRetrievedDeviceIDWithTimeout(double timeout) = 0;
  /// True when the device answers. May wait for it.
  virtual bool isReachable() = 0;

 protected:
  ~IDMDevice() = default;
};

}  // namespace commandfilter
