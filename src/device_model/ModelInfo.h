// What the tables hold for one model.
#pragma once

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "runtime/Class.h"
#include "runtime/Dictionary.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/device_model/ADMModelInfo.h"

namespace commandfilter {

/// Looks a model up in the registered tables: under the first of its names that the table has,
/// then under "Default", each a dictionary from info path to value. A table is read once, when it
/// is first asked for; one that cannot be read is empty.
class ModelInfo final : public Implements<Object, ADMModelInfo> {
 public:
  static const Class kClass;

  /// `described`: tables that win over the registered ones, a dictionary from table to a dictionary
  /// from info path to value; may be nil.
  [[nodiscard]] static Ref<ModelInfo> create(std::span<const std::string_view> modelNames,
                                             const Dictionary* described = nullptr);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] Value valueForInfoPath_inTable(const String* infoPath,
                                               const String* table) override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  ModelInfo(std::vector<std::string> modelNames, RefPtr<Dictionary> described)
      : modelNames_(std::move(modelNames)), described_(std::move(described)) {}
  ~ModelInfo() override = default;

  const Dictionary& tableAt(const std::string& path);

  std::vector<std::string> modelNames_;
  RefPtr<Dictionary> described_;
  std::map<std::string, Ref<Dictionary>> tables_;
};

}  // namespace commandfilter
