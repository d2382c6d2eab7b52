// Property lists, read by both readers of XML.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "runtime/Comparison.h"
#include "runtime/Description.h"
#include "runtime/PropertyList.h"

namespace commandfilter::testing {

/// An observer to whom nothing matters.
class IndifferentObserver final : public PropertyListObserver {
 public:
  void begin(Part /*part*/, std::size_t /*place*/) override {}
  void append(std::string_view /*text*/, std::size_t /*place*/) override {}
  void end(std::size_t /*place*/) override {}
};

/// What `parsePropertyList` says. Where it is observed the XML parser reads, whatever the form of
/// the list: it must say the same.
inline Result<Value> readBothWays(std::string_view bytes) {
  IndifferentObserver observer;
  Result<Value> result = parsePropertyList(bytes);
  Result<Value> observed = parsePropertyList(bytes, &observer);
  constexpr std::size_t kShown = 200;
  EXPECT_EQ(result.reason(), observed.reason()) << bytes.substr(0, kShown);
  if (result && observed) {
    EXPECT_TRUE(equal(*result, *observed)) << bytes.substr(0, kShown);
    EXPECT_EQ(descriptionOf(*result), descriptionOf(*observed)) << bytes.substr(0, kShown);
  }
  return result;
}

/// A list of this content, as XML.
inline std::string list(std::string_view content) {
  return "<plist version=\"1.0\">" + std::string(content) + "</plist>";
}

/// The content of a list; nil, with a failure of the test, when it is refused.
inline Value parsed(std::string_view bytes) {
  Result<Value> result = readBothWays(bytes);
  EXPECT_TRUE(result) << bytes.substr(0, 100) << ": " << result.reason();
  return result ? *result : Value();
}

}  // namespace commandfilter::testing
