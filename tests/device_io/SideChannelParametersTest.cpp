#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "InChild.h"
#include "JobVariables.h"
#include "device_io/ADMCUPSSideChannelDevice.h"
#include "runtime/Cast.h"
#include "runtime/Description.h"
#include "runtime/ValueVector.h"
#include "runtime/device_model/DeviceModelConstants.h"
#include "support/File.h"
#include "support/TemporaryFolder.h"

namespace commandfilter {
namespace {

namespace fs = std::filesystem;

Ref<ADMCUPSSideChannelDevice> deviceFor(const Dictionary* info) {
  return Ref<ADMCUPSSideChannelDevice>(
      *ADMCUPSSideChannelDevice::initFromInfo_withHandler(info, Value()));
}

Ref<Dictionary> sampleInfo() {
  DictionaryBuilder nested;
  nested.set("Address", String::create("10.0.0.5"));
  nested.set("Port", Number::integer(9100));
  DictionaryBuilder all;
  all.set("Address", String::create("elsewhere"));
  all.set("Name", String::create("Office"));
  all.set(kParamsProp, nested.build());
  return all.build();
}

std::string textFor(const Dictionary& dictionary, std::string_view key) {
  return descriptionOf(dictionary.objectForKey(key));
}

Ref<Array> keys(const std::vector<std::string_view>& names) {
  ValueVector values;
  for (const std::string_view name : names) {
    values.emplace_back(String::create(std::string(name)));
  }
  return Array::create(std::move(values));
}

TEST(SideChannelParameters, AreFlattenedAndTheNestedOnesWin) {
  const auto properties = deviceFor(sampleInfo().get())->connectionProperties();
  EXPECT_EQ(properties->count(), 4U);
  EXPECT_EQ(textFor(*properties, "Address"), "10.0.0.5");
  EXPECT_EQ(textFor(*properties, "Name"), "Office");
  EXPECT_EQ(textFor(*properties, "Port"), "9100");
  EXPECT_NE(castTo<Dictionary>(properties->objectForKey(kParamsProp)), nullptr);
}

TEST(SideChannelParameters, MayLackNestedOnes) {
  DictionaryBuilder plain;
  plain.set("Name", String::create("Office"));
  EXPECT_EQ(deviceFor(plain.build().get())->connectionProperties()->count(), 1U);
  DictionaryBuilder odd;
  odd.set(kParamsProp, String::create("no dictionary"));
  EXPECT_EQ(deviceFor(odd.build().get())->connectionProperties()->count(), 1U);
  EXPECT_EQ(deviceFor(nullptr)->connectionProperties()->count(), 0U);
}

TEST(SideChannelParameters, AreRetrievedByKeyInTheOrderOfTheKeys) {
  const auto parameters =
      deviceFor(sampleInfo().get())
          ->retrieveParameters_withHandler(*keys({"Port", "Missing", "Name"}), Value());
  EXPECT_EQ(parameters->count(), 4U);
  EXPECT_EQ(textFor(*parameters, "Name"), "Office");
  EXPECT_EQ(descriptionOf(parameters->begin()->key), "Port");
  EXPECT_EQ(descriptionOf(parameters->begin()->value), "9100");
}

TEST(SideChannelParameters, AlwaysHaveModelAndVendorName) {
  const auto parameters =
      deviceFor(sampleInfo().get())->retrieveParameters_withHandler(*keys({}), Value());
  EXPECT_EQ(parameters->count(), 2U);
  EXPECT_EQ(textFor(*parameters, kModelNameProp), "");
  EXPECT_EQ(textFor(*parameters, kVendorNameProp), "Vemo");
  EXPECT_EQ(ADMCUPSSideChannelDevice::vendorName()->view(), "Vemo");
}

TEST(SideChannelParameters, TakeModelAndVendorNameFromTheInformationWhenTheyAreAskedFor) {
  DictionaryBuilder named;
  named.set(kModelNameProp, String::create("M1"));
  named.set(kVendorNameProp, String::create("Acme"));
  const auto device = deviceFor(named.build().get());
  const auto asked =
      device->retrieveParameters_withHandler(*keys({kVendorNameProp, kModelNameProp}), Value());
  EXPECT_EQ(textFor(*asked, kModelNameProp), "M1");
  EXPECT_EQ(textFor(*asked, kVendorNameProp), "Acme");
  const auto notAsked = device->retrieveParameters_withHandler(*keys({}), Value());
  EXPECT_EQ(textFor(*notAsked, kModelNameProp), "");
  EXPECT_EQ(textFor(*notAsked, kVendorNameProp), "Vemo");
}

TEST(SideChannelParameters, BelongToADeviceThatIsMadeByItsClass) {
  const RefPtr<IDMDevice> made =
      IDMDevice::initFromInfo_withHandler(ADMCUPSSideChannelDevice::kClass, *sampleInfo(), Value());
  const auto* device = made ? castTo<ADMCUPSSideChannelDevice>(&made->object()) : nullptr;
  ASSERT_NE(device, nullptr);
  EXPECT_EQ(device->connectionProperties()->count(), 4U);
}

// A scheduler's files without the scheduler: libcups finds the PPD of a local queue by itself.
// Every test runs in a child, because the environment and libcups last as long as the process.
class PPDModelName : public ::testing::Test {
 protected:
  PPDModelName() {
    fs::create_directories(root_.path() / "ppd");
    fs::create_directory(copies_);
    setenv("CUPS_SERVERROOT", root_.path().c_str(), 1);
    setenv("CUPS_SERVER", (root_.path() / "no-socket").c_str(), 1);
    setenv("TMPDIR", copies_.c_str(), 1);
  }
  ~PPDModelName() override {
    for (const char* name : {"CUPS_SERVERROOT", "CUPS_SERVER", "TMPDIR"}) unsetenv(name);
  }

