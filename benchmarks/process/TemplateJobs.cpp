#include "TemplateJobs.h"

#include <stdexcept>
#include <string>

#include "harness/ScratchFolder.h"

namespace commandfilter::benchmarks {

namespace {

constexpr char kTemplate[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0">
<dict>
	<key>TemplateConstants</key>
	<dict>
		<key>Low</key>
		<string>20</string>
	</dict>
	<key>TemplateMacroses</key>
	<dict>
		<key>Name</key>
		<string>@supplyColorNameForIdentifier: or @supplyNameForIdentifier: or @element</string>
	</dict>
	<key>TemplateValues</key>
	<dict>
		<key>Low</key>
		<dict>
			<key>ServiceName</key>
			<string>DMFSuppliesStatus</string>
			<key>Value</key>
			<string>_Aggregate([Names], @initial + " " + @element, "nearly empty:")</string>
		</dict>
		<key>Names</key>
		<dict>
			<key>ServiceName</key>
			<string>DMFSuppliesStatus</string>
			<key>Range</key>
			<string>@suppliesIdentifiers</string>
			<key>Filter</key>
			<string>(@supplyLevelForIdentifier: ne @nil) and (@supplyLevelForIdentifier: lt $Low)</string>
			<key>Value</key>
			<string>_Name()</string>
		</dict>
	</dict>
</dict>
</plist>
)";

constexpr char kDevice[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0">
<dict>
	<key>StatusServices</key>
	<dict>
		<key>DMFSuppliesStatus</key>
		<dict>
			<key>Messages</key>
			<dict>
				<key>suppliesIdentifiers</key>
				<array>
					<string>K</string>
					<string>C</string>
					<string>M</string>
					<string>Y</string>
					<string>LC</string>
					<string>LM</string>
					<string>W</string>
					<string>X</string>
				</array>
				<key>supplyColorNameForIdentifier:</key>
				<dict>
					<key>K</key>
					<string>Black</string>
					<key>C</key>
					<string>Cyan</string>
					<key>M</key>
					<string>Magenta</string>
					<key>Y</key>
					<string>Yellow</string>
				</dict>
				<key>supplyNameForIdentifier:</key>
				<dict>
					<key>W</key>
					<string>Waste</string>
				</dict>
				<key>supplyLevelForIdentifier:</key>
				<dict>
					<key>K</key>
					<integer>80</integer>
					<key>C</key>
					<integer>5</integer>
					<key>M</key>
					<integer>40</integer>
					<key>Y</key>
					<integer>61</integer>
					<key>LC</key>
					<integer>12</integer>
					<key>LM</key>
					<integer>33</integer>
					<key>W</key>
					<integer>19</integer>
				</dict>
			</dict>
		</dict>
	</dict>
</dict>
</plist>
)";

constexpr char kLuaDevice[] = R"(return {
  identifiers = {"K", "C", "M", "Y", "LC", "LM", "W", "X"},
  colorName = {K = "Black", C = "Cyan", M = "Magenta", Y = "Yellow"},
  name = {W = "Waste"},
  level = {K = 80, C = 5, M = 40, Y = 61, LC = 12, LM = 33, W = 19},
}
)";

constexpr char kLuaProgram[] = R"(local device = dofile(arg[1])
local low = 20
local function name(id) return device.colorName[id] or device.name[id] or id end
local names = {}
for _, id in ipairs(device.identifiers) do
  local level = device.level[id]
  if level and level < low then names[#names + 1] = name(id) end
end
print("Low = nearly empty: " .. table.concat(names, " "))
)";

constexpr char kJqDevice[] = R"({
  "identifiers": ["K", "C", "M", "Y", "LC", "LM", "W", "X"],
  "colorName": {"K": "Black", "C": "Cyan", "M": "Magenta", "Y": "Yellow"},
  "name": {"W": "Waste"},
  "level": {"K": 80, "C": 5, "M": 40, "Y": 61, "LC": 12, "LM": 33, "W": 19}
}
)";

constexpr char kJqProgram[] =
    R"(. as $device | [.identifiers[] | . as $id | $device.level[$id] )"
    R"(| select(. != null and . < 20) | $device.colorName[$id] // $device.name[$id] // $id] )"
    R"(| "Low = nearly empty: " + join(" "))";

}  // namespace

std::vector<Program> TemplateJobs::programs() const {
  const auto file = [this](const char* name, const char* text) {
    const std::filesystem::path path = scratch / name;
    writeFile(path, text);
    return path.string();
  };
  std::vector<Program> result;
  result.push_back(
      {"lua5.4", lua, {"lua5.4", file("value.lua", kLuaProgram), file("device.lua", kLuaDevice)}});
  result.push_back({"jq", jq, {"jq", "-r", kJqProgram, file("device.json", kJqDevice)}});
  result.push_back({"admtemplate eval",
                    admtemplate,
                    {"admtemplate", "eval", file("template.plist", kTemplate), "Low", "--device",
                     file("template-device.plist", kDevice)}});
  result.back().ours = true;
  return result;
}

void requireSameOutput(const Launcher& launcher, const std::vector<Program>& programs,
                       const std::filesystem::path& scratch) {
  Launcher::Surroundings surroundings;
  surroundings.standardOutput = scratch / "output";
  std::string expected;
  for (const Program& program : programs) {
    launcher.run(program, surroundings);
    const std::string output = readFile(surroundings.standardOutput);
    if (expected.empty()) expected = output;
    if (output.empty() || output != expected) {
      throw std::runtime_error(program.name + " prints \"" + output + "\" instead of \"" +
                               expected + "\"");
    }
  }
}

}  // namespace commandfilter::benchmarks
