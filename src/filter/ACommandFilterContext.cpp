#include "filter/ACommandFilterContext.h"

#include <unistd.h>

#include <cstdio>

#include "filter/ACommandFilterServiceInfoProvider.h"
#include "filter/DummyJob.h"
#include "filter/environment/ACommandFilterEnvironment.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Send.h"
#include "runtime/device_model/ADMCoreFactory.h"
#include "runtime/device_model/ADMDeviceIDInterpreter.h"

namespace commandfilter {

namespace {

constexpr auto kContextProtocols = conformances<ACommandFilterContext, ICommandFilterContext>();

// Closes standard output however the dummy job ends.
class StandardOutputCloser {
 public:
  StandardOutputCloser() = default;
  StandardOutputCloser(const StandardOutputCloser&) = delete;
  StandardOutputCloser& operator=(const StandardOutputCloser&) = delete;
  ~StandardOutputCloser() { close(STDOUT_FILENO); }
};

}  // namespace

constinit const Class ACommandFilterContext::kClass{
    .name = "ACommandFilterContext", .base = &Object::kClass, .protocols = kContextProtocols};

Ref<ACommandFilterContext> ACommandFilterContext::context() {
  const ACommandFilterEnvironment* environment = ACommandFilterEnvironment::environment();
  RefPtr<String> uri;
  if (environment != nullptr) uri = environment->printerURI();
  return contextWithServiceInfoProvider(ACommandFilterServiceInfoProvider::initWithPrinterURI(uri));
}

Ref<ACommandFilterContext> ACommandFilterContext::contextWithServiceInfoProvider(
    RefPtr<ICommandFilterServiceInfoProvider> provider) {
  return make<ACommandFilterContext>(std::move(provider));
}

Value ACommandFilterContext::serviceWithName(const String* name) {
  if (name == nullptr) return {};
  const auto found = services_.find(name->view());
  if (found != services_.end()) return found->second.nullAsNil();
  Value service = makeService(*name);
  services_.insert_or_assign(name->text(), service.orNull());
  return service;
}

Value ACommandFilterContext::makeService(const String& name) {
  const RefPtr<String> className = format("ACommandFilter%@Service", name);
  const Class* info = classNamed(textOf(className.get()));
  if (info == nullptr) return {};
  return instantiate(*info, Selector("initWithServiceInfoProvider:"), {serviceInfoProvider_});
}

void ACommandFilterContext::reportMessage(const char* format,
                                          std::span<const FormatArgument> arguments) {
  if (format == nullptr) return;
  const RefPtr<String> message = formatWithArguments(format, arguments);
  if (!message) return;
  static_cast<void>(std::fprintf(stderr, "%s\n", message->cString()));
  static_cast<void>(std::fflush(stderr));
}

RefPtr<String> ACommandFilterContext::deviceID() {
  const std::optional<ADMCoreFactory> core = ADMCoreFactory::find();
  if (!core) return nullptr;
  const RefPtr<ADMDeviceIDServiceFactory> factory = core->newDeviceIDServiceFactory();
  const Value serviceInfo = serviceInfoProvider_ ? serviceInfoProvider_->serviceInfo() : Value();
  if (!factory) return nullptr;
  const RefPtr<ADMDeviceIDAccessProvider> access =
      factory->deviceIDAccessProviderForServiceInfo(serviceInfo);
  return access ? access->deviceID() : nullptr;
}

void ACommandFilterContext::sendDummyCommand() {
  const StandardOutputCloser closer;
  const RefPtr<String> identifier = deviceID();
  if (!identifier) return;
  const RefPtr<ADMDeviceIDInterpreter> interpreter =
      ADMDeviceIDInterpreter::initWithDeviceIDString(*identifier);
  const RefPtr<Array> languages = interpreter ? interpreter->languages() : nullptr;
  const std::string_view job = dummyJobForLanguages(languages.get());
  static_cast<void>(!write(STDOUT_FILENO, job.data(), job.size()));
}

}  // namespace commandfilter
