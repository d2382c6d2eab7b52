#include "runtime/ClassRegistry.h"

#include <array>

#include "runtime/Array.h"
#include "runtime/Data.h"
#include "runtime/Date.h"
#include "runtime/Dictionary.h"
#include "runtime/String.h"

namespace commandfilter {

ClassRegistry& ClassRegistry::shared() {
  // Outlives every object and bundle, so it is never destroyed.
  static auto& registry = *new ClassRegistry;  // NOLINT(cppcoreguidelines-owning-memory)
  return registry;
}

ClassRegistry::Registration ClassRegistry::add(std::span<const Class* const> classes) {
  entries_.push_back({++lastId_, classes});
  return Registration(lastId_);
}

const Class* ClassRegistry::classNamed(std::string_view name) const noexcept {
  for (const Entry& entry : entries_) {
    for (const Class* info : entry.classes) {
      if (info->name == name) return info;
    }
  }
  return nullptr;
}

std::vector<const Class*> ClassRegistry::classes() const {
  std::vector<const Class*> all;
  for (const Entry& entry : entries_) {
    all.insert(all.end(), entry.classes.begin(), entry.classes.end());
  }
  return all;
}

void ClassRegistry::remove(std::size_t id) noexcept {
  std::erase_if(entries_, [id](const Entry& entry) { return entry.id == id; });
  // The classes' memory may be used for other classes now.
  detail::forgetMethods();
}

ClassRegistry::Registration::~Registration() {
  if (id_ != 0) shared().remove(id_);
}

std::span<const Class* const> runtimeClasses() noexcept {
  static constexpr std::array<const Class*, 8> kClasses{
      &Object::kClass, &String::kClass, &Array::kClass, &Dictionary::kClass,
      &Data::kClass,   &Date::kClass,   &kNumberClass,  &kNullClass,
  };
  return kClasses;
}

}  // namespace commandfilter
