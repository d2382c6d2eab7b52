#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "evaluation/ADMEvaluationContextBase.h"
#include "evaluation/ProcedureSignatures.h"
#include "expression/ADMEvaluationProcessor.h"

namespace commandfilter::testing {
namespace {

TEST(ProcedureSignatures, AreThoseOfTheProceduresThatContextsHave) {
  std::vector<std::string> selectors;
  for (const MethodGroup* group : ADMEvaluationContextBase::kClass.groups) {
    for (const Method& method : group->methods) selectors.emplace_back(method.selector);
  }
  std::vector<std::string> expected;
  for (const ProcedureSignature& signature : kProcedureSignatures) {
    expected.push_back("execute" + std::string(signature.name) + "Procedure:");
  }
  EXPECT_THAT(selectors, ::testing::UnorderedElementsAreArray(expected));
}

TEST(ProcedureSignatures, SayWhichNumbersOfArgumentsAreAccepted) {
  EXPECT_TRUE(argumentsOf("GetItem").accepts(2));
  EXPECT_TRUE(argumentsOf("GetItem").accepts(3));
  EXPECT_FALSE(argumentsOf("GetItem").accepts(1));
  EXPECT_FALSE(argumentsOf("GetItem").accepts(4));
  EXPECT_TRUE(argumentsOf("Sort").accepts(9));
  EXPECT_FALSE(argumentsOf("Dictionary").accepts(3));
  EXPECT_TRUE(argumentsOf("Dictionary").accepts(0));
  EXPECT_TRUE(argumentsOf("Array").accepts(1000));
}

TEST(ProcedureSignatures, SayWhichArgumentsAreEvaluatedForEachElement) {
  EXPECT_FALSE(procedureSignature("AggregateIf")->isForEachElement(0));
  EXPECT_TRUE(procedureSignature("AggregateIf")->isForEachElement(1));
  EXPECT_TRUE(procedureSignature("AggregateIf")->isForEachElement(2));
  EXPECT_FALSE(procedureSignature("AggregateIf")->isForEachElement(3));
  EXPECT_FALSE(procedureSignature("Array")->isForEachElement(0));
  EXPECT_EQ(procedureSignature("Unknown"), nullptr);
}

// What a procedure records for a number of arguments that are all nil.
bool isRefused(std::string_view name, std::size_t arguments) {
  const Ref<ADMEvaluationContextBase> context =
      ADMEvaluationContextBase::initWithStatusService_globalConfiguration(Value(), nullptr);
  std::string expression = "_" + std::string(name) + "(";
  for (std::size_t i = 0; i < arguments; ++i) expression.append(i == 0 ? "@nil" : ", @nil");
  (void)ADMEvaluationProcessor::processorWithExpressionString_evaluationContext(
      String::create(expression + ")"), context)
      ->execute();
  return context->lastError() != nullptr;
}

TEST(ProcedureSignatures, HoldForProceduresThatRefuseNothingElse) {
  for (const std::string_view name :
       {"GetKey", "GetItem", "In", "Filter", "Aggregate", "AggregateIf", "Exclude", "Intersect",
        "Union", "Service", "ServiceValue", "InputValue", "TemplateValue", "Dictionary", "Array",
        "Enquote", "EndLine"}) {
    for (std::size_t count = 0; count <= 6; ++count) {
      EXPECT_EQ(isRefused(name, count), !procedureSignature(name)->count.accepts(count))
          << name << " with " << count;
    }
  }
}

}  // namespace
}  // namespace commandfilter::testing
