// Contexts take what a service is known to answer before they ask it.

#include <gtest/gtest.h>

#include "evaluation/ADMAggregateEvaluationContext.h"
#include "expression/Expressions.h"
#include "runtime/Exception.h"
#include "template/status/ADMMessageSource.h"

namespace commandfilter::testing {
namespace {

// Is known to answer "level" with `known`, and answers every message when it is asked.
class KnownService final : public Implements<Object, ADMMessageSource> {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<KnownService> create() { return make<KnownService>(); }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] bool respondsToSelector(const Selector& /*selector*/) const override {
    ++questions;
    return true;
  }
  bool answerMessage(const Selector& selector, const Value& object, Value& answer) override {
    ++messages;
    answer = stringOf(selector.name() + " of " + descriptionOf(object));
    return true;
  }
  [[nodiscard]] const Value& knownAnswer(const Selector& selector,
                                         const Value& object) const noexcept override {
    static constexpr Value kNone;
    return selector.name() == "level" && !object.isNil() ? known : kNone;
  }

  Value known;
  int messages = 0;
  mutable int questions = 0;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  KnownService() = default;
  ~KnownService() override = default;
};

constexpr auto kProtocols = conformances<KnownService, ADMMessageSource>();
constinit const Class KnownService::kClass{
    .name = "KnownService", .base = &Object::kClass, .protocols = kProtocols};

class KnownAnswers : public ::testing::Test {
 protected:
  template <typename Context>
  static std::string at(std::string_view expression, const Ref<Context>& context) {
    return shown(evaluate(expression, context));
  }

  Ref<KnownService> service_ = KnownService::create();
  Value list_ = arrayOf({stringOf("x"), stringOf("y")});
};

TEST_F(KnownAnswers, AreTakenByListsWithoutAMessage) {
  const auto context =
      ADMArrayEvaluationContext::initWithStatusService_globalConfiguration_elementsList(
          service_, nullptr, list_);
  EXPECT_EQ(at("@level", context), R"("level of x")");
  service_->known = stringOf("high");
  EXPECT_EQ(at("@level", context), R"("high")");
  service_->known = Value::null();
  EXPECT_EQ(at("@level", context), "nil");
  EXPECT_EQ(service_->messages, 1);
  EXPECT_EQ(at("@other", context), R"("other of x")");
}

TEST_F(KnownAnswers, AreTakenByAggregationsWithoutAQuestion) {
  const auto context = ADMAggregateEvaluationContext::contextCalledFrom(
      *TestContext::create({{"level", stringOf("the parent's")}}, service_), list_, Value());
  EXPECT_EQ(at("@level", context), R"("level of x")");
  EXPECT_EQ(service_->questions, 1);
  service_->known = stringOf("high");
  EXPECT_EQ(at("@level", context), R"("high")");
  service_->known = Value::null();
  EXPECT_EQ(at("@level", context), "nil");
  EXPECT_EQ(service_->questions, 1);
  EXPECT_EQ(at("@other", context), R"("other of x")");
  EXPECT_EQ(service_->questions, 2);
}

TEST_F(KnownAnswers, AreNotLookedForWithoutAnElement) {
  const auto context = ADMAggregateEvaluationContext::contextCalledFrom(
      *TestContext::create({}, service_), list_, Value());
  EXPECT_EQ(at("@level", context), R"("level of x")");
  service_->known = stringOf("high");
  DictionaryBuilder entries;
  entries.set("key", stringOf("value"));
  context->resetIteration(entries.build());
  EXPECT_THROW(at("@level", context), Exception);
}

}  // namespace
}  // namespace commandfilter::testing
