// _External with classes of the program and of a bundle; the calls themselves are language cases.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "evaluation/protocol/ADMExternalProcedure.h"
#include "expression/Expressions.h"
#include "runtime/Bundle.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Send.h"

namespace commandfilter::testing {
namespace {

using ::testing::ElementsAre;

constexpr const char* kInvalidExternal = "2: Invalid args in External procedure";

std::vector<std::string>* events = nullptr;

// Notes what happens to it.
class Watched final : public Implements<Object, ADMExternalProcedure> {
 public:
  static const Class kClass;

  static Ref<Watched> init() { return make<Watched>(); }
  Watched() { events->emplace_back("made"); }
  ~Watched() override { events->emplace_back("gone"); }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  bool wantsEvaluateArguments() override {
    events->emplace_back("asked");
    return false;
  }
  Value execute_context(const Array* arguments, ADMEvaluationContext* context) override {
    events->push_back("called with " + shown(Value::sharing(arguments)));
    context->setRuntimeError("from inside");
    return Value::sharing(&context->object());
  }
};
constexpr auto kWatchedProtocols = conformances<Watched, ADMExternalProcedure>();
constexpr std::array kWatchedInitializers{initializer<&Watched::init>("init")};
constinit const Class Watched::kClass{.name = "AWatchedExternalProcedure",
                                      .base = &Object::kClass,
                                      .protocols = kWatchedProtocols,
                                      .initializers = kWatchedInitializers};

// Refines the protocol, and so conforms to it without its interface.
constexpr std::array<const Protocol*, 1> kRefined{&ADMExternalProcedure::kProtocol};
constinit const Protocol kRefinement{"IRefinedProcedure", kRefined};
class Refined final : public Object {
 public:
  static const Class kClass;
  static Ref<Refined> init() { return make<Refined>(); }
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
};
constexpr std::array kRefinedProtocols{
    Conformance{&kRefinement, [](Object& object) -> void* { return &object; }}};
constexpr std::array kRefinedInitializers{initializer<&Refined::init>("init")};
constinit const Class Refined::kClass{.name = "ARefinedExternalProcedure",
                                      .base = &Object::kClass,
                                      .protocols = kRefinedProtocols,
                                      .initializers = kRefinedInitializers};

// Has the name that an empty name would stand for.
class Nameless final : public Object {
 public:
  static const Class kClass;
  static Ref<Nameless> init() { return make<Nameless>(); }
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
};
bool wantsValues(const Value& /*receiver*/) { return false; }
Value giveArguments(const Value& /*receiver*/, const Array* arguments,
                    ADMEvaluationContext* /*context*/) {
  return Value::sharing(arguments);
}
constexpr std::array kNamelessMethods{method<&wantsValues>("wantsEvaluateArguments"),
                                      method<&giveArguments>("execute:context:")};
constexpr std::array kNamelessInitializers{initializer<&Nameless::init>("init")};
constinit const Class Nameless::kClass{.name = "AExternalProcedure",
                                       .base = &Object::kClass,
                                       .methods = kNamelessMethods,
                                       .initializers = kNamelessInitializers};

constexpr std::array<const Class*, 3> kClasses{&Watched::kClass, &Refined::kClass,
                                               &Nameless::kClass};

class External : public ::testing::Test {
 protected:
  External() { events = &events_; }
  ~External() override { events = nullptr; }

