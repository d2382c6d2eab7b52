// Readies the process before anything else runs.
#pragma once

namespace commandfilter {

/// Takes every number from 0 to 4 that is not open, with a descriptor that can be neither read nor
/// written: otherwise a file opened later would become standard output, or the scheduler's back or
/// side channel.
void reserveDescriptors() noexcept;

/// Lets writes to a backend that is gone fail instead of killing the filter, which the scheduler
/// would count as a success.
void ignoreBrokenPipes() noexcept;

}  // namespace commandfilter
