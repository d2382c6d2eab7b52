#include "template/status/ADMStatusServiceProxy.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "runtime/Exception.h"
#include "runtime/ValueVector.h"
#include "template/status/doubles/ProxyFixture.h"

namespace commandfilter::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(StatusServiceProxy, NeedsACreatorAndAName) {
  const Ref<String> name = String::create("Test");
  EXPECT_FALSE(ADMStatusServiceProxy::initWithServiceCreator_serviceName(nullptr, name.get()));
  EXPECT_FALSE(ADMStatusServiceProxy::initWithServiceCreator_serviceName(creator_.get(), nullptr));
  EXPECT_FALSE(ADMStatusServiceProxy::proxyForServiceCreator_serviceName(nullptr, name.get()));
  EXPECT_TRUE(proxyFor(creator_.get(), ""));
  EXPECT_EQ(proxy_->serviceName()->view(), "Test");
  EXPECT_EQ(proxy_->serviceCreator().get(), creator_.get());
}

TEST_F(StatusServiceProxy, AsksTheCreatorEachTime) {
  EXPECT_THAT(creator_->askedNames, IsEmpty());
  EXPECT_TRUE(proxy_->realServiceObject().isIdenticalTo(service_));
  creator_->service = stringOf("another service");
  EXPECT_EQ(descriptionOf(proxy_->realServiceObject()), "another service");
  EXPECT_EQ(proxy_->cache().get(), creator_->cache.get());
  creator_->reinitializeServices();
  EXPECT_EQ(proxy_->cache().get(), creator_->cache.get());
  EXPECT_THAT(creator_->askedNames, ElementsAre("Test", "Test"));
  EXPECT_THAT(creator_->cacheNames, ElementsAre("Test", "Test"));
}

TEST_F(StatusServiceProxy, AnswersAFeature) {
  service_->answer("valueForFeature:", stringOf("ready"));
  EXPECT_EQ(valueAt({"State"}), "ready");
  EXPECT_THAT(service_->calls(), ElementsAre("valueForFeature: State"));
}

TEST_F(StatusServiceProxy, AnswersAProperty) {
  service_->answer("valueForFeature:property:", stringOf("full"));
  EXPECT_EQ(valueAt({"Supply", "Level"}), "full");
  EXPECT_THAT(service_->calls(), ElementsAre("valueForFeature:property: Supply, Level"));
}

TEST_F(StatusServiceProxy, AnswersAPropertyForAnIdentifier) {
  service_->answer("valueForFeature:property:identifier:", stringOf("empty"));
  EXPECT_EQ(valueAt({"Supply", "Level", "Black"}), "empty");
  EXPECT_THAT(service_->calls(),
              ElementsAre("valueForFeature:property:identifier: Supply, Level, Black"));
}

TEST_F(StatusServiceProxy, RefusesPathsOfOtherLengths) {
  service_->answer("valueForFeature:", stringOf("ready"));
  EXPECT_EQ(serviceValueAt(nullptr), "nil: Path is empty");
  EXPECT_EQ(valueAt(std::initializer_list<std::string_view>{}), "nil: Path is empty");
  EXPECT_EQ(valueAt({"a", "b", "c", "d"}), "nil: Incorrect path");
  EXPECT_THAT(creator_->askedNames, IsEmpty());
}

TEST_F(StatusServiceProxy, SaysThatThereIsNoService) {
  creator_->service = Value();
  EXPECT_EQ(valueAt({"a"}), "nil: Empty service");
  EXPECT_EQ(valueAt({"a", "b", "c"}), "nil: Empty service");
}

TEST_F(StatusServiceProxy, AsksWhetherAFeatureIsSupported) {
  service_->answer("isSupportedFeature:", "c@", [](const ServiceDouble::Arguments& arguments) {
    return Value::boolean(descriptionOf(arguments[0]) == "State");
  });
  service_->answer("valueForFeature:", stringOf("ready"));
  service_->answer("valueForFeature:property:", stringOf("now"));
  EXPECT_EQ(valueAt({"State"}), "ready");
  EXPECT_EQ(valueAt({"Level"}), "nil: Feature is not supported");
  EXPECT_EQ(valueAt({"Level", "State"}), "nil: Feature is not supported");
  EXPECT_EQ(valueAt({"State", "Level"}), "now");
  EXPECT_THAT(service_->calls(),
              ElementsAre("isSupportedFeature: State", "valueForFeature: State",
                          "isSupportedFeature: Level", "isSupportedFeature: Level",
                          "isSupportedFeature: State", "valueForFeature:property: State, Level"));
}

