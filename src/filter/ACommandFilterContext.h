// What executors get from the filter.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>

#include "filter/protocols/ICommandFilterContext.h"
#include "filter/protocols/ICommandFilterServiceInfoProvider.h"
#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// The context of a run: reports, services by name, and the dummy job at the end.
class ACommandFilterContext final : public Implements<Object, ICommandFilterContext> {
 public:
  static const Class kClass;

  /// A new context for the device of the shared environment.
  [[nodiscard]] static Ref<ACommandFilterContext> context();
  /// A new context for another device; nil stands for no device.
  [[nodiscard]] static Ref<ACommandFilterContext> contextWithServiceInfoProvider(
      RefPtr<ICommandFilterServiceInfoProvider> provider);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  Value serviceWithName(const String* name) override;
  void reportMessage(const char* format, std::span<const FormatArgument> arguments) override;

  /// Writes the dummy job for the device's languages to standard output when the device's ID is
  /// to be had, and closes standard output in every case. Errors of writing are ignored.
  void sendDummyCommand();

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ACommandFilterContext(RefPtr<ICommandFilterServiceInfoProvider> provider)
      : serviceInfoProvider_(std::move(provider)) {}
  ~ACommandFilterContext() override = default;

  Value makeService(const String& name);
  RefPtr<String> deviceID();

  RefPtr<ICommandFilterServiceInfoProvider> serviceInfoProvider_;
  /// By requested name; the null object for a name that could not be served.
  std::map<std::string, Value, std::less<>> services_;
};

}  // namespace commandfilter
