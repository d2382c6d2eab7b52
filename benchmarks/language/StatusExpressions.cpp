#include "StatusExpressions.h"

#include <cstddef>
#include <stdexcept>

namespace commandfilter::benchmarks {

namespace {

StatusExpression requireLength(StatusExpression expression, std::size_t length) {
  if (expression.ours.size() == length) return expression;
  throw std::logic_error("an expression has " + std::to_string(expression.ours.size()) +
                         " characters instead of " + std::to_string(length));
}

}  // namespace

Datum statusDevice() {
  return Datum::Map{
      {"Name", "LaserWriter 12/640"},
      {"Status", Datum::Map{{"Message", "Paper jam"}, {"State", "Printing"}, {"Jobs", 3}}},
      {"Level", Datum::Map{{"Black", 64}, {"Cyan", 12}}},
  };
}

StatusExpression shortExpression() {
  return requireLength(
      {R"({Status}.State eq "Printing" then "Printer " + {Name} + " is busy" else "Waiting")",
       R"(device.Status.State == "Printing" and "Printer " .. device.Name .. " is busy" )"
       R"(or "Waiting")"},
      81);
}

StatusExpression longExpression() {
  return requireLength(
      {R"({Status}.State eq "Printing" & {Status}.Jobs gt 0 then "Printing " + {Status}.Jobs + )"
       R"(" jobs on " + {Name} else ({Status}.State eq "Error" then {Status}.Message else )"
       R"("Idle with " + {Level}[Black] + "% black"))",
       R"(device.Status.State == "Printing" and device.Status.Jobs > 0 )"
       R"(and "Printing " .. device.Status.Jobs .. " jobs on " .. device.Name )"
       R"(or (device.Status.State == "Error" and device.Status.Message )"
       R"(or "Idle with " .. device.Level.Black .. "% black"))"},
      207);
}

StatusExpression veryLongExpression() {
  constexpr std::size_t kLength = 10000;
  const StatusExpression part = longExpression();
  StatusExpression whole;
  const auto join = [&whole](const std::string& ours, const std::string& lua) {
    if (!whole.ours.empty()) {
      whole.ours.append(" + ");
      whole.lua.append(" .. ");
    }
    whole.ours.append(ours);
    whole.lua.append(lua);
  };
  const std::size_t added = part.ours.size() + std::string("() + ").size();
  while (whole.ours.size() + 2 * added <= kLength) {
    join("(" + part.ours + ")", "(" + part.lua + ")");
  }
  const std::size_t missing = kLength - whole.ours.size() - std::string(" + \"\"").size();
  const std::string text = std::string("\"").append(missing, '.').append("\"");
  join(text, text);
  return requireLength(whole, kLength);
}

}  // namespace commandfilter::benchmarks
