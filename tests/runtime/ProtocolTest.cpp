#include "runtime/Protocol.h"

#include <gtest/gtest.h>

#include <array>

#include "TestObjects.h"

namespace commandfilter {
namespace {

using testing::Greeter;
using testing::IGreeter;
using testing::INamed;
using testing::IStranger;

constexpr std::array<const Protocol*, 1> kAdoptsGreeter{&IGreeter::kProtocol};
constexpr Protocol kFarther{"IFarther", kAdoptsGreeter};

TEST(Protocol, IncludesItselfAndWhatItAdopts) {
  EXPECT_TRUE(includesProtocol(INamed::kProtocol, INamed::kProtocol));
  EXPECT_TRUE(includesProtocol(IGreeter::kProtocol, INamed::kProtocol));
  EXPECT_TRUE(includesProtocol(kFarther, INamed::kProtocol));
  EXPECT_FALSE(includesProtocol(INamed::kProtocol, IGreeter::kProtocol));
  EXPECT_FALSE(includesProtocol(IGreeter::kProtocol, kFarther));
  EXPECT_FALSE(includesProtocol(IStranger::kProtocol, INamed::kProtocol));
}

TEST(Protocol, IsTheSameWhenItsNameIs) {
  static constexpr Protocol kCopy{"INamed"};
  EXPECT_TRUE(includesProtocol(kCopy, INamed::kProtocol));
  EXPECT_TRUE(includesProtocol(IGreeter::kProtocol, kCopy));
}

TEST(Protocol, LeadsBackToTheObject) {
  const Ref<Greeter> greeter = make<Greeter>("Anna");
  INamed& named = *greeter;
  const IGreeter& greeting = *greeter;
  EXPECT_EQ(&named.object(), greeter.get());
  EXPECT_EQ(&greeting.object(), greeter.get());
}

TEST(Protocol, HasARowForEachConformance) {
  static constexpr auto kRows = conformances<Greeter, INamed, IGreeter>();
  static_assert(kRows.size() == 2);
  const Ref<Greeter> greeter = make<Greeter>("Anna");
  EXPECT_EQ(kRows[0].protocol, &INamed::kProtocol);
  EXPECT_EQ(kRows[0].interface(*greeter), static_cast<INamed*>(greeter.get()));
  EXPECT_EQ(kRows[1].interface(*greeter), static_cast<IGreeter*>(greeter.get()));
}

}  // namespace
}  // namespace commandfilter
