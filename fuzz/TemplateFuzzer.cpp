// Any template over any device with any input parameters gives a report, whose JSON is JSON. The
// three property lists stand in one input, between lines of "====".
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "Evaluation.h"
#include "NoDevice.h"
#include "Report.h"
#include "device_model/DeviceModelClasses.h"
#include "device_model/SimulatedServiceInfo.h"
#include "runtime/Cast.h"
#include "runtime/ClassRegistry.h"
#include "runtime/FileDescriptor.h"
#include "runtime/PropertyList.h"
#include "runtime/RunLoop.h"
#include "runtime/String.h"
#include "template/LibraryClasses.h"
#include "template/status/ADMDMFStatusServiceCreator.h"

namespace {

using namespace commandfilter;
using namespace commandfilter::tools;

constexpr std::string_view kBetween = "\n====\n";

std::array<std::string_view, 3> partsOf(std::string_view input) {
  std::array<std::string_view, 3> parts;
  for (std::string_view& part : parts) {
    const std::size_t end = input.find(kBetween);
    part = input.substr(0, end);
    input =
        end == std::string_view::npos ? std::string_view() : input.substr(end + kBetween.size());
  }
  return parts;
}

RefPtr<Dictionary> dictionaryOf(std::string_view bytes) {
  Result<Value> list = parsePropertyList(bytes);
  return list ? RefPtr<Dictionary>(castTo<Dictionary>(*list)) : nullptr;
}

// Described devices are read from files: this one has no name.
FileDescriptor fileOf(std::string_view bytes) {
  FileDescriptor file(::memfd_create("device", MFD_CLOEXEC));
  if (::write(file.get(), bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
    std::abort();
  }
  return file;
}

// A description may say that its device takes its time; then it has no services.
void resolve(SimulatedServiceInfo& device) {
  constexpr double kTimeout = 0.01;
  const Ref<String> mode = String::create("resolve");
  const Ref<RunLoop> loop = RunLoop::currentRunLoop();
  device.scheduleInRunLoop_forMode(*loop, *mode);
  device.resolveWithTimeout(kTimeout);
  static_cast<void>(loop->runMode_beforeDate(*mode, RunLoop::dateAfter(kTimeout)));
  device.removeFromRunLoop_forMode(*loop, *mode);
}

Ref<ADMStatusServiceCreator> servicesOf(const FileDescriptor& description) {
  const Ref<SimulatedServiceInfo> device = SimulatedServiceInfo::create(
      *String::create("simulated:///proc/self/fd/" + std::to_string(description.get())));
  resolve(*device);
  const RefPtr<ADMDMFStatusServiceCreator> creator =
      ADMDMFStatusServiceCreator::initWithDMFServiceInfo(device);
  return Ref<ADMStatusServiceCreator>(*creator);
}

void requireReport(const std::string& text) {
  const nlohmann::json report = nlohmann::json::parse(text);
  if (!report.at("values").is_object() || !report.at("errors").is_object()) std::abort();
}

bool registerClasses() {
  registerLibraryClasses();
  ClassRegistry::shared().add(kDeviceModelClasses).keep();
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  [[maybe_unused]] static const bool kReady = registerClasses();
  const auto [list, device, input] = partsOf({reinterpret_cast<const char*>(data), size});
  RefPtr<Dictionary> configuration = dictionaryOf(list);
  if (!configuration) return 0;
  const FileDescriptor description = fileOf(device);
  const Question question{
      std::move(configuration), dictionaryOf(input),
      device.empty() ? Ref<ADMStatusServiceCreator>(NoDevice::create()) : servicesOf(description)};
  const Outcome outcome = evaluateTemplate(question, {});
  requireReport(jsonReport(outcome, false));
  static_cast<void>(plainReport(outcome));
  static_cast<void>(propertyListReport(outcome, false));
  return 0;
}
