#include "filter/ACommandFilterServiceInfoProvider.h"

#include <gtest/gtest.h>

#include "runtime/Cast.h"

namespace commandfilter {
namespace {

TEST(ServiceInfoProvider, IsNilForANilURI) {
  EXPECT_EQ(ACommandFilterServiceInfoProvider::initWithPrinterURI(nullptr), nullptr);
}

TEST(ServiceInfoProvider, KeepsItsURI) {
  const auto provider =
      ACommandFilterServiceInfoProvider::initWithPrinterURI(String::create("usb://Acme/M1"));
  ASSERT_TRUE(provider);
  EXPECT_EQ(provider->printerURI()->view(), "usb://Acme/M1");
}

TEST(ServiceInfoProvider, ConformsToItsProtocol) {
  const auto provider =
      ACommandFilterServiceInfoProvider::initWithPrinterURI(String::create("usb://Acme/M1"));
  ASSERT_TRUE(provider);
  EXPECT_EQ(castTo<ICommandFilterServiceInfoProvider>(Value(provider)), provider.get());
  EXPECT_TRUE(provider->conformsToProtocol(ICommandFilterServiceInfoProvider::kProtocol));
}

TEST(ServiceInfoProvider, HasNoServiceInfoWithoutAFramework) {
  const auto provider =
      ACommandFilterServiceInfoProvider::initWithPrinterURI(String::create("usb://Acme/M1"));
  ASSERT_TRUE(provider);
  EXPECT_TRUE(provider->serviceInfo().isNil());
}

}  // namespace
}  // namespace commandfilter
