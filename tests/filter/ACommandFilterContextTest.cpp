#include "filter/ACommandFilterContext.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "InChild.h"
#include "JobVariables.h"
#include "filter/ACommandFilterServiceInfoProvider.h"
#include "filter/protocols/ICommandFilterService.h"
#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Exception.h"

namespace commandfilter {
namespace {

using testing::JobVariables;
using testing::runInChild;

// What the service classes of this file were asked.
struct Requests {
  int good = 0;
  int refusing = 0;
  int living = 0;
  std::string uri;
};
Requests requests;

std::string uriOf(ICommandFilterServiceInfoProvider* provider) {
  if (provider == nullptr) return "no provider";
  const auto* known = castTo<ACommandFilterServiceInfoProvider>(&provider->object());
  return known != nullptr ? known->printerURI()->text() : "another provider";
}

class GoodService final : public Implements<Object, ICommandFilterService> {
 public:
  static const Class kClass;
  static RefPtr<GoodService> initWithServiceInfoProvider(
      ICommandFilterServiceInfoProvider* provider) {
    ++requests.good;
    requests.uri = uriOf(provider);
    return make<GoodService>();
  }
  GoodService() { ++requests.living; }
  ~GoodService() override { --requests.living; }
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
};

class RefusingService final : public Implements<Object, ICommandFilterService> {
 public:
  static const Class kClass;
  static RefPtr<RefusingService> initWithServiceInfoProvider(
      ICommandFilterServiceInfoProvider* /*provider*/) {
    ++requests.refusing;
    return nullptr;
  }
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
};

constexpr auto kGoodProtocols = conformances<GoodService, ICommandFilterService>();
constexpr std::array kGoodInitializers{
    initializer<&GoodService::initWithServiceInfoProvider>("initWithServiceInfoProvider:")};
constexpr std::array kRefusingInitializers{
    initializer<&RefusingService::initWithServiceInfoProvider>("initWithServiceInfoProvider:")};
constexpr std::array kOtherInitializers{
    initializer<&GoodService::initWithServiceInfoProvider>("initWithProvider:")};

constinit const Class GoodService::kClass{.name = "ACommandFilterGoodService",
                                          .base = &Object::kClass,
                                          .protocols = kGoodProtocols,
                                          .initializers = kGoodInitializers};
constinit const Class RefusingService::kClass{.name = "ACommandFilterRefusingService",
                                              .base = &Object::kClass,
                                              .initializers = kRefusingInitializers};
// A class whose instances answer to another initialiser only.
constinit const Class kUnfitClass{.name = "ACommandFilterUnfitService",
                                  .base = &Object::kClass,
                                  .initializers = kOtherInitializers};
// Classes whose names come near the rule.
constinit const Class kNamelessClass{
    .name = "ACommandFilterService", .base = &Object::kClass, .initializers = kGoodInitializers};
constinit const Class kWithoutPrefixClass{
    .name = "NearService", .base = &Object::kClass, .initializers = kGoodInitializers};
constinit const Class kWithoutSuffixClass{
    .name = "ACommandFilterNear", .base = &Object::kClass, .initializers = kGoodInitializers};
constinit const Class kPercentClass{.name = "ACommandFilter%@%sService",
                                    .base = &Object::kClass,
                                    .initializers = kGoodInitializers};
// Made known by the one test that needs it.
constinit const Class kLateClass{.name = "ACommandFilterLateService",
                                 .base = &Object::kClass,
                                 .initializers = kGoodInitializers};

constexpr std::array<const Class*, 7> kClasses{
    &GoodService::kClass, &RefusingService::kClass, &kUnfitClass,  &kNamelessClass,
    &kWithoutPrefixClass, &kWithoutSuffixClass,     &kPercentClass};

class Services : public ::testing::Test {
 protected:
  void SetUp() override { requests = Requests(); }

  Value serviceWithName(const char* name) {
    return context_->serviceWithName(String::create(name).get());
  }

