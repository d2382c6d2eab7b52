// The base of everything counted.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <string>

#include "runtime/Export.h"
#include "runtime/ObjectMemory.h"

namespace commandfilter {

struct Class;
struct Protocol;
class Invocation;
class MethodSignature;
class Selector;
class Value;

/// What an object is, for the kinds that the expression language tests at every step; reading it
/// costs one load where asking the class costs a call.
enum class ObjectKind : std::uint8_t {
  Other,
  String,
  Array,
  Dictionary,
  Data,
  Date,
  /// An item of a compiled expression.
  EvaluationItem,
  /// A list of such items.
  ItemsList,
};

/// What goes with an object when it is destroyed.
enum class Holding : std::uint8_t {
  /// Perhaps a long chain of objects, each of which holds the next.
  Anything,
  /// No other object, or a few that begin no chain themselves.
  NoChain,
};

/// An object with a reference count, a class, and the answers that every object gives. It is made
/// with `make<T>()`, held by `Ref` and `RefPtr`, and destroyed when the last of these lets go.
/// The count is not atomic: objects belong to one thread.
class COMMANDFILTER_EXPORT Object {
 public:
  static const Class kClass;

  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  /// The class that the object was made as. Every class that has a `kClass` overrides it.
  [[nodiscard]] virtual const Class& classInfo() const noexcept { return kClass; }

  /// Value equality; identity unless a class says otherwise.
  /// @throws Exception when the values are nested deeper than the stack allows.
  [[nodiscard]] virtual bool isEqual(const Value& other) const;
  /// Equal objects have equal hashes.
  [[nodiscard]] virtual std::size_t hash() const;
  /// What a dictionary keeps when the object becomes a key: the object itself, unless a class says
  /// otherwise.
  /// @throws Exception for an object that cannot be a key.
  [[nodiscard]] virtual Value dictionaryKey() const;
  /// Appends the text that "%@" writes for the object; `level` is how many collections it stands
  /// in, 0 for none. The base writes `<ClassName: 0xaddress>`.
  virtual void appendDescription(std::string& text, int level) const;

  /// True when a dynamic send of the selector finds a method; a proxy asks what it stands for.
  [[nodiscard]] virtual bool respondsToSelector(const Selector& selector) const;
  /// True when the class declares the protocol, or one that adopts it.
  [[nodiscard]] virtual bool conformsToProtocol(const Protocol& protocol) const;
  /// The types of the method for the selector; an empty signature when there is none.
  [[nodiscard]] virtual MethodSignature methodSignatureForSelector(const Selector& selector) const;
  /// Called for a message whose method the class does not have but whose signature the object
  /// gives. The base throws the exception for an unrecognised selector.
  virtual void forwardInvocation(Invocation& invocation);

  [[nodiscard]] ObjectKind objectKind() const noexcept { return kind_; }

  /// The number of references, which tells whether nobody else holds the object.
  [[nodiscard]] std::uint32_t referenceCount() const noexcept { return state_.alive.count; }

  /// Memory for an object; see ObjectMemory.
  [[nodiscard]] static void* operator new(std::size_t size) { return ObjectMemory::allocate(size); }
  static void operator delete(void* memory, std::size_t size) noexcept {
    ObjectMemory::release(memory, size);
  }

  /// Used by `Ref` and `RefPtr` only.
  void ref() const noexcept {
    assert(state_.alive.count != 0 && "a reference to an object that is being destroyed");
    ++state_.alive.count;
  }
  /// Used by `Ref` and `RefPtr` only; destroys the object with the last reference.
  void deref() const noexcept {
    if (--state_.alive.count == 0) destroy();
  }

 protected:
  explicit Object(ObjectKind kind = ObjectKind::Other, Holding holding = Holding::Anything) noexcept
      : kind_(kind), holding_(holding) {}
  virtual ~Object() = default;

 private:
  void destroy() const noexcept;

  // An object whose last reference is gone waits in a list when too many destructions are nested
  // already; the list needs no memory because the count is not needed any more.
  union State {
    struct {
      std::uint32_t count;
    } alive;
    const Object* nextToDestroy;
  };
  mutable State state_{{1}};
  ObjectKind kind_;
  Holding holding_;
};

}  // namespace commandfilter
