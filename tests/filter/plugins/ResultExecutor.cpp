// Answers with the kind of result that its command names.
#include <string>
#include <utility>

#include "plugins/TestExecutor.h"
#include "runtime/Array.h"
#include "runtime/Module.h"

namespace commandfilter::testing {

class ResultExecutor final : public TestExecutor<ResultExecutor> {
 public:
  static const Class kClass;

  explicit ResultExecutor(ICommandFilterContext& filterContext) : TestExecutor(filterContext) {}

  Value executeCommand(const String& command) override {
    if (command.view() == "Result null object") return Value::null();
    if (command.view() == "Result number") return Value(Number::real(1.5));
    if (command.view() == "Result with line break") return String::create("first\nsecond");
    if (command.view() == "Result with conversions") return String::create("100% %@ %s %n");
    if (command.view() == "Result array") {
      return Array::create({Value(String::create("a b")), Value(Number::integer(2))});
    }
    if (command.view() == "Result 1 MB") return String::create(std::string(1'000'000, 'x'));
    if (command.view() == "Result nested 200000 deep") return nested(200'000);
    return {};
  }

 private:
  static Value nested(int depth) {
    Value value = Array::create();
    for (int i = 1; i < depth; ++i) {
      ValueVector elements;
      elements.push_back(std::move(value));
      value = Array::create(std::move(elements));
    }
    return value;
  }
};

constinit const Class ResultExecutor::kClass = executorClass<ResultExecutor>("ResultExecutor");

constexpr const Class* kClasses[] = {&ResultExecutor::kClass};

}  // namespace commandfilter::testing

extern "C" constinit const commandfilter::Module command_filter_module =
    commandfilter::moduleOf(commandfilter::testing::kClasses);