TEST_F(StatusServiceProxy, AsksWhetherAPropertyIsSupported) {
  service_->answer("isSupportedProperty:forFeature:", "c@@",
                   [](const ServiceDouble::Arguments& arguments) {
                     return Value::boolean(descriptionOf(arguments[0]) == "Level");
                   });
  service_->answer("valueForFeature:", stringOf("supply"));
  service_->answer("valueForFeature:property:", stringOf("full"));
  service_->answer("valueForFeature:property:identifier:", stringOf("empty"));
  EXPECT_EQ(valueAt({"Supply"}), "supply");
  EXPECT_EQ(valueAt({"Supply", "Level"}), "full");
  EXPECT_EQ(valueAt({"Supply", "Level", "Black"}), "empty");
  // Without a reason.
  EXPECT_EQ(valueAt({"Supply", "State"}), "nil");
  EXPECT_EQ(valueAt({"Supply", "State", "Black"}), "nil");
  EXPECT_THAT(
      service_->calls(),
      ElementsAre("valueForFeature: Supply", "isSupportedProperty:forFeature: Level, Supply",
                  "valueForFeature:property: Supply, Level",
                  "isSupportedProperty:forFeature: Level, Supply",
                  "valueForFeature:property:identifier: Supply, Level, Black",
                  "isSupportedProperty:forFeature: State, Supply",
                  "isSupportedProperty:forFeature: State, Supply"));
}

TEST_F(StatusServiceProxy, TakesAnObjectAsYesAndNilAsNo) {
  service_->answer("valueForFeature:", stringOf("ready"));
  service_->answer("isSupportedFeature:", stringOf("NO"));
  EXPECT_EQ(valueAt({"a"}), "ready");
  service_->answer("isSupportedFeature:", Value());
  EXPECT_EQ(valueAt({"b"}), "nil: Feature is not supported");
  service_->answer("isSupportedFeature:", Number::integer(0));
  EXPECT_EQ(valueAt({"c"}), "nil: Feature is not supported");
}

TEST_F(StatusServiceProxy, SaysWhatAServiceDoesNotOffer) {
  EXPECT_EQ(valueAt({"a"}), "nil: Value for feature functionality is not supported");
  EXPECT_EQ(valueAt({"a", "b"}),
            "nil: Value for feature and property functionality is not supported");
  EXPECT_EQ(valueAt({"a", "b", "c"}),
            "nil: Value for feature, property and identifier functionality is not supported");
}

TEST_F(StatusServiceProxy, NeedsNoPlaceForTheReason) {
  EXPECT_TRUE(
      proxy_->serviceValueForFeaturePathComponents_errorInfo(pathOf({"a"}).get(), nullptr).isNil());
  EXPECT_TRUE(proxy_->serviceValueForFeaturePathComponents_errorInfo(nullptr, nullptr).isNil());
}

TEST_F(StatusServiceProxy, AsksForAPathOnce) {
  service_->answer("valueForFeature:property:", Number::integer(80));
  EXPECT_EQ(valueAt({"Supply", "Level"}), "80");
  EXPECT_EQ(cached("Supply#Level"), "80");
  EXPECT_EQ(valueAt({"Supply", "Level"}), "80");
  EXPECT_EQ(service_->calls().size(), 1U);
  // Another proxy for the name shares it, and the service itself does not.
  proxy_ = proxyFor(creator_.get());
  EXPECT_EQ(valueAt({"Supply", "Level"}), "80");
  EXPECT_EQ(service_->calls().size(), 1U);
  EXPECT_EQ(serviceValueAt(pathOf({"Supply", "Level"}).get()), "80");
  EXPECT_EQ(service_->calls().size(), 2U);
  creator_->reinitializeServices();
  EXPECT_EQ(valueAt({"Supply", "Level"}), "80");
  EXPECT_EQ(service_->calls().size(), 3U);
}

TEST_F(StatusServiceProxy, JoinsThePathForItsKey) {
  service_->answer("valueForFeature:", stringOf("one"));
  service_->answer("valueForFeature:property:", stringOf("two"));
  service_->answer("valueForFeature:property:identifier:", stringOf("three"));
  EXPECT_EQ(valueAt({"a"}), "one");
  EXPECT_EQ(valueAt({"a", "b"}), "two");
  EXPECT_EQ(valueAt({"a", "b", "c"}), "three");
  EXPECT_EQ(cached("a"), "one");
  EXPECT_EQ(cached("a#b"), "two");
  EXPECT_EQ(cached("a#b#c"), "three");
  EXPECT_EQ(valueAt({"a#b"}), "two");
  EXPECT_EQ(valueAt(*Array::create({Number::integer(1), Value::null()})), "two");
  EXPECT_EQ(cached("1#<null>"), "two");
  EXPECT_EQ(valueAt({"", "d"}), "two");
  EXPECT_EQ(cached("#d"), "two");
  EXPECT_EQ(cached("d"), "none");
}

