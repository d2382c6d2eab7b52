// The device description of the documentation.
#include <gtest/gtest.h>

#include <string>

#include "Doubles.h"
#include "TestValues.h"
#include "device_model/DeviceDescription.h"
#include "device_model/SimulatedStatusService.h"
#include "runtime/Cast.h"
#include "runtime/Comparison.h"
#include "runtime/PropertyList.h"
#include "support/File.h"

namespace commandfilter {
namespace {

using testing::ask;
using testing::stringOf;

TEST(DocumentedDescription, IsOne) {
  const std::string page = testing::readFile(DEVICE_MODEL_PAGE);
  const std::string fence = "<!-- not run: a description, which a test reads -->\n```xml\n";
  const std::size_t start = page.find(fence) + fence.size();
  ASSERT_LT(start, page.size());
  Result<Value> list = parsePropertyList(page.substr(start, page.find("```", start) - start));
  ASSERT_TRUE(list) << list.reason();
  Result<Ref<Dictionary>> description = checkedDeviceDescription(*list);
  ASSERT_TRUE(description) << description.reason();
  const auto* services = castTo<Dictionary>((*description)->objectForKey("StatusServices"));
  ASSERT_NE(services, nullptr);
  const auto* supplies = castTo<Dictionary>(services->objectForKey("DMFSuppliesStatus"));
  ASSERT_NE(supplies, nullptr);
  const Value service = SimulatedStatusService::create(*supplies, nullptr);
  EXPECT_TRUE(
      equal(ask(service, "supplyLevelForIdentifier:", {stringOf("K")}), Number::integer(40)));
  EXPECT_TRUE(equal(ask(service, "valueForFeature:property:identifier:",
                        {stringOf("ink"), stringOf("level"), stringOf("C")}),
                    Number::integer(75)));
}

}  // namespace
}  // namespace commandfilter
