#include "runtime/LiveObjects.h"

#include "runtime/Class.h"
#include "runtime/Object.h"

namespace commandfilter {

namespace {

// By class name, not by class: a class is gone when its bundle has been unloaded.
std::map<std::string, std::size_t, std::less<>>& counts() {
  static std::map<std::string, std::size_t, std::less<>> map;
  return map;
}

}  // namespace

std::map<std::string, std::size_t> LiveObjects::byClass() {
  std::map<std::string, std::size_t> living;
  for (const auto& [name, count] : counts()) {
    if (count != 0) living.emplace(name, count);
  }
  return living;
}

void LiveObjects::noteBirth(const Object& object) {
  const std::string_view name = object.classInfo().name;
  auto found = counts().find(name);
  if (found == counts().end()) found = counts().emplace(std::string(name), 0).first;
  ++found->second;
}

void LiveObjects::noteDeath(const Object& object) noexcept {
  const auto found = counts().find(object.classInfo().name);
  if (found != counts().end()) --found->second;
}

}  // namespace commandfilter
