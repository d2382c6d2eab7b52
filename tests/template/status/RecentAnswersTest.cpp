// What a proxy gives without asking its creator, as long as the creator says that nothing changed.

#include <gtest/gtest.h>

#include <string>

#include "runtime/ValueVector.h"
#include "template/status/doubles/ProxyFixture.h"

namespace commandfilter::testing {
namespace {

class RecentAnswers : public StatusServiceProxy {
 protected:
  RecentAnswers() { creator_->currentGeneration = 1; }

  // Asks until the answer is remembered.
  void rememberPath() {
    for (int i = 0; i < 3; ++i) EXPECT_EQ(valueAt(*path_), "5");
    creator_->cacheNames.clear();
  }
  // Whether the next question reaches the creator.
  bool asksTheCreator() {
    const std::size_t before = creator_->cacheNames.size();
    static_cast<void>(valueAt(*path_));
    return creator_->cacheNames.size() != before;
  }
  Value levelOf(const Value& supply) {
    Value answer;
    EXPECT_TRUE(proxy_->answerMessage(Selector("levelOf:"), supply, answer));
    return answer;
  }

  Ref<Array> path_ = pathOf({"Level"});
};

TEST_F(RecentAnswers, AreGivenWithoutTheCreator) {
  service_->answer("valueForFeature:", Number::integer(5));
  rememberPath();
  EXPECT_FALSE(asksTheCreator());
  EXPECT_EQ(valueAt(*path_), "5");
}

TEST_F(RecentAnswers, MayBeNil) {
  service_->answer("valueForFeature:", Value());
  for (int i = 0; i < 3; ++i) EXPECT_EQ(valueAt(*path_), "nil");
  EXPECT_FALSE(asksTheCreator());
  EXPECT_EQ(valueAt(*path_), "nil");
}

TEST_F(RecentAnswers, AreAskedForAnewInAnotherGeneration) {
  service_->answer("valueForFeature:", Number::integer(5));
  rememberPath();
  service_->answer("valueForFeature:", Number::integer(6));
  creator_->reinitializeServices();
  creator_->currentGeneration = 2;
  EXPECT_EQ(valueAt(*path_), "6");
  EXPECT_EQ(valueAt(*path_), "6");
}

TEST_F(RecentAnswers, AreAskedForAnewWhenTheStoreLosesThem) {
  service_->answer("valueForFeature:", Number::integer(5));
  rememberPath();
  service_->answer("valueForFeature:", Number::integer(6));
  creator_->cache->removeAllObjects();
  EXPECT_EQ(valueAt(*path_), "6");
  for (int i = 0; i < 3; ++i) static_cast<void>(valueAt(*path_));
  creator_->cache->setObject_forKey(Number::integer(7), stringOf("Level"));
  EXPECT_EQ(valueAt(*path_), "7");
}

TEST_F(RecentAnswers, AreNotKeptForACreatorThatPromisesNothing) {
  creator_->currentGeneration = 0;
  service_->answer("valueForFeature:", Number::integer(5));
  rememberPath();
  EXPECT_TRUE(asksTheCreator());
}

TEST_F(RecentAnswers, AreOfOneMessageAboutOneObject) {
  service_->answer("levelOf:", "@@", [](const ServiceDouble::Arguments& arguments) {
    return stringOf("level of " + descriptionOf(arguments[0]));
  });
  service_->answer("state", stringOf("ready"));
  const Value black = stringOf("Black");
  const Value cyan = stringOf("Cyan");
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(descriptionOf(levelOf(black)), "level of Black");
    EXPECT_EQ(descriptionOf(levelOf(cyan)), "level of Cyan");
    // A message that takes none is the same about any object.
    for (const Value& object : {black, cyan, Value()}) {
      Value answer;
      EXPECT_TRUE(proxy_->answerMessage(Selector("state"), object, answer));
      EXPECT_EQ(descriptionOf(answer), "ready");
    }
  }
  EXPECT_EQ(service_->calls().size(), 3U);
}

TEST_F(RecentAnswers, AreKnownOfMessagesOnceTheyAreKept) {
  service_->answer("levelOf:", stringOf("full"));
  service_->answer("nothing", Value());
  const Selector levelOf("levelOf:");
  const Value black = stringOf("Black");
  EXPECT_TRUE(proxy_->knownAnswer(levelOf, black).isNil());
  Value answer;
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(proxy_->answerMessage(levelOf, black, answer));
    EXPECT_TRUE(proxy_->answerMessage(Selector("nothing"), black, answer));
  }
  EXPECT_EQ(descriptionOf(proxy_->knownAnswer(levelOf, black)), "full");
  EXPECT_TRUE(proxy_->knownAnswer(Selector("nothing"), black).isNull());
  // Of nothing else.
  EXPECT_TRUE(proxy_->knownAnswer(levelOf, stringOf("Cyan")).isNil());
  EXPECT_TRUE(proxy_->knownAnswer(levelOf, Number::integer(5)).isNil());
  EXPECT_TRUE(proxy_->knownAnswer(levelOf, Value()).isNil());
  creator_->currentGeneration = 2;
  EXPECT_TRUE(proxy_->knownAnswer(levelOf, black).isNil());
}

TEST_F(RecentAnswers, AreNotKeptOfWhatMayReadDifferently) {
  service_->answer("levelOf:", "@@",
                   [](const ServiceDouble::Arguments& arguments) { return arguments[0]; });
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(descriptionOf(levelOf(Number::integer(i))), std::to_string(i));
  }
  EXPECT_EQ(service_->calls().size(), 5U);
}

// "@" and an empty text stand for the current element, which only a context knows.
TEST_F(RecentAnswers, AreNotKnownOfPathsToWhatIsCurrent) {
  service_->answer("valueForFeature:", Number::integer(5));
  for (const std::string_view name : {"@", ""}) {
    const Ref<Array> path = pathOf({name});
    for (int i = 0; i < 5; ++i) EXPECT_EQ(valueAt(*path), "5");
    EXPECT_TRUE(proxy_->knownValueForFeaturePathComponents(*path).isNil()) << name;
  }
  rememberPath();
  EXPECT_EQ(descriptionOf(proxy_->knownValueForFeaturePathComponents(*path_)), "5");
}

// More than are remembered at once.
TEST_F(RecentAnswers, AreRightForManyQuestions) {
  service_->answer("levelOf:", "@@",
                   [](const ServiceDouble::Arguments& arguments) { return arguments[0]; });
  ValueVector supplies;
  for (int i = 0; i < 1000; ++i) supplies.push_back(stringOf("supply " + std::to_string(i)));
  for (int round = 0; round < 4; ++round) {
    for (const Value& supply : supplies) EXPECT_TRUE(levelOf(supply).isIdenticalTo(supply));
  }
  EXPECT_EQ(service_->calls().size(), supplies.size());
}

// A service may say of a message that it takes an argument when its name does not.
TEST_F(RecentAnswers, FollowTheServiceInWhatAMessageTakes) {
  service_->answer("odd", "@@",
                   [](const ServiceDouble::Arguments& arguments) { return arguments[0]; });
  for (int i = 0; i < 4; ++i) {
    for (const char* name : {"Black", "Cyan"}) {
      Value answer;
      EXPECT_TRUE(proxy_->answerMessage(Selector("odd"), stringOf(name), answer));
      EXPECT_EQ(descriptionOf(answer), name);
    }
  }
}

}  // namespace
}  // namespace commandfilter::testing
