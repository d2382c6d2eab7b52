// Protocols: what an object promises, as a C++ interface and as data.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "runtime/Export.h"
#include "runtime/Object.h"

namespace commandfilter {

/// A protocol as constant data. Protocols are the same when their names are.
struct Protocol {
  std::string_view name;
  /// The protocols that it refines; the root protocol, which every object keeps, is left out.
  std::span<const Protocol* const> adopted{};
};

/// The base of every protocol's C++ interface: the way back to the object that conforms to it.
/// An interface has a `static const Protocol kProtocol`.
class COMMANDFILTER_EXPORT ProtocolBase {
 public:
  ProtocolBase() = default;
  ProtocolBase(const ProtocolBase&) = delete;
  ProtocolBase& operator=(const ProtocolBase&) = delete;

  [[nodiscard]] virtual Object& object() noexcept = 0;
  [[nodiscard]] const Object& object() const noexcept {
    return const_cast<ProtocolBase*>(this)->object();  // NOLINT: the same object either way
  }

 protected:
  ~ProtocolBase() = default;
};

/// A class that conforms to protocols derives from Implements<its base, protocol...>.
template <typename Base, typename... Protocols>
class Implements : public Base, public Protocols... {
 public:
  [[nodiscard]] Object& object() noexcept override { return *this; }

 protected:
  using Base::Base;
  ~Implements() override = default;
};

/// A row of a class's protocols: the protocol, and the cast from an object of the class to the
/// interface, which cannot be had by `dynamic_cast` across bundles.
struct Conformance {
  const Protocol* protocol;
  void* (*interface)(Object& object);
};

/// The rows of a class T that conforms to the protocols. A protocol that refines another does not
/// bring that one's row along: name both.
template <typename T, typename... Protocols>
[[nodiscard]] constexpr std::array<Conformance, sizeof...(Protocols)> conformances() {
  return {Conformance{&Protocols::kProtocol, [](Object& object) -> void* {
                        return static_cast<Protocols*>(&static_cast<T&>(object));
                      }}...};
}

/// True when `candidate` is `protocol` or adopts it.
[[nodiscard]] COMMANDFILTER_EXPORT bool includesProtocol(const Protocol& candidate,
                                                         const Protocol& protocol) noexcept;

}  // namespace commandfilter
