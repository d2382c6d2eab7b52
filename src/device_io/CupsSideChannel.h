// The side channel that CUPS gives to a filter.
#pragma once

#include "device_io/SideChannel.h"

namespace commandfilter {

/// Talks over the descriptor that CUPS reserves for it, through libcups, which the first request
/// loads. An answer that comes too late, after the time of its own request, is not taken for that
/// to another command. A backend that is gone ends a request with a timeout at once.
class CupsSideChannel final : public SideChannel {
 public:
  /// IOError without libcups.
  [[nodiscard]] SideChannelStatus doRequest(SideChannelCommand command, char* buffer, int& length,
                                            double timeout) override;
};

}  // namespace commandfilter
