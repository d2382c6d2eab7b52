// Runs part of a test in a process of its own.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>

namespace commandfilter::testing {

/// Runs the body in a child process, for what lasts as long as the process does: the shared
/// environment, the standard descriptors, loaded code. What fails in the body fails the test.
template <typename Body>
void runInChild(Body&& body) {
  // Buffered text would be written once more by the child.
  std::fflush(nullptr);
  EXPECT_EXIT(
      {
        body();
        std::exit(::testing::Test::HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
      },
      ::testing::ExitedWithCode(EXIT_SUCCESS), "");
}

}  // namespace commandfilter::testing
