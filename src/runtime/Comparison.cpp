#include "runtime/Comparison.h"

#include <string>

#include "runtime/Class.h"
#include "runtime/Date.h"
#include "runtime/Exception.h"
#include "runtime/String.h"
#include "runtime/TextEquality.h"

namespace commandfilter {

bool detail::objectEquals(const Value& left, const Value& right) {
  const Object& object = *left.object();
  if (object.objectKind() != ObjectKind::String) return object.isEqual(right);
  return right.isKind(ObjectKind::String) &&
         sameText(static_cast<const String&>(object).view(),
                  static_cast<const String*>(right.object())->view());
}

std::size_t hashOf(const Value& value) {
  if (value.isNumber()) return value.number().hash();
  if (value.isKind(ObjectKind::String)) return static_cast<const String*>(value.object())->hash();
  if (const Object* object = value.object()) return object->hash();
  return value.isNull() ? 1 : 0;
}

std::weak_ordering compare(const Value& left, const Value& right) {
  if (left.isNumber() && right.isNumber()) return left.number().compare(right.number());
  if (left.isKind(ObjectKind::String) && right.isKind(ObjectKind::String)) {
    return static_cast<const String*>(left.object())
        ->compare(static_cast<const String&>(*right.object()));
  }
  if (left.isKind(ObjectKind::Date) && right.isKind(ObjectKind::Date)) {
    return Number::real(static_cast<const Date*>(left.object())->secondsSince1970())
        .compare(Number::real(static_cast<const Date*>(right.object())->secondsSince1970()));
  }
  const auto nameOf = [](const Value& value) {
    const Class* info = classOf(value);
    return std::string(info != nullptr ? info->name : "nil");
  };
  throw Exception("cannot order " + nameOf(left) + " against " + nameOf(right));
}

}  // namespace commandfilter
