// What tests of jobs have in common.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "integration/InstalledProduct.h"
#include "integration/PrivateScheduler.h"
#include "support/TemporaryFolder.h"

namespace commandfilter::testing {

/// The installed filter under a scheduler, and the job that was submitted last.
class JobFixture : public ::testing::Test {
 protected:
  JobFixture();

  /// Submits a command file with this text.
  void submitText(const std::string& queue, std::string_view text);
  /// Submits a command file with these lines behind its header.
  void submit(const std::string& queue, std::string_view lines = "");
  /// Waits for the job; its state.
  [[nodiscard]] std::string wait() const { return scheduler_.wait(job_); }
  /// The texts of the job's lines in the error log, when it is over.
  [[nodiscard]] std::vector<std::string> log() const;

  /// An LDL packet that asks for nothing, and what other printers get instead.
  const std::string kPacket =
      std::string("\x24\x00\x10\x00\x00\x07\x00\x01\x00\x00\x00\xFF\xFF\xFF\xFF\x24", 16);
  const std::string kZeros = std::string(1024, '\0');

  TemporaryFolder folder_;
  InstalledProduct product_{folder_.path() / "prefix"};
  PrivateScheduler scheduler_;
  int job_ = 0;
};

}  // namespace commandfilter::testing
