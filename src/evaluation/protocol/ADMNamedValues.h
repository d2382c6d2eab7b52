// What answers the names of a template.
#pragma once

#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// The constants or the values of a template, as expressions see them.
class COMMANDFILTER_EXPORT ADMNamedValues : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// nil for an unknown name.
  /// @throws Exception whatever the computation raises.
  virtual Value valueNamed(const String& name) = 0;
  /// An object that stands for these values alone, always the same, when a value that was given
  /// once never changes; nullptr, which the base answers, when it may. Borrowed.
  [[nodiscard]] virtual Object* permanence() const noexcept { return nullptr; }

 protected:
  ~ADMNamedValues() = default;
};

}  // namespace commandfilter
