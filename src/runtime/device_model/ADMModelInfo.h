// What is known about a model, from tables.
#pragma once

#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// The entries for one model in the tables that `ADMModelInfoManager` has registered.
class COMMANDFILTER_EXPORT ADMModelInfo : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// What the table holds for the model under the info path; nil when either name is nil, the
  /// table is not registered, or it holds nothing there.
  virtual Value valueForInfoPath_inTable(const String* infoPath, const String* table) = 0;

 protected:
  ~ADMModelInfo() = default;
};

}  // namespace commandfilter
