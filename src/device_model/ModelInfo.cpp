#include "device_model/ModelInfo.h"

#include <array>
#include <optional>

#include "device_model/ModelInfoManager.h"
#include "runtime/Cast.h"
#include "runtime/PropertyList.h"
#include "runtime/String.h"

namespace commandfilter {

namespace {

constexpr auto kProtocols = conformances<ModelInfo, ADMModelInfo>();
constexpr std::array kMethods{
    method<&ModelInfo::valueForInfoPath_inTable>("valueForInfoPath:inTable:")};

Value entryAt(const Dictionary& table, std::string_view outer, std::string_view inner) {
  const auto* entries = castTo<Dictionary>(table.objectForKey(outer));
  return entries != nullptr ? entries->objectForKey(inner) : Value();
}

}  // namespace

constinit const Class ModelInfo::kClass{
    .name = "VemoModelInfo", .base = &Object::kClass, .protocols = kProtocols, .methods = kMethods};

Ref<ModelInfo> ModelInfo::create(std::span<const std::string_view> modelNames,
                                 const Dictionary* described) {
  std::vector<std::string> names;
  for (const std::string_view name : modelNames) {
    if (!name.empty()) names.emplace_back(name);
  }
  return make<ModelInfo>(std::move(names),
                         RefPtr<Dictionary>(castTo<Dictionary>(Value::sharing(described))));
}

Value ModelInfo::valueForInfoPath_inTable(const String* infoPath, const String* table) {
  if (infoPath == nullptr || table == nullptr) return {};
  if (described_) {
    Value value = entryAt(*described_, table->view(), infoPath->view());
    if (!value.isNil()) return value;
  }
  const std::optional<std::string> path = ModelInfoManager::pathOfTable(table->view());
  if (!path) return {};
  const Dictionary& entries = tableAt(*path);
  for (const std::string& name : modelNames_) {
    Value value = entryAt(entries, name, infoPath->view());
    if (!value.isNil()) return value;
  }
  return entryAt(entries, "Default", infoPath->view());
}

const Dictionary& ModelInfo::tableAt(const std::string& path) {
  const auto known = tables_.find(path);
  if (known != tables_.end()) return *known->second;
  Ref<Dictionary> table = Dictionary::create();
  if (Result<Value> list = readPropertyList(path)) {
    if (auto* read = castTo<Dictionary>(*list)) table = Ref<Dictionary>(*read);
  }
  return *tables_.emplace(path, std::move(table)).first->second;
}

}  // namespace commandfilter