  void addPPD(const std::string& line) const {
    testing::writeFile(ppd_,
                       "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n"
                       "*LanguageVersion: English\n*LanguageEncoding: UTF-8\n"
                       "*PCFileName: \"M1.PPD\"\n*Manufacturer: \"Acme\"\n*Product: \"(M1)\"\n"
                       "*ShortNickName: \"Acme M1\"\n*NickName: \"Acme M1\"\n"
                       "*PSVersion: \"(3010.000) 0\"\n" +
                           line + '\n');
  }
  static void expectModelName(const std::string& name) {
    testing::runInChild([&name] {
      const auto device = deviceFor(nullptr);
      EXPECT_EQ(device->ppdModelName()->view(), name);
      const auto parameters = device->retrieveParameters_withHandler(*keys({}), Value());
      EXPECT_EQ(textFor(*parameters, kModelNameProp), name);
    });
  }

  testing::JobVariables variables_;
  testing::TemporaryFolder root_;
  fs::path ppd_ = root_.path() / "ppd" / (std::string(testing::kQueueName) + ".ppd");
  fs::path copies_ = root_.path() / "copies";
};

TEST_F(PPDModelName, IsThatOfTheQueue) {
  addPPD("*ModelName: \"Acme M1\"");
  expectModelName("Acme M1");
}

TEST_F(PPDModelName, MayHoldCharactersBeyondASCII) {
  addPPD("*ModelName: \"Acme B\xC3\xBCro\"");
  expectModelName("Acme B\xC3\xBCro");
}

TEST_F(PPDModelName, IsEmptyWhenItIsNoUTF8) {
  addPPD("*ModelName: \"Acme B\xFCro\"");
  expectModelName("");
}

TEST_F(PPDModelName, IsEmptyForAPPDThatNamesNone) {
  addPPD("*Other: \"Acme M1\"");
  expectModelName("");
}

TEST_F(PPDModelName, IsEmptyWithoutAPPD) { expectModelName(""); }

TEST_F(PPDModelName, IsReadOnce) {
  testing::runInChild([this] {
    const auto device = deviceFor(nullptr);
    EXPECT_EQ(device->ppdModelName()->view(), "");
    addPPD("*ModelName: \"Acme M1\"");
    EXPECT_EQ(device->ppdModelName()->view(), "");
    EXPECT_EQ(deviceFor(nullptr)->ppdModelName()->view(), "Acme M1");
  });
}

TEST_F(PPDModelName, IsEmptyOutsideAJob) {
  unsetenv("PRINTER");
  addPPD("*ModelName: \"Acme M1\"");
  testing::runInChild([] {
    const auto device = deviceFor(nullptr);
    EXPECT_EQ(device->environment(), nullptr);
    EXPECT_EQ(device->ppdModelName()->view(), "");
  });
}

}  // namespace
}  // namespace commandfilter
