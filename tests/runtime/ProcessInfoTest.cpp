#include "runtime/ProcessInfo.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <string>
#include <vector>

namespace commandfilter {
namespace {

TEST(ProcessInfo, KeepsTheArgumentsOfMain) {
  const auto& arguments = ProcessInfo::processInfo().arguments();
  ASSERT_FALSE(arguments.empty());
  EXPECT_NE(arguments.front().find("runtime_tests"), std::string::npos);
}

TEST(ProcessInfo, KeepsArgumentsAsTheyWereGiven) {
  const std::vector<std::string> before = ProcessInfo::processInfo().arguments();
  std::string name = "program";
  std::string empty;
  std::string bytes = "\xFF\xFE";
  const std::array<char*, 3> given{name.data(), empty.data(), bytes.data()};
  ProcessInfo::recordArguments(given);
  EXPECT_EQ(ProcessInfo::processInfo().arguments(),
            (std::vector<std::string>{"program", "", "\xFF\xFE"}));
  ProcessInfo::recordArguments({});
  EXPECT_TRUE(ProcessInfo::processInfo().arguments().empty());

  std::vector<std::string> copies = before;
  std::vector<char*> pointers;
  for (std::string& copy : copies) pointers.push_back(copy.data());
  ProcessInfo::recordArguments(pointers);
  EXPECT_EQ(ProcessInfo::processInfo().arguments(), before);
}

TEST(ProcessInfo, TellsAnEmptyVariableFromNone) {
  constexpr const char* kName = "RUNTIME_TESTS_VARIABLE";
  unsetenv(kName);
  EXPECT_FALSE(ProcessInfo::environmentValue(kName));
  setenv(kName, "", 1);
  EXPECT_EQ(ProcessInfo::environmentValue(kName), "");
  setenv(kName, "value", 1);
  EXPECT_EQ(ProcessInfo::environmentValue(kName), "value");
  unsetenv(kName);
  EXPECT_FALSE(ProcessInfo::environmentValue(kName));
}

}  // namespace
}  // namespace commandfilter
