#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "evaluation/ADMEvaluationContextBase.h"
#include "runtime/Selector.h"

namespace commandfilter::testing {
namespace {

using ::testing::UnorderedElementsAre;

std::span<const MethodGroup* const> groups() { return ADMEvaluationContextBase::kClass.groups; }

// The names of a group's procedures.
std::vector<std::string> proceduresOf(std::string_view groupName) {
  constexpr std::string_view kBefore = "execute";
  constexpr std::string_view kBehind = "Procedure:";
  std::vector<std::string> names;
  for (const MethodGroup* group : groups()) {
    if (group->name != groupName) continue;
    for (const Method& row : group->methods) {
      EXPECT_TRUE(row.selector.starts_with(kBefore) && row.selector.ends_with(kBehind));
      names.emplace_back(row.selector.substr(
          kBefore.size(), row.selector.size() - kBefore.size() - kBehind.size()));
    }
  }
  return names;
}

TEST(ProcedureGroups, HoldTheirProceduresOnceEach) {
  EXPECT_THAT(proceduresOf("AggregateProcedure"),
              UnorderedElementsAre("Sort", "Filter", "AggregateIf", "Aggregate"));
  EXPECT_THAT(proceduresOf("CollectionsProcedures"),
              UnorderedElementsAre("Translate", "GetKey", "GetItem", "In", "Contains", "MaxValue",
                                   "AllKeys", "GetSize", "Dictionary", "Array"));
  EXPECT_THAT(proceduresOf("SetProcedures"), UnorderedElementsAre("Exclude", "Intersect", "Union"));
  EXPECT_THAT(proceduresOf("CallMethodProcedure"), UnorderedElementsAre("CallMethod"));
  EXPECT_THAT(proceduresOf("ExternalProcedures"), UnorderedElementsAre("External"));
  EXPECT_THAT(proceduresOf("InputParametersProcedures"), UnorderedElementsAre("InputValue"));
  EXPECT_THAT(proceduresOf("ServiceManipulationProcedures"),
              UnorderedElementsAre("Service", "ServiceValue"));
  EXPECT_THAT(proceduresOf("TemplateProcedures"), UnorderedElementsAre("TemplateValue"));
  EXPECT_THAT(proceduresOf("StringProcedures"), UnorderedElementsAre("Enquote", "EndLine"));
}

TEST(ProcedureGroups, ShareNoSelector) {
  std::map<std::string_view, int> rows;
  std::map<std::string_view, int> names;
  for (const MethodGroup* group : groups()) {
    ++names[group->name];
    for (const Method& row : group->methods) ++rows[row.selector];
  }
  for (const auto& [selector, count] : rows) EXPECT_EQ(count, 1) << selector;
  for (const auto& [name, count] : names) EXPECT_EQ(count, 1) << name;
  EXPECT_EQ(rows.size(), 25U);
}

TEST(ProcedureGroups, AreFoundByTheirSelectors) {
  for (const MethodGroup* group : groups()) {
    for (const Method& row : group->methods) {
      EXPECT_EQ(ADMEvaluationContextBase::kClass.instanceMethod(Selector(row.selector)), &row);
      EXPECT_EQ(row.types, "@@") << row.selector;
    }
  }
}

}  // namespace
}  // namespace commandfilter::testing
