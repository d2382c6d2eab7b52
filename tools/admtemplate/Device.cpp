#include "Device.h"

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string_view>
#include <system_error>
#include <utility>

#include "DeviceModel.h"
#include "InputFile.h"
#include "UsageError.h"
#include "device/CupsQueues.h"
#include "device/DescriptionKeys.h"
#include "device/DeviceSurvey.h"
#include "runtime/Class.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Description.h"
#include "runtime/ProcessInfo.h"
#include "runtime/RunLoop.h"
#include "runtime/Send.h"
#include "runtime/device_model/ADMServiceInfoDelegate.h"
#include "runtime/device_model/DeviceModelConstants.h"

namespace commandfilter::tools {

namespace {

constexpr std::string_view kSimulated = "simulated://";
constexpr double kTimeout = 30;
constexpr double kSlice = 0.4;

// Notes how the resolution ended.
class Resolution final : public Implements<Object, ADMServiceInfoDelegate> {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<Resolution> create() { return make<Resolution>(); }
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  void run(ADMServiceInfo& device) {
    const Ref<RunLoop> loop = RunLoop::currentRunLoop();
    device.setDelegate(this);
    device.scheduleInRunLoop_forMode(*loop, *mode_);
    device.resolveWithTimeout(kTimeout);
    while (loop->runMode_beforeDate(*mode_, RunLoop::dateAfter(kSlice))) {
    }
    device.setDelegate(nullptr);
  }
  [[nodiscard]] const std::string& reason() const noexcept { return reason_; }

  void serviceInfoDidResolve(ADMServiceInfo& device) override { remove(device); }
  void serviceInfo_didNotResolve(ADMServiceInfo& device, const Value& error) override {
    reason_ = error.isNil() ? "it does not answer" : descriptionOf(error);
    remove(device);
  }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  Resolution() = default;
  ~Resolution() override = default;

  void remove(ADMServiceInfo& device) {
    device.removeFromRunLoop_forMode(*RunLoop::currentRunLoop(), *mode_);
  }

  Ref<String> mode_ = String::create("RESOLVE_MODE");
  std::string reason_;
};

constexpr auto kProtocols = conformances<Resolution, ADMServiceInfoDelegate>();
constinit const Class Resolution::kClass{
    .name = "Resolution", .base = &Object::kClass, .protocols = kProtocols};

// A file's path as the path of a URI.
std::string escaped(std::string_view path) {
  constexpr std::string_view kPlain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (const char c : path) {
    if (kPlain.find(c) != std::string_view::npos) {
      text.push_back(c);
    } else {
      const auto byte = static_cast<unsigned char>(c);
      text.append({'%', kDigits[byte >> 4U], kDigits[byte & 0xFU]});
    }
  }
  return text;
}

struct Place {
  std::string uri;
  // The description's absolute path, when a path was named.
  std::string file;
  // The queue that the device belongs to; empty when none was named.
  std::string queue;
};

Place placeOf(const std::string& device) {
  std::error_code error;
  if (std::filesystem::exists(device, error)) {
    std::string file = std::filesystem::absolute(device).string();
    return {std::string(kSimulated) + escaped(file), std::move(file), ""};
  }
  if (device.find(':') != std::string::npos) return {device, "", ""};
  if (error) throw UsageError("device " + device + ": cannot be opened: " + error.message());
  constexpr std::string_view kRemedy =
      "; name a device description, a device URI or a queue, which \"admtemplate device\" lists";
  const std::string what = "device " + device + ": there is no such file";
  if (device.find('/') != std::string::npos) throw UsageError(what + std::string(kRemedy));
  if (const auto queue = cupsQueueNamed(device)) return {queue->deviceURI, "", device};
  throw UsageError(what + " and no such queue" + std::string(kRemedy));
}

// Why a device does not resolve. Its file or URI was named already.
std::string explained(std::string reason, const Place& place) {
  for (const std::string& name : {place.file + ": ", place.uri + " "}) {
    if (reason.starts_with(name)) reason.erase(0, name.size());
  }
  return withRemedy(reason);
}

// A filter inside a job has a backend already.
bool isOfThisJob(const std::string& uri) {
  return ProcessInfo::environmentValue("DEVICE_URI") == uri;
}

// The device model takes the queue's facts from where the scheduler puts them for a filter. What
// PRINTER is to a user, the default printer, has nothing to do with the device.
void setQueue(const std::string& queue) {
  const auto ppd = queue.empty() ? std::nullopt : ppdOfQueue(queue);
  if (queue.empty()) {
    unsetenv("PRINTER");
  } else {
    setenv("PRINTER", queue.c_str(), 1);
  }
  if (ppd) {
    setenv("PPD", ppd->c_str(), 1);
  } else {
    unsetenv("PPD");
  }
}

// The device model of this product keeps what a job's one backend has answered.
void forgetAnswers() {
  static const Selector kForget("forgetAnswers");
  const Class* framework = classNamed("ADMCoreFactory");
  if (framework != nullptr && framework->classMethod(kForget) != nullptr) {
    sendToClass(*framework, kForget);
  }
}

std::unique_ptr<BackendProcess> backendOf(const Place& place) {
  if (place.uri.starts_with(kSimulated) || isOfThisJob(place.uri)) return nullptr;
  setQueue(place.queue);
  forgetAnswers();
  return BackendProcess::start(place.uri);
}

}  // namespace

Device Device::open(const std::string& name) {
  const Place place = placeOf(name);
  const ADMCoreFactory framework = loadDeviceModel();
  // Before anything else opens a descriptor: the side channel's is a fixed one.
  std::unique_ptr<BackendProcess> backend = backendOf(place);
  const RefPtr<ADMServiceInfo> info = framework.newServiceInfoWithURI_deviceClass(
      *String::create(place.uri), *String::create(std::string(kPrinterDeviceClass)));
  if (!info) throw UsageError("device " + name + ": the device model knows no such device");
  const Ref<Resolution> resolution = Resolution::create();
  resolution->run(*info);
  if (!resolution->reason().empty()) {
    throw UsageError("device " + name + ": " + explained(resolution->reason(), place));
  }
  return {name, std::move(backend), Ref<ADMServiceInfo>(*info), !place.uri.starts_with(kSimulated)};
}

void Device::noteComplaints(std::ostream& messages) const {
  const std::string about = "admtemplate: device " + name_ + ": ";
  if (backend_) {
    for (const std::string& complaint : backend_->complaints()) {
      messages << about << "its backend says: " << complaint << '\n';
    }
  }
  if (const RefPtr<Dictionary> description = ownDescriptionOf(info_)) {
    for (const std::string& complaint : ignoredKeys(*description)) {
      messages << about << complaint << '\n';
    }
  }
}

}  // namespace commandfilter::tools
