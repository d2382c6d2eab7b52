// Classes by name, for the whole process.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "runtime/Class.h"
#include "runtime/Export.h"

namespace commandfilter {

/// The classes that can be found by name: those of the library, of the program and of every bundle
/// that is loaded. Nothing registers itself at start-up; `main` and the bundles hand over lists.
class COMMANDFILTER_EXPORT ClassRegistry {
 public:
  /// Keeps a list of classes registered; takes it back when it goes.
  class COMMANDFILTER_EXPORT Registration {
   public:
    Registration() noexcept = default;
    Registration(Registration&& other) noexcept : id_(std::exchange(other.id_, 0)) {}
    Registration& operator=(Registration&& other) noexcept {
      std::swap(id_, other.id_);
      return *this;
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration();

    /// Leaves the classes registered until the process ends.
    void keep() noexcept { id_ = 0; }

   private:
    friend class ClassRegistry;
    explicit Registration(std::size_t id) noexcept : id_(id) {}
    std::size_t id_ = 0;
  };

  /// The one registry of the process.
  [[nodiscard]] static ClassRegistry& shared();

  /// Registers the classes, which must live until the registration goes.
  [[nodiscard]] Registration add(std::span<const Class* const> classes);

  /// The class of exactly this name, the first that was registered; nullptr when there is none.
  [[nodiscard]] const Class* classNamed(std::string_view name) const noexcept;

  /// All classes, in the order in which they were registered.
  [[nodiscard]] std::vector<const Class*> classes() const;

 private:
  struct Entry {
    std::size_t id;
    std::span<const Class* const> classes;
  };

  ClassRegistry() = default;
  void remove(std::size_t id) noexcept;

  std::vector<Entry> entries_;
  std::size_t lastId_ = 0;
};

/// The class of that name in the running process; nullptr when there is none.
[[nodiscard]] inline const Class* classNamed(std::string_view name) {
  return ClassRegistry::shared().classNamed(name);
}

/// The classes of the runtime itself, for the program's list.
[[nodiscard]] COMMANDFILTER_EXPORT std::span<const Class* const> runtimeClasses() noexcept;

}  // namespace commandfilter