  ClassRegistry::Registration registration_ = ClassRegistry::shared().add(kClasses);
  Ref<ACommandFilterContext> context_ = ACommandFilterContext::contextWithServiceInfoProvider(
      ACommandFilterServiceInfoProvider::initWithPrinterURI(String::create("usb://Acme/M1")));
};

TEST_F(Services, AreNilForANilName) { EXPECT_TRUE(context_->serviceWithName(nullptr).isNil()); }

TEST_F(Services, AreMadeOnceAndKept) {
  const Value first = serviceWithName("Good");
  EXPECT_NE(castTo<GoodService>(first), nullptr);
  EXPECT_TRUE(serviceWithName("Good").isIdenticalTo(first));
  EXPECT_TRUE(serviceWithName("Good").isIdenticalTo(first));
  EXPECT_EQ(requests.good, 1);
}

TEST_F(Services, AreMadeForTheDeviceOfTheContext) {
  static_cast<void>(serviceWithName("Good"));
  EXPECT_EQ(requests.uri, "usb://Acme/M1");
}

TEST_F(Services, AreMadeWithoutAProviderWhenTheContextHasNone) {
  const Ref<ACommandFilterContext> context =
      ACommandFilterContext::contextWithServiceInfoProvider(nullptr);
  EXPECT_FALSE(context->serviceWithName(String::create("Good").get()).isNil());
  EXPECT_EQ(requests.uri, "no provider");
}

TEST_F(Services, LiveAsLongAsTheContext) {
  {
    const Ref<ACommandFilterContext> context =
        ACommandFilterContext::contextWithServiceInfoProvider(nullptr);
    static_cast<void>(context->serviceWithName(String::create("Good").get()));
    EXPECT_EQ(requests.living, 1);
  }
  EXPECT_EQ(requests.living, 0);
}

TEST_F(Services, BelongToOneContext) {
  const Ref<ACommandFilterContext> other =
      ACommandFilterContext::contextWithServiceInfoProvider(nullptr);
  const Value here = serviceWithName("Good");
  EXPECT_FALSE(other->serviceWithName(String::create("Good").get()).isIdenticalTo(here));
}

TEST_F(Services, AreNamedWithRegardToCase) {
  EXPECT_TRUE(serviceWithName("good").isNil());
  EXPECT_FALSE(serviceWithName("Good").isNil());
  EXPECT_TRUE(serviceWithName("good").isNil());
  EXPECT_TRUE(serviceWithName("GOOD").isNil());
}

TEST_F(Services, AreNamedByTheRuleExactly) {
  EXPECT_TRUE(serviceWithName("Near").isNil());
  EXPECT_TRUE(serviceWithName(" Good").isNil());
  EXPECT_TRUE(serviceWithName("ACommandFilterGoodService").isNil());
  EXPECT_FALSE(serviceWithName("").isNil());
}

TEST_F(Services, MayHaveNamesThatLookLikeConversions) {
  EXPECT_FALSE(serviceWithName("%@%s").isNil());
  EXPECT_TRUE(serviceWithName("%n%d").isNil());
}

TEST_F(Services, AreNilWhenTheClassLacksTheInitialiserAndThatIsRemembered) {
  EXPECT_TRUE(serviceWithName("Unfit").isNil());
  EXPECT_TRUE(serviceWithName("Unfit").isNil());
  EXPECT_EQ(requests.good, 0);
}

TEST_F(Services, AreNilWhenTheInitialiserRefusesAndItIsNotAskedAgain) {
  EXPECT_TRUE(serviceWithName("Refusing").isNil());
  EXPECT_TRUE(serviceWithName("Refusing").isNil());
  EXPECT_EQ(requests.refusing, 1);
}

TEST_F(Services, ThatWereMissingOnceStayMissing) {
  EXPECT_TRUE(serviceWithName("Late").isNil());
  const Class* const late[] = {&kLateClass};
  const auto registration = ClassRegistry::shared().add(late);
  EXPECT_TRUE(serviceWithName("Late").isNil());
  const Ref<ACommandFilterContext> other =
      ACommandFilterContext::contextWithServiceInfoProvider(nullptr);
  EXPECT_FALSE(other->serviceWithName(String::create("Late").get()).isNil());
}

TEST_F(Services, CanBeAskedForByProtocol) {
  EXPECT_TRUE(context_->service<ICommandFilterService>("Good"));
  EXPECT_FALSE(context_->service<ICommandFilterServiceInfoProvider>("Good"));
  EXPECT_FALSE(context_->service<ICommandFilterService>("Missing"));
}

TEST(Context, IsNewOnEveryCall) {
  const Ref<ACommandFilterContext> first = ACommandFilterContext::context();
  const Ref<ACommandFilterContext> second = ACommandFilterContext::context();
  EXPECT_NE(first.get(), second.get());
}

TEST(Context, IsMadeForTheDeviceOfTheEnvironment) {
  const JobVariables variables;
  runInChild([] {
    const auto registration = ClassRegistry::shared().add(kClasses);
    const Ref<ACommandFilterContext> context = ACommandFilterContext::context();
    ASSERT_FALSE(context->serviceWithName(String::create("Good").get()).isNil());
    EXPECT_EQ(requests.uri, testing::kDeviceURI);
  });
}

TEST(Context, HasNoProviderOutsideACommandJob) {
  const auto registration = ClassRegistry::shared().add(kClasses);
  const Ref<ACommandFilterContext> context = ACommandFilterContext::context();
  ASSERT_FALSE(context->serviceWithName(String::create("Good").get()).isNil());
  EXPECT_EQ(requests.uri, "no provider");
}

}  // namespace
}  // namespace commandfilter
