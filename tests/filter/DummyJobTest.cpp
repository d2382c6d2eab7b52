#include "filter/DummyJob.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DummyJobs.h"
#include "runtime/Array.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {
namespace {

using testing::kPacket;
using testing::kZeros;

Ref<Array> languages(const std::vector<std::string>& names) {
  ValueVector values;
  for (const std::string& name : names) values.emplace_back(String::create(name));
  return Array::create(std::move(values));
}

TEST(DummyJob, IsTheFixedPacketWhenLDLIsTheOnlyLanguage) {
  EXPECT_EQ(dummyJobForLanguages(languages({"LDL"}).get()), kPacket);
}

TEST(DummyJob, IsTheFixedPacketWhenLDLIsAmongOtherLanguages) {
  EXPECT_EQ(dummyJobForLanguages(languages({"PCL", "LDL", "PS"}).get()), kPacket);
  EXPECT_EQ(dummyJobForLanguages(languages({"PCL", "PS", "LDL"}).get()), kPacket);
}

TEST(DummyJob, Is1024ZerosWhenNoElementEqualsLDL) {
  EXPECT_EQ(dummyJobForLanguages(languages({"PCL", "PS"}).get()), kZeros);
  EXPECT_EQ(dummyJobForLanguages(languages({"ldl", "LDL2", " LDL", "LDL ", "PCL,LDL"}).get()),
            kZeros);
}

TEST(DummyJob, Is1024ZerosWithoutAnyLanguage) {
  EXPECT_EQ(dummyJobForLanguages(languages({}).get()), kZeros);
  EXPECT_EQ(dummyJobForLanguages(nullptr), kZeros);
}

TEST(DummyJob, OverlooksElementsThatAreNoStrings) {
  const Ref<Array> mixed =
      Array::create({Value(Number::integer(1)), Value::null(), Value(String::create("LDL"))});
  EXPECT_EQ(dummyJobForLanguages(mixed.get()), kPacket);
}

}  // namespace
}  // namespace commandfilter