TEST_F(StatusServiceProxy, GivesTheReasonOfAFailedPathOnce) {
  creator_->service = Value();
  EXPECT_EQ(valueAt({"a"}), "nil: Empty service");
  EXPECT_EQ(cached("a"), "<null>");
  creator_->service = service_;
  service_->answer("valueForFeature:", stringOf("ready"));
  EXPECT_EQ(valueAt({"a"}), "nil");
  EXPECT_EQ(valueAt({"b"}), "ready");
  creator_->reinitializeServices();
  EXPECT_EQ(valueAt({"a"}), "ready");
}

TEST_F(StatusServiceProxy, GivesTheReasonOfAPathOfAnotherLengthOnceToo) {
  EXPECT_EQ(valueAt(std::initializer_list<std::string_view>{}), "nil: Path is empty");
  EXPECT_EQ(cached(""), "<null>");
  EXPECT_EQ(valueAt(std::initializer_list<std::string_view>{}), "nil");
  EXPECT_EQ(valueAt({"a", "b", "c", "d"}), "nil: Incorrect path");
  EXPECT_EQ(cached("a#b#c#d"), "<null>");
  EXPECT_EQ(valueAt({"a", "b", "c", "d"}), "nil");
}

TEST_F(StatusServiceProxy, ReadsTheNullObjectAsNilFromTheCache) {
  service_->answer("valueForFeature:", Value::null());
  EXPECT_EQ(valueAt({"a"}), "<null>");
  EXPECT_EQ(valueAt({"a"}), "nil");
}

TEST_F(StatusServiceProxy, CachesNothingWhenTheServiceThrows) {
  service_->answer("valueForFeature:", "@@",
                   [](const auto&) -> Value { throw Exception("paper jam"); });
  service_->answer("state", "@", [](const auto&) -> Value { throw Exception("paper jam"); });
  EXPECT_EQ(reasonOf([this] { static_cast<void>(valueAt({"a"})); }), "paper jam");
  EXPECT_EQ(reasonOf([this] { static_cast<void>(ask("state")); }), "paper jam");
  EXPECT_EQ(creator_->cache->count(), 0U);
}

TEST_F(StatusServiceProxy, WorksWithACreatorWithoutCaches) {
  creator_->cache = nullptr;
  service_->answer("valueForFeature:", stringOf("ready"));
  service_->answer("state", stringOf("ready"));
  EXPECT_EQ(valueAt({"a"}), "ready");
  EXPECT_EQ(valueAt({"a"}), "ready");
  EXPECT_EQ(descriptionOf(ask("state")), "ready");
  EXPECT_EQ(service_->calls().size(), 3U);
}

TEST_F(StatusServiceProxy, TellsPathsThatComeAgainApart) {
  service_->answer("valueForFeature:property:", "@@@",
                   [](const ServiceDouble::Arguments& arguments) {
                     return stringOf(descriptionOf(arguments[0]) + descriptionOf(arguments[1]));
                   });
  ValueVector names;
  for (int i = 0; i < 10; ++i) names.push_back(stringOf(std::to_string(i)));
  for (int round = 0; round < 3; ++round) {
    for (const Value& feature : names) {
      for (const Value& property : names) {
        EXPECT_EQ(valueAt(*Array::create({feature, property})),
                  descriptionOf(feature) + descriptionOf(property));
      }
    }
  }
  EXPECT_EQ(service_->calls().size(), 100U);
}

TEST_F(StatusServiceProxy, PutsTheKeyOfAPathTogetherOnce) {
  service_->answer("valueForFeature:", stringOf("ready"));
  const Ref<String> name = String::create("a");
  const Ref<Array> path = Array::create({Value(name)});
  // What the path is made of is remembered, so that it tells the question from then on.
  EXPECT_EQ(name->referenceCount(), 2U);
  static_cast<void>(valueAt(*path));
  EXPECT_EQ(name->referenceCount(), 3U);
  static_cast<void>(valueAt(*Array::create({Value(name)})));
  EXPECT_EQ(name->referenceCount(), 3U);
  // Not of what may have another text next time.
  const std::uint32_t before = service_->referenceCount();
  static_cast<void>(valueAt(*Array::create({Value(service_)})));
  EXPECT_EQ(service_->referenceCount(), before);
}

TEST_F(StatusServiceProxy, IsNoKeyOfADictionary) {
  DictionaryBuilder builder;
  EXPECT_EQ(reasonOf([&] { builder.set(Value(proxy_), Number::integer(1)); }),
            "ADMStatusServiceProxy: a service cannot be a key");
  EXPECT_EQ(builder.count(), 0U);
  EXPECT_TRUE(Dictionary::create()->objectForKey(Value(proxy_)).isNil());
}

}  // namespace
}  // namespace commandfilter::testing
