#pragma once

#include <filesystem>
#include <vector>

#include "Launcher.h"

namespace commandfilter::benchmarks {

// The job for devices of all kinds, beside the same job without a device model.
struct DeviceJobs {
  Program base;          // what the ratios refer to
  Program job;           // of the application with the device model
  Program jobWithoutIt;  // of one that lacks it
  std::filesystem::path scratch;

  // The base comes first.
  std::vector<Program> programs() const;
};

// Throws unless the job ends with the bytes that its device calls for.
void requireDummyJob(const Launcher& launcher, const Program& program,
                     const std::filesystem::path& scratch);

}  // namespace commandfilter::benchmarks
