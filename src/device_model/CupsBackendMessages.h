// The side channel of the CUPS backend that runs beside this process.
#pragma once

#include "device_model/BackendMessages.h"

namespace commandfilter {

/// Sends and receives with libcups, which is loaded by the first message. A process that was not
/// started by the scheduler has no backend; what its descriptor 4 then is stays untouched. A
/// backend that is gone ends a message, not the process.
class CupsBackendMessages final : public BackendMessages {
 public:
  bool send(BackendCommand command, std::string_view data, double timeout) override;
  std::optional<Answer> receive(double timeout) override;
};

}  // namespace commandfilter
