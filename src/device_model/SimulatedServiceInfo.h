// A device that is described in a file.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "device_model/DeviceServiceInfo.h"
#include "runtime/Class.h"
#include "runtime/Dictionary.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter {

/// The device of a `simulated:///path` URI. The description is read when it is first needed. One
/// that cannot be read, or has entries of the wrong kind, is a device that does not resolve: the
/// delegate gets the reason as the error.
class SimulatedServiceInfo final : public DeviceServiceInfo {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<SimulatedServiceInfo> create(const String& uri);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] RefPtr<String> uri() override;
  [[nodiscard]] RefPtr<String> connectionType() override { return text("ConnectionType"); }
  [[nodiscard]] RefPtr<String> vendorName() override { return text("VendorName"); }
  [[nodiscard]] RefPtr<String> modelName() override { return text("ModelName"); }
  [[nodiscard]] RefPtr<Dictionary> connectionParams() override;
  [[nodiscard]] RefPtr<ADMModelInfo> modelInfo() override;
  [[nodiscard]] RefPtr<String> deviceID() override { return text("DeviceID"); }
  [[nodiscard]] Value statusService(const Protocol& protocol) override;
  [[nodiscard]] Value capabilitiesProvider() override;
  /// The description, for whoever wants to see all of it; also found by the message
  /// `deviceDescription`. Empty when there is none that can be used.
  [[nodiscard]] Value deviceDescription();
  /// The service that is described under the name; nil when there is none.
  [[nodiscard]] Value serviceNamed(std::string_view name, const Protocol* protocol = nullptr);

 protected:
  [[nodiscard]] Resolution resolution() override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit SimulatedServiceInfo(Ref<String> uri) : uri_(std::move(uri)) {}
  ~SimulatedServiceInfo() override = default;

  /// The description; empty when there is none that can be used.
  const Dictionary& description();
  RefPtr<String> text(std::string_view key);

  Ref<String> uri_;
  RefPtr<Dictionary> description_;
  std::string failure_;
};

}  // namespace commandfilter
