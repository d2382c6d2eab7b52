#include <cstdint>
#include <string>

#include "Cases.h"
#include "EngineHost.h"
#include "LuaHost.h"
#include "StatusExpressions.h"

namespace commandfilter::benchmarks {

namespace {

// The device as C++ written for the task would hold it.
struct PlainDevice {
  std::string name = "LaserWriter 12/640";
  std::string state = "Printing";
  std::string message = "Paper jam";
  std::int64_t jobs = 3;
  std::int64_t black = 64;
};

std::string shortText(const PlainDevice& device) {
  if (device.state == "Printing") return "Printer " + device.name + " is busy";
  return "Waiting";
}

std::string longText(const PlainDevice& device) {
  if (device.state == "Printing" && device.jobs > 0) {
    return std::string("Printing ") + std::to_string(device.jobs) + " jobs on " + device.name;
  }
  if (device.state == "Error") return device.message;
  return std::string("Idle with ") + std::to_string(device.black) + "% black";
}

Contenders evaluation(const StatusExpression& expression, std::string (*text)(const PlainDevice&)) {
  const Datum device = statusDevice();
  return {engineEvaluation({device}, expression.ours),
          luaEvaluation(device,
                        "local device = ... return function() return " + expression.lua + " end"),
          plainContender([plain = PlainDevice(), text] { return text(plain); })};
}

}  // namespace

std::vector<Case> evaluateCases() {
  return {
      {"evaluate the conditional", 0.90, [] { return evaluation(shortExpression(), shortText); }},
      {"evaluate 207 characters", 1.15, [] { return evaluation(longExpression(), longText); }},
  };
}

}  // namespace commandfilter::benchmarks
