#include "runtime/KeyValueLookup.h"

#include "runtime/Cast.h"
#include "runtime/Class.h"
#include "runtime/Dictionary.h"
#include "runtime/Exception.h"
#include "runtime/Selector.h"
#include "runtime/Send.h"

namespace commandfilter {

Value valueForKey(const Value& value, const String& key) {
  if (const auto* dictionary = castTo<Dictionary>(value)) {
    return dictionary->objectForKey(Value::sharing(&key));
  }
  const Class* info = classOf(value);
  if (info == nullptr) return {};
  static const Selector kValueForKey("valueForKey:");
  // The class is asked, not the object: a proxy answers for itself here, not for what it stands
  // for.
  if (info->instanceMethod(kValueForKey) != nullptr) {
    return send(value, kValueForKey, {Value::sharing(&key)});
  }
  const std::optional<Selector> selector = Selector::fromString(key.view());
  if (selector && selector->argumentCount() == 0 && info->instanceMethod(*selector) != nullptr) {
    return send(value, *selector);
  }
  throw Exception(std::string(info->name) + " has no value for key " + key.text());
}

}  // namespace commandfilter
