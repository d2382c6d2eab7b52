#include "runtime/Protocol.h"

#include <algorithm>

namespace commandfilter {

bool includesProtocol(const Protocol& candidate, const Protocol& protocol) noexcept {
  if (&candidate == &protocol || candidate.name == protocol.name) return true;
  return std::ranges::any_of(candidate.adopted, [&protocol](const Protocol* adopted) {
    return includesProtocol(*adopted, protocol);
  });
}

}  // namespace commandfilter
