#include "runtime/Date.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>

#include "runtime/Class.h"
#include "runtime/Number.h"

namespace commandfilter {

constinit const Class Date::kClass{.name = "Date", .base = &Object::kClass};

Ref<Date> Date::create(double secondsSince1970) { return make<Date>(secondsSince1970); }

bool Date::isEqual(const Value& other) const {
  return other.isKind(ObjectKind::Date) &&
         static_cast<const Date*>(other.object())->seconds_ == seconds_;
}

std::size_t Date::hash() const { return Number::real(seconds_).hash(); }

void Date::appendDescription(std::string& text, int /*level*/) const {
  const auto seconds = static_cast<std::time_t>(Number::real(std::floor(seconds_)).longValue());
  std::tm parts{};
  if (gmtime_r(&seconds, &parts) == nullptr) {
    // A year that the C library cannot hold.
    text.append("<date>");
    return;
  }
  std::array<char, 64> buffer{};
  const int length = std::snprintf(
      buffer.data(), buffer.size(), "%04lld-%02d-%02d %02d:%02d:%02d +0000", 1900LL + parts.tm_year,
      parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec);
  text.append(buffer.data(), static_cast<std::size_t>(length));
}

}  // namespace commandfilter
