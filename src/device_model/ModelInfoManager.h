// The framework's class for the tables of model information.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/device_model/ADMModelInfoManager.h"

namespace commandfilter {

/// Found under the name "ADMModelInfoManager". A location is a folder, a table the property list
/// `<table>.plist` in it. The registered tables belong to the process; the manager is the same
/// object for as long as anybody holds it.
class ModelInfoManager final : public Implements<Object, ADMModelInfoManager> {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ModelInfoManager> sharedManager();
  /// The file of a registered table; none when it is not registered.
  [[nodiscard]] static std::optional<std::string> pathOfTable(std::string_view table);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  bool registerTable_location(const String* table, const String* location) override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  ModelInfoManager() = default;
  ~ModelInfoManager() override;
};

}  // namespace commandfilter
