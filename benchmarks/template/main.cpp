// Measures a template of 100 values over a device with 8 supplies beside a Lua 5.4 program that
// does the same, in one process.

#include <cstdint>
#include <string>
#include <vector>

#include "DataText.h"
#include "EngineTemplate.h"
#include "LibraryParsing.h"
#include "LuaEngine.h"
#include "LuaTemplate.h"
#include "StatusDevice.h"
#include "StatusTemplate.h"
#include "comparison/ComparisonProgram.h"
#include "device_model/DeviceModelClasses.h"
#include "harness/ScratchFolder.h"
#include "runtime/ClassRegistry.h"
#include "template/LibraryClasses.h"

namespace commandfilter::benchmarks {

namespace {

std::vector<std::string> asChunks(std::vector<std::string> expressions) {
  for (std::string& expression : expressions) expression.insert(0, "return ");
  return expressions;
}

std::vector<Case> casesIn(const ScratchFolder& folder) {
  const StatusTemplate configuration = statusTemplate();
  const StatusDevice device = statusDevice();
  const std::vector<std::string> expressions = expressionsOf(configuration.description);
  const auto count = static_cast<std::int64_t>(expressions.size());
  const TemplateFiles files{
      folder.write("template.plist", propertyListOf(configuration.description)),
      folder.write("device.plist", propertyListOf(deviceDescription(device)))};
  const auto luaDeviceFile = folder.write("device.lua", "return " + luaOf(luaDevice(device)));
  const LuaFiles luaTemplate{
      luaDeviceFile, folder.write("template.lua", configuration.luaDescription), luaEngine()};
  const LuaFiles program{luaDeviceFile, folder.write("program.lua", configuration.luaProgram), {}};
  // Rows without a limit show a part, or the engine beside a Lua program for this one template,
  // which does without most of what an engine has to care for.
  return {
      {"compile all expressions, one by one", 0.14,
       [=] {
         return Contenders{engineCompilationOf(expressions),
                           luaCompilationOf(asChunks(configuration.luaExpressions), count),
                           nullptr};
       }},
      {"compile all expressions, Lua's as one", std::nullopt,
       [=] {
         return Contenders{engineCompilationOf(expressions),
                           luaCompilationOf({configuration.luaDescription}, count), nullptr};
       }},
      {"warm: a new session", 0.50,
       [=] {
         return Contenders{engineWarm(files, false), luaWarm(luaTemplate), nullptr};
       }},
      {"warm, beside a program for it", std::nullopt,
       [=] {
         return Contenders{engineWarm(files, false), luaWarm(program), nullptr};
       }},
      {"warm, and the device is asked anew", std::nullopt,
       [=] {
         return Contenders{engineWarm(files, true), luaWarm(luaTemplate), nullptr};
       }},
      // What stands under C++ is libplist alone.
      {"read the files (C++: libplist alone)", std::nullopt,
       [=] {
         return Contenders{engineReading(files), luaReading(luaTemplate),
                           libraryParsing({files.device, files.configuration})};
       }},
      {"cold: from the files to all values", 0.45,
       [=] {
         return Contenders{engineCold(files), luaCold(luaTemplate), nullptr};
       }},
      {"cold, beside a program for it", std::nullopt,
       [=] {
         return Contenders{engineCold(files), luaCold(program), nullptr};
       }},
  };
}

}  // namespace

}  // namespace commandfilter::benchmarks

int main(int argc, char** argv) {
  using namespace commandfilter;  // NOLINT(google-build-using-namespace)
  registerLibraryClasses();
  ClassRegistry::shared().add(kDeviceModelClasses).keep();
  const benchmarks::ScratchFolder folder;
  return benchmarks::runComparison(argc, argv,
                                   "A template of 100 values beside a Lua 5.4 program that does "
                                   "the same",
                                   benchmarks::casesIn(folder));
}
