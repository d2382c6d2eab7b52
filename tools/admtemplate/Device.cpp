#include "Device.h"

#include <filesystem>
#include <optional>
#include <string_view>

#include "UsageError.h"
#include "runtime/Bundle.h"
#include "runtime/Class.h"
#include "runtime/Description.h"
#include "runtime/RunLoop.h"
#include "runtime/device_model/ADMCoreFactory.h"
#include "runtime/device_model/ADMServiceInfoDelegate.h"
#include "runtime/device_model/DeviceModelConstants.h"

namespace commandfilter::tools {

namespace {

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

std::string uriOf(const std::string& device) {
  std::error_code error;
  if (std::filesystem::exists(device, error)) {
    return "simulated://" + escaped(std::filesystem::absolute(device).string());
  }
  if (device.find(':') != std::string::npos) return device;
  throw UsageError("device " + device +
                   ": there is no such file; name a device description or a device URI");
}

// The framework stands beside the filter; both are installed below one prefix.
ADMCoreFactory loadDeviceModel() {
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
  const std::string path = (program.parent_path().parent_path() /
                            "lib/commandfilter/CommandFilter.app/Contents/Frameworks/"
                            "VemoDeviceModel.bundle")
                               .string();
  const RefPtr<Bundle> bundle = Bundle::bundleWithPath(path);
  if (!bundle) throw UsageError("the device model is not installed: " + path + " is missing");
  if (!bundle->load()) throw UsageError("device model " + path + ": " + bundle->loadFailure());
  const std::optional<ADMCoreFactory> core = ADMCoreFactory::find();
  if (!core) throw UsageError("device model " + path + ": it has no class ADMCoreFactory");
  return *core;
}

}  // namespace

Ref<ADMServiceInfo> openDevice(const std::string& device) {
  const std::string uri = uriOf(device);
  const RefPtr<ADMServiceInfo> info = loadDeviceModel().newServiceInfoWithURI_deviceClass(
      *String::create(uri), *String::create(std::string(kPrinterDeviceClass)));
  if (!info) throw UsageError("device " + device + ": the device model knows no such device");
  const Ref<Resolution> resolution = Resolution::create();
  resolution->run(*info);
  if (!resolution->reason().empty()) {
    throw UsageError("device " + device + ": " + resolution->reason());
  }
  return Ref<ADMServiceInfo>(*info);
}

}  // namespace commandfilter::tools
