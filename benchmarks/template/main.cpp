// Measures a template of 100 values over a device with 8 supplies beside a Lua 5.4 program that
// does the same, in one process.

#include <cstdint>
#include <string>
#include <vector>

#include "DataText.h"
#include "EngineTemplate.h"
#include "LibraryParsing.h"
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

std::vector<Case> casesIn(const ScratchFolder& folder) {
  const StatusTemplate configuration = statusTemplate();
  const StatusDevice device = statusDevice();
  const std::vector<std::string> expressions = expressionsOf(configuration.description);
  const TemplateFiles files{
      folder.write("template.plist", propertyListOf(configuration.description)),
      folder.write("device.plist", propertyListOf(deviceDescription(device)))};
  const LuaFiles luaFiles{folder.write("template.lua", configuration.lua),
                          folder.write("device.lua", "return " + luaOf(luaDevice(device)))};
  return {
      {"compile all expressions", 0.14,
       [=] {
         return Contenders{
             engineCompilationOf(expressions),
             luaCompilationOf(configuration.lua, static_cast<std::int64_t>(expressions.size())),
             nullptr};
       }},
      {"warm: a new session", 0.50,
       [=] {
         return Contenders{engineWarm(files, false), luaWarm(luaFiles), nullptr};
       }},
      {"warm, and the device is asked anew", std::nullopt,
       [=] {
         return Contenders{engineWarm(files, true), luaWarm(luaFiles), nullptr};
       }},
      // What stands under C++ is libplist alone.
      {"read the files of both (C++: libplist alone)", std::nullopt,
       [=] {
         return Contenders{engineReading(files), luaReading(luaFiles),
                           libraryParsing({files.device, files.configuration})};
       }},
      {"cold: from the files to all values", 0.45,
       [=] {
         return Contenders{engineCold(files), luaCold(luaFiles), nullptr};
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
