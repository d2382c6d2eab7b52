// Asks for a service twice. Brings service classes along, good ones and bad ones.
#include <array>
#include <string>

#include "filter/protocols/ICommandFilterService.h"
#include "filter/protocols/ICommandFilterServiceInfoProvider.h"
#include "plugins/TestExecutor.h"
#include "runtime/Format.h"
#include "runtime/Module.h"

namespace commandfilter::testing {

class GoodService final : public Implements<Object, ICommandFilterService> {
 public:
  static const Class kClass;

  static RefPtr<GoodService> initWithServiceInfoProvider(
      ICommandFilterServiceInfoProvider* provider) {
    if (provider == nullptr) return nullptr;
    return make<GoodService>();
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
};

// Counts how often it is asked.
class RefusingService final : public Implements<Object, ICommandFilterService> {
 public:
  static const Class kClass;
  static int asked;

  static RefPtr<RefusingService> initWithServiceInfoProvider(
      ICommandFilterServiceInfoProvider* /*provider*/) {
    ++asked;
    return nullptr;
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
};

int RefusingService::asked = 0;

// Lacks the initialiser.
class UnfitService final : public Implements<Object, ICommandFilterService> {
 public:
  static const Class kClass;

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
};

template <typename T>
constexpr auto kServiceProtocols = conformances<T, ICommandFilterService>();
template <typename T>
constexpr std::array kServiceInitializers{
    initializer<&T::initWithServiceInfoProvider>("initWithServiceInfoProvider:")};

constinit const Class GoodService::kClass{.name = "ACommandFilterGoodService",
                                          .base = &Object::kClass,
                                          .protocols = kServiceProtocols<GoodService>,
                                          .initializers = kServiceInitializers<GoodService>};
constinit const Class RefusingService::kClass{
    .name = "ACommandFilterRefusingService",
    .base = &Object::kClass,
    .protocols = kServiceProtocols<RefusingService>,
    .initializers = kServiceInitializers<RefusingService>};
constinit const Class UnfitService::kClass{.name = "ACommandFilterUnfitService",
                                           .base = &Object::kClass,
                                           .protocols = kServiceProtocols<UnfitService>};

class ServiceExecutor final : public TestExecutor<ServiceExecutor> {
 public:
  static const Class kClass;

  explicit ServiceExecutor(ICommandFilterContext& filterContext) : TestExecutor(filterContext) {}

  Value executeCommand(const String& command) override {
    const std::string name(command.view().substr(command.view().rfind(' ') + 1));
    const auto first = context().service<ICommandFilterService>(name);
    const auto second = context().service<ICommandFilterService>(name);
    const char* answer = first == nullptr && second == nullptr ? "none" : "not the same";
    if (first != nullptr && first.get() == second.get()) answer = "the same one twice";
    return format("%s: %s, refused %d times", name, answer, RefusingService::asked);
  }
};

constinit const Class ServiceExecutor::kClass = executorClass<ServiceExecutor>("ServiceExecutor");

constexpr const Class* kClasses[] = {&ServiceExecutor::kClass, &GoodService::kClass,
                                     &RefusingService::kClass, &UnfitService::kClass};

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::testing::kClasses);
