// Feature paths that several expressions write alike.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

#include "runtime/Array.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/TextBuffer.h"
#include "runtime/TextEquality.h"

namespace commandfilter {

/// The components of a feature path, found by how the path is written as long as anything holds
/// them. The expressions of a template ask for the same few paths again and again; as these share
/// their components, so does what is remembered of them by identity.
class COMMANDFILTER_EXPORT SharedPath final : public Object {
 public:
  static const Class kClass;

  /// The path that is written like this; made when there is none yet.
  template <typename Make>
  [[nodiscard]] static Ref<SharedPath> pathFor(std::string_view text, Make&& readComponents) {
    SharedPath* known = placeOf(text);
    if (known != nullptr && sameText(known->text_.view(), text)) return Ref<SharedPath>(*known);
    return make<SharedPath>(text, readComponents());
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] const Ref<Array>& components() const noexcept { return components_; }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  SharedPath(std::string_view text, Ref<Array> components)
      : Object(ObjectKind::Other, Holding::NoChain),
        text_(text),
        components_(std::move(components)) {
    placeOf(text) = this;
  }
  ~SharedPath() override {
    SharedPath*& place = placeOf(text_.view());
    if (place == this) place = nullptr;
  }

  static constexpr std::size_t kPlaces = 64;
  // Each path has one place, which it takes from the path that had it before. Not owned: a path
  // leaves its place when it is destroyed.
  static std::array<SharedPath*, kPlaces> places_;

  [[nodiscard]] static SharedPath*& placeOf(std::string_view text) noexcept {
    return places_[placeHash(text) % kPlaces];
  }

  TextBuffer text_;
  Ref<Array> components_;
};

}  // namespace commandfilter
