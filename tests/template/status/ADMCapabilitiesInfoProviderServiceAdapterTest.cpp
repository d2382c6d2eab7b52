#include "template/status/ADMCapabilitiesInfoProviderServiceAdapter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string_view>

#include "runtime/Send.h"
#include "runtime/TestValues.h"
#include "template/status/doubles/FrameworkDouble.h"
#include "template/status/doubles/ServiceDouble.h"

namespace commandfilter::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Adapter = ADMCapabilitiesInfoProviderServiceAdapter;

class CapabilitiesAdapter : public ::testing::Test {
 protected:
  CapabilitiesAdapter() {
    provider_->answer("supportedSupplies", arrayOf({stringOf("Black")}));
    provider_->answer("suppliesPlatformCode", Value());
    provider_->answer("pageCount", "i", [](const auto&) { return Number::integer(5); });
    provider_->answer("levelOf:", stringOf("level"));
    framework_.capabilities = provider_;
    adapter_ = Adapter::initWithServiceInfo(device_);
  }
  std::string featureNamed(std::string_view name) {
    return descriptionOf(adapter_->valueForFeature(stringOf(name)));
  }

  FrameworkDouble framework_;
  Ref<ServiceDouble> provider_ = ServiceDouble::create();
  Value device_ = stringOf("device");
  RefPtr<Adapter> adapter_;
};

TEST_F(CapabilitiesAdapter, MakesAProviderForTheDevice) {
  EXPECT_THAT(framework_.calls, ElementsAre("initWithServiceInfo:"));
  EXPECT_TRUE(framework_.serviceInfo.isIdenticalTo(device_));
  EXPECT_TRUE(adapter_->capabilitiesProvider().isIdenticalTo(provider_));
}

TEST_F(CapabilitiesAdapter, HasNoProviderWithoutADevice) {
  framework_.calls.clear();
  adapter_ = Adapter::initWithServiceInfo(Value());
  EXPECT_THAT(framework_.calls, IsEmpty());
  EXPECT_TRUE(adapter_->capabilitiesProvider().isNil());
  EXPECT_TRUE(adapter_->isSupportedFeature(stringOf("supportedSupplies")));
  EXPECT_EQ(featureNamed("supportedSupplies"), "(null)");
}

TEST_F(CapabilitiesAdapter, SupportsTwoFeatures) {
  EXPECT_TRUE(adapter_->isSupportedFeature(stringOf("suppliesPlatformCode")));
  EXPECT_TRUE(adapter_->isSupportedFeature(stringOf("supportedSupplies")));
  for (const char* name : {"pageCount", "SupportedSupplies", "supportedSupplies:", ""}) {
    EXPECT_FALSE(adapter_->isSupportedFeature(stringOf(name))) << name;
  }
  for (const Value& name : {Value(), Value::null(), Value(Number::integer(1))}) {
    EXPECT_FALSE(adapter_->isSupportedFeature(name));
  }
  EXPECT_THAT(provider_->calls(), IsEmpty());
}

TEST_F(CapabilitiesAdapter, GivesWhatTheProviderAnswers) {
  EXPECT_EQ(featureNamed("supportedSupplies"), "(\n    Black\n)");
  EXPECT_EQ(featureNamed("suppliesPlatformCode"), "(null)");
  EXPECT_THAT(provider_->calls(), ElementsAre("supportedSupplies", "suppliesPlatformCode"));
  // Whether a feature is supported is another question.
  EXPECT_EQ(featureNamed("pageCount"), "5");
  EXPECT_EQ(featureNamed("levelOf:"), "level");
}

TEST_F(CapabilitiesAdapter, IsNilForWhatTheProviderDoesNotAnswer) {
  EXPECT_EQ(featureNamed("unknown"), "(null)");
  EXPECT_EQ(featureNamed(""), "(null)");
  EXPECT_EQ(featureNamed(std::string_view("page\0Count", 10)), "(null)");
  for (const Value& name : {Value(), Value::null(), Value(Number::integer(1))}) {
    EXPECT_TRUE(adapter_->valueForFeature(name).isNil());
  }
  EXPECT_THAT(provider_->calls(), IsEmpty());
}

TEST_F(CapabilitiesAdapter, AnswersToTwoMessagesOfAStatusOnly) {
  const Value service = adapter_;
  EXPECT_TRUE(respondsToSelector(service, Selector("isSupportedFeature:")));
  EXPECT_TRUE(respondsToSelector(service, Selector("valueForFeature:")));
  EXPECT_TRUE(send(service, Selector("capabilitiesProvider")).isIdenticalTo(provider_));
  for (const char* name :
       {"isSupportedProperty:forFeature:", "valueForFeature:property:", "identifiersForFeature:",
        "valueForFeature:property:identifier:", "supportedFeatures", "removeObserver:"}) {
    EXPECT_FALSE(respondsToSelector(service, Selector(name))) << name;
  }
}

}  // namespace
}  // namespace commandfilter::testing