  std::vector<std::string> events_;
  ClassRegistry::Registration registration_ = ClassRegistry::shared().add(kClasses);
  Ref<TestContext> context_ = TestContext::create();
};

TEST_F(External, UsesOneInstanceForEachCall) {
  const Value result = evaluate(R"(_External("Watched", 1, @nil))", context_);
  EXPECT_TRUE(result.isIdenticalTo(context_));
  EXPECT_THAT(events_, ElementsAre("made", "asked", "called with [1q, <null>]", "gone"));
}

TEST_F(External, AsksNothingWithoutArguments) {
  static_cast<void>(evaluate(R"(_External("Watched"))", context_));
  EXPECT_THAT(events_, ElementsAre("made", "called with nil", "gone"));
  EXPECT_EQ(errorOf(*context_), "2: from inside");
}

TEST_F(External, ReleasesTheInstanceWhenAnArgumentThrows) {
  context_->functions["throw"] = [](TestContext& /*context*/, const Array* /*items*/) -> Value {
    throw Exception("thrown");
  };
  EXPECT_EQ(reasonOf([this] {
              static_cast<void>(evaluate(R"(_External("Watched", _Run("throw")))", context_));
            }),
            "thrown");
  EXPECT_THAT(events_, ElementsAre("made", "asked", "gone"));
}

TEST_F(External, RaisesWhenAConformingClassLacksTheMethods) {
  EXPECT_EQ(
      reasonOf([this] { static_cast<void>(evaluate(R"(_External("Refined", 1))", context_)); }),
      "ARefinedExternalProcedure: unrecognized selector wantsEvaluateArguments");
}

TEST_F(External, NeedsANameEvenWhereTheEmptyOneHasAClass) {
  EXPECT_EQ(shown(evaluate(R"(_External("", 5))", context_)), "nil");
  EXPECT_EQ(errorOf(*context_), kInvalidExternal);
}

TEST_F(External, FindsNoClassAfterItIsGone) {
  registration_ = {};
  EXPECT_EQ(shown(evaluate(R"(_External("Watched"))", context_)), "nil");
  EXPECT_EQ(errorOf(*context_), kInvalidExternal);
}

class ExtensionsBundle : public External {
 protected:
  void SetUp() override {
    ASSERT_TRUE(bundle_);
    ASSERT_TRUE(bundle_->load()) << bundle_->loadFailure();
  }
  void TearDown() override { bundle_->unload(); }

  RefPtr<Bundle> bundle_ = Bundle::bundleWithPath(TEST_BUNDLES "/Extensions.bundle");
};

TEST_F(ExtensionsBundle, HasAProcedureThatConforms) {
  EXPECT_EQ(shown(evaluate(R"(_External("Join", 1, 2 + 3, @nil))", context_)),
            R"("1, 23, <null>")");
  EXPECT_EQ(errorOf(*context_), "");
  EXPECT_EQ(shown(evaluate(R"(_External("Join"))", context_)), "nil");
  EXPECT_EQ(errorOf(*context_), "2: nothing to join");
}

TEST_F(ExtensionsBundle, HasAProcedureThatOnlyHasTheMethods) {
  EXPECT_EQ(
      shown(evaluate(R"(_External("FirstOf", @nil, _Call("a", 5), _Call("b", 6)))", context_)),
      "5q");
  EXPECT_THAT(context_->calls, ElementsAre("a"));
  EXPECT_EQ(shown(evaluate(R"(_External("FirstOf"))", context_)), "nil");
  EXPECT_EQ(errorOf(*context_), "");
}

TEST_F(ExtensionsBundle, IsForgottenWhenItIsUnloaded) {
  bundle_->unload();
  EXPECT_EQ(shown(evaluate(R"(_External("Join", 1))", context_)), "nil");
  EXPECT_EQ(errorOf(*context_), kInvalidExternal);
}

TEST_F(ExtensionsBundle, HasAContext) {
  const Class* info = classNamed("ExtendedEvaluationContext");
  ASSERT_NE(info, nullptr);
  const Value made = instantiate(*info, Selector("initWithStatusService:globalConfiguration:"),
                                 {stringOf("service"), Value()});
  auto* context = castTo<ADMEvaluationContext>(made);
  ASSERT_NE(context, nullptr);
  const Ref<ADMEvaluationContext> shared(*context);
  EXPECT_EQ(shown(evaluate("_Twice(@answer)", shared)), "[42i, 42i]");
  EXPECT_EQ(shown(evaluate("_GetSize(_Twice(@service))", shared)), "2Q");
  EXPECT_EQ(shown(evaluate("@uppercaseString", shared)), R"("SERVICE")");
}

}  // namespace
}  // namespace commandfilter::testing
