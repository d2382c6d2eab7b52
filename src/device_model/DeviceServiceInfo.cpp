#include "device_model/DeviceServiceInfo.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace commandfilter {

namespace {

constexpr auto kProtocols = conformances<DeviceServiceInfo, ADMServiceInfo>();
constexpr std::array<const MethodGroup*, 1> kGroups{&ADMServiceInfo::kMethods};

}  // namespace

constinit const Class DeviceServiceInfo::kClass{
    .name = "VemoServiceInfo", .base = &Object::kClass, .protocols = kProtocols, .groups = kGroups};

void DeviceServiceInfo::scheduleInRunLoop_forMode(RunLoop& runLoop, const String& mode) {
  places_.push_back({Ref<RunLoop>(runLoop), String::create(mode.text()), RunLoopSource()});
  if (running_) startTimer(places_.back());
}

void DeviceServiceInfo::removeFromRunLoop_forMode(RunLoop& runLoop, const String& mode) {
  std::erase_if(places_, [&](const Place& place) {
    return place.runLoop.get() == &runLoop && place.mode->view() == mode.view();
  });
}

void DeviceServiceInfo::resolveWithTimeout(double seconds) {
  // The delegate may drop the last reference.
  const Ref<DeviceServiceInfo> self(*this);
  state_ = 0;
  running_ = resolution();
  // Negated, so that what is not a number counts as 0.
  if (!(seconds > 0)) seconds = 0;
  if (running_->delay > seconds) {
    running_ = Resolution{seconds, 0, "the device did not answer in time"};
  }
  end_ = RunLoop::dateAfter(running_->delay);
  // What needs no waiting ends here: the run loop's library need not be loaded.
  if (!(running_->delay > 0)) {
    finish();
    return;
  }
  // A timer that cannot be made ends the resolution, and the delegate may then change the places.
  for (std::size_t i = 0; i < places_.size() && running_; ++i) startTimer(places_[i]);
}

void DeviceServiceInfo::startTimer(Place& place) {
  const std::chrono::duration<double> rest = end_ - std::chrono::steady_clock::now();
  Result<RunLoopSource> timer =
      place.runLoop->addTimer(std::max(rest.count(), 0.0), *place.mode, [this] { finish(); });
  if (timer) {
    place.timer = std::move(*timer);
    return;
  }
  running_ = Resolution{0, 0, "cannot wait for the device: " + timer.reason()};
  finish();
}

void DeviceServiceInfo::finish() {
  if (!running_) return;
  // The delegate may drop the last reference.
  const Ref<DeviceServiceInfo> self(*this);
  const Resolution ended = std::move(*running_);
  running_.reset();
  for (Place& place : places_) place.timer.remove();
  state_ = ended.state;
  if (delegate_ == nullptr) return;
  if (ended.failure.empty()) {
    delegate_->serviceInfoDidResolve(*this);
  } else {
    delegate_->serviceInfo_didNotResolve(*this, String::create(ended.failure));
  }
}

}  // namespace commandfilter
