#include "language/ExternalDoubles.h"

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

#include "evaluation/protocol/ADMExternalProcedure.h"
#include "expression/ADMEvaluationItemBase.h"
#include "expression/ADMItemsList.h"
#include "runtime/Class.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Exception.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"

namespace commandfilter::testing {

namespace {

Value values(const Array* arguments, ADMEvaluationContext& /*context*/) {
  return Value::sharing(arguments);
}

Value items(const Array* arguments, ADMEvaluationContext& /*context*/) {
  if (arguments == nullptr) return {};
  Ref<ADMItemsList> list = ADMItemsList::create();
  for (const Value& item : *arguments) list->appendItem(item);
  return list;
}

Value complain(const Array* arguments, ADMEvaluationContext& context) {
  context.setRuntimeError("no %@", Value::sharing(arguments));
  return Number::integer(5);
}

Value raise(const Array* /*arguments*/, ADMEvaluationContext& /*context*/) {
  throw Exception("the procedure failed");
}

struct Conforming {
  std::string_view className;
  bool wantsItems;
  Value (*execute)(const Array* arguments, ADMEvaluationContext& context);
};
constexpr std::array kConforming{
    Conforming{"AValuesExternalProcedure", false, &values},
    Conforming{"AItemsExternalProcedure", true, &items},
    Conforming{"AComplainExternalProcedure", false, &complain},
    Conforming{"ARaiseExternalProcedure", false, &raise},
};

template <std::size_t Index>
class ConformingProcedure final : public Implements<Object, ADMExternalProcedure> {
 public:
  static const Class kClass;
  static Ref<ConformingProcedure> init() { return make<ConformingProcedure>(); }
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  bool wantsEvaluateArguments() override { return kConforming[Index].wantsItems; }
  Value execute_context(const Array* arguments, ADMEvaluationContext* context) override {
    return kConforming[Index].execute(arguments, *context);
  }
};
template <std::size_t Index>
constexpr auto kConformances = conformances<ConformingProcedure<Index>, ADMExternalProcedure>();
template <std::size_t Index>
constexpr std::array kConformingInit{initializer<&ConformingProcedure<Index>::init>("init")};
template <std::size_t Index>
constinit const Class ConformingProcedure<Index>::kClass{.name = kConforming[Index].className,
                                                         .base = &Object::kClass,
                                                         .protocols = kConformances<Index>,
                                                         .initializers = kConformingInit<Index>};

bool wantsItems(const Value& /*receiver*/) { return true; }
Value executeFirst(const Value& /*receiver*/, const Array* arguments,
                   ADMEvaluationContext* context) {
  return arguments != nullptr ? evaluateItem((*arguments)[0], *context) : Value();
}
bool wantsValues(const Value& /*receiver*/) { return false; }
Value executeGiven(const Value& /*receiver*/, const Array* arguments,
                   ADMEvaluationContext* /*context*/) {
  return Value::sharing(arguments);
}
constexpr std::array kValuesMethods{method<&wantsValues>("wantsEvaluateArguments"),
                                    method<&executeGiven>("execute:context:")};
constexpr std::array kBothMethods{method<&wantsItems>("wantsEvaluateArguments"),
                                  method<&executeFirst>("execute:context:")};

struct Loose {
  std::string_view className;
  std::span<const Method> methods;
  bool canBeMade;
};
constexpr std::array kLoose{
    Loose{"AFirstExternalProcedure", kBothMethods, true},
    Loose{"AUnfitExternalProcedure", std::span(kBothMethods).first(1), true},
    Loose{"AHalfExternalProcedure", std::span(kBothMethods).last(1), true},
    Loose{"ARefuseExternalProcedure", kBothMethods, false},
    Loose{"AGivenExternalProcedure", kValuesMethods, true},
};

template <std::size_t Index>
class LooseProcedure final : public Object {
 public:
  static const Class kClass;
  static RefPtr<LooseProcedure> init() {
    if (!kLoose[Index].canBeMade) return nullptr;
    return make<LooseProcedure>();
  }
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
};
template <std::size_t Index>
constexpr std::array kLooseInit{initializer<&LooseProcedure<Index>::init>("init")};
template <std::size_t Index>
constinit const Class LooseProcedure<Index>::kClass{.name = kLoose[Index].className,
                                                    .base = &Object::kClass,
                                                    .methods = kLoose[Index].methods,
                                                    .initializers = kLooseInit<Index>};

// Has no initialiser at all.
constinit const Class kClassOnly{
    .name = "AClassOnlyExternalProcedure", .base = &Object::kClass, .methods = kBothMethods};

constexpr std::array<const Class*, 10> kClasses{
    &ConformingProcedure<0>::kClass, &ConformingProcedure<1>::kClass,
    &ConformingProcedure<2>::kClass, &ConformingProcedure<3>::kClass,
    &LooseProcedure<0>::kClass,      &LooseProcedure<1>::kClass,
    &LooseProcedure<2>::kClass,      &LooseProcedure<3>::kClass,
    &LooseProcedure<4>::kClass,      &kClassOnly,
};

}  // namespace

void registerExternalDoubles() {
  static const ClassRegistry::Registration registration = ClassRegistry::shared().add(kClasses);
}

}  // namespace commandfilter::testing
