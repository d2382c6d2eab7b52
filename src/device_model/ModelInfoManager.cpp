#include "device_model/ModelInfoManager.h"

#include <array>
#include <functional>
#include <map>

#include "runtime/File.h"
#include "runtime/String.h"

namespace commandfilter {

namespace {

constexpr auto kProtocols = conformances<ModelInfoManager, ADMModelInfoManager>();
constexpr std::array kMethods{
    method<&ModelInfoManager::registerTable_location>("registerTable:location:")};
constexpr std::array kClassMethods{classMethod<&ModelInfoManager::sharedManager>("sharedManager")};

// The manager while it lives, and the files of the registered tables.
struct Shared {
  ModelInfoManager* manager = nullptr;
  std::map<std::string, std::string, std::less<>> tables;
};
Shared& shared() {
  static Shared state;
  return state;
}

}  // namespace

constinit const Class ModelInfoManager::kClass{.name = "ADMModelInfoManager",
                                               .base = &Object::kClass,
                                               .protocols = kProtocols,
                                               .methods = kMethods,
                                               .classMethods = kClassMethods};

ModelInfoManager::~ModelInfoManager() { shared().manager = nullptr; }

Ref<ModelInfoManager> ModelInfoManager::sharedManager() {
  if (shared().manager != nullptr) return Ref<ModelInfoManager>(*shared().manager);
  Ref<ModelInfoManager> manager = make<ModelInfoManager>();
  shared().manager = manager.get();
  return manager;
}

std::optional<std::string> ModelInfoManager::pathOfTable(std::string_view table) {
  const auto found = shared().tables.find(table);
  if (found == shared().tables.end()) return std::nullopt;
  return found->second;
}

bool ModelInfoManager::registerTable_location(const String* table, const String* location) {
  if (table == nullptr || location == nullptr) return false;
  if (table->isEmpty() || location->isEmpty()) return false;
  // A table lies in the folder itself; nothing can be opened under a name that holds a NUL.
  if (table->view().find_first_of(std::string_view("/\0", 2)) != std::string_view::npos ||
      location->view().find('\0') != std::string_view::npos) {
    return false;
  }
  std::string path = location->text() + '/' + table->text() + ".plist";
  if (!isRegularFile(path)) return false;
  shared().tables.insert_or_assign(table->text(), std::move(path));
  return true;
}

}  // namespace commandfilter
