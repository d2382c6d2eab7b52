#include "template/LibraryClasses.h"

#include <gtest/gtest.h>

#include <string_view>

#include "runtime/ClassRegistry.h"

namespace commandfilter::testing {
namespace {

TEST(LibraryClasses, AreFoundByName) {
  const auto classes = ClassRegistry::shared().add(templateClasses());
  for (const Class* info : templateClasses()) EXPECT_EQ(classNamed(info->name), info);
  for (const std::string_view name :
       {"ADMSingleValueEvaluationContext", "ADMArrayEvaluationContext",
        "ACommandFilterTemplateEngineFactoryService", "ADMTemplateProcessor"}) {
    EXPECT_NE(classNamed(name), nullptr) << name;
  }
}

TEST(LibraryClasses, AreRegisteredTogether) {
  registerLibraryClasses();
  for (const std::string_view name :
       {"Dictionary", "ADMDMFDeviceStatusServiceFactory", "ADMArrayEvaluationContext"}) {
    EXPECT_NE(classNamed(name), nullptr) << name;
  }
}

}  // namespace
}  // namespace commandfilter::testing
