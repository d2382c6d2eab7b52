// The filter's run from start to end.
#pragma once

namespace commandfilter {

/// Runs every command of the job, reports the answers, and ends with the dummy job.
/// @return the exit status: 1 when this is no command job (nothing is read or written then),
/// otherwise 0, whatever the commands did.
int ACommandFilterMain();

}  // namespace commandfilter
