#include "StatusTemplate.h"

#include <string_view>
#include <utility>

#include "StatusDevice.h"
#include "TemplateAuthor.h"

namespace commandfilter::benchmarks {

namespace {

void writeConstants(TemplateAuthor& author) {
  for (const auto& [name, limit] : {std::pair("Empty", "5"), std::pair("Low", "20"),
                                    std::pair("Half", "50"), std::pair("Full", "95")}) {
    author.constant(name, limit);
  }
  for (const auto& [name, mask] :
       {std::pair("PaperJam", "0x01"), std::pair("NoPaper", "0x02"), std::pair("CoverOpen", "0x04"),
        std::pair("NoToner", "0x08"), std::pair("Offline", "0x10"), std::pair("Service", "0x20"),
        std::pair("TrayOut", "0x40"), std::pair("Overheated", "0x80")}) {
    author.constant(name, mask);
  }
  for (const auto& [name, text] : {
           std::pair("TextEmpty", "Empty, replace it now"),
           std::pair("TextLow", "Low"),
           std::pair("TextGood", "Good"),
           std::pair("TextFull", "Full"),
           std::pair("TextUnknown", "Unknown supply"),
           std::pair("TextReplace", "Please replace "),
           std::pair("TextSoon", " soon"),
           std::pair("TextAbout", "about "),
           std::pair("TextPages", " pages left"),
           std::pair("TextTray", "Tray "),
           std::pair("TextWith", " with "),
           std::pair("TextPrinting", "Printing"),
           std::pair("TextReady", "Ready to print"),
           std::pair("TextStopped", "Stopped"),
           std::pair("TextJobs", " jobs waiting"),
           std::pair("TextJam", "Remove the jammed paper"),
           std::pair("TextPaper", "Load paper"),
           std::pair("TextCover", "Close the cover"),
           std::pair("TextToner", "Replace the toner"),
           std::pair("TextOffline", "Switch the printer on"),
           std::pair("TextSerial", "Serial number "),
           std::pair("TextColorant", "colorant"),
           std::pair("TextPart", "part"),
           std::pair("TextComma", ", "),
       }) {
    author.constant(name, std::string("\"").append(text).append("\""));
  }
  author.constant("ErrorTexts",
                  R"(_Dictionary("Paper jam", 1, "No paper", 2, "Cover open", 4, "No toner", 8, )"
                  R"("Offline", 16, "Service needed", 32))",
                  R"({{1, "Paper jam"}, {2, "No paper"}, {4, "Cover open"}, {8, "No toner"}, )"
                  R"({16, "Offline"}, {32, "Service needed"}})");
  author.constant("StateTexts",
                  R"(_Dictionary("Ready", "idle", "Printing", "printing", "Stopped", "stopped"))",
                  R"({idle = "Ready", printing = "Printing", stopped = "Stopped"})");
  author.constant("PaperNames",
                  R"x(_Dictionary("A4 (210 x 297 mm)", "A4", "Letter (8.5 x 11 in)", "Letter"))x",
                  R"x({A4 = "A4 (210 x 297 mm)", Letter = "Letter (8.5 x 11 in)"})x");
  author.constant("ColorNames", R"(_Array("Black", "Cyan", "Magenta", "Yellow"))",
                  R"({Black = true, Cyan = true, Magenta = true, Yellow = true})");
}

// What the Lua program finds in the device once, when it is loaded.
constexpr std::string_view kLuaStart =
    R"(local identifiers, level = device.suppliesIdentifiers, device["supplyLevelForIdentifier:"]
local colorName = device["supplyColorNameForIdentifier:"]
local name = device["supplyNameForIdentifier:"]
local function translate(number, texts)
  local list = {}
  for i = 1, #texts do
    local entry = texts[i]
    if number & entry[1] == entry[1] then list[#list + 1] = entry[2] end
  end
  return #list > 0 and list or nil
end
local function filter(list, condition)
  local result, count = {}, 0
  for i = 1, #list do
    local element = list[i]
    if condition(element) then
      count = count + 1
      result[count] = element
    end
  end
  return result
end
local function sorted(list, less)
  local result = table.move(list, 1, #list, 1, {})
  table.sort(result, less)
  return result
end
local function maximum(list, value)
  local result = value(list[1])
  for i = 2, #list do
    local candidate = value(list[i])
    if candidate > result then result = candidate end
  end
  return result
end
)";

constexpr std::string_view kProgramStart = R"(
local Device, Supplies, Trays = device.Device, device.Supplies, device.Trays
local values = {}
)";

constexpr std::string_view kProgramEnd = R"(
local compute = {__index = function(session, key)
  local value = values[key](session)
  session[key] = value
  return value
end}
return function()
  local session, info = setmetatable({}, compute), {}
  for key in pairs(values) do info[key] = session[key] end
  return info
end
)";

void writeMacros(TemplateAuthor& author) {
  author.macro("Percent", R"(@arg0 ~ "%")", "level", R"(level .. "%")");
  author.macro("IsLow", "@arg0 lt $Low", "level", "level < Low");
  author.macro("Name",
               "@supplyColorNameForIdentifier: or @supplyNameForIdentifier: or $TextUnknown", "id",
               "colorName[id] or name[id] or TextUnknown");
  author.macro("HasLevel", "@supplyLevelForIdentifier: ne @nil", "id", "level[id] ~= nil");
  author.macro("Level", "@supplyLevelForIdentifier:", "id", "level[id]");
  author.macro("Grade",
               "@arg0 lt $Empty then $TextEmpty else (@arg0 lt $Low then $TextLow else $TextGood)",
               "level", "level < Empty and TextEmpty or level < Low and TextLow or TextGood");
  author.macro("Paper", "_GetItem($PaperNames, @arg0, @arg0)", "code", "PaperNames[code] or code");
  author.macro("Quoted", R"("'" + @arg0 + "'")", "text", R"("'" .. text .. "'")");
  author.macro("Line", R"(@index + ". " + _Name())", "i, id", R"(i - 1 .. ". " .. Name(id))");
  author.macro("Has", "({Device}.Errors bitand @arg0) eq @arg0", "mask",
               "Device.Errors & mask == mask");
}

// Seven values for each supply.
void writeSupplies(TemplateAuthor& author) {
  for (const std::string_view view : kSupplyNames) {
    const std::string supply(view);
    const auto feature = [&supply](const std::string& property) {
      return "{Supplies}[" + supply + "]." + property;
    };
    const auto lua = [&supply](const std::string& property) {
      return "Supplies." + property + "." + supply;
    };
    author.value(supply + "Name", feature("Name") + " or $TextUnknown",
                 lua("Name") + " or TextUnknown");
    author.value(supply + "State",
                 feature("Level") + " lt $Empty then $TextEmpty else (" + feature("Level") +
                     R"x( lt $Low then $TextLow + " (" + _Percent()x" + feature("Level") +
                     R"x() + ")" else ()x" + feature("Level") +
                     R"x( ge $Full then $TextFull else $TextGood + " (" + _Percent()x" +
                     feature("Level") + R"x() + ")")))x",
                 lua("Level") + " < Empty and TextEmpty or " + lua("Level") +
                     R"x( < Low and TextLow .. " (" .. Percent()x" + lua("Level") +
                     R"x() .. ")" or )x" + lua("Level") +
                     R"x( >= Full and TextFull or TextGood .. " (" .. Percent()x" + lua("Level") +
                     R"x() .. ")")x");
    author.value(supply + "Advice",
                 "_IsLow(" + feature("Level") + ") then $TextReplace + [" + supply +
                     R"(Name] + $TextSoon + ", " + $TextAbout + )" + feature("Pages") +
                     " + $TextPages else (" + feature("Level") +
                     " ge $Full then $TextFull + $TextComma + [" + supply + "Name])",
                 "IsLow(" + lua("Level") + ") and TextReplace .. session." + supply +
                     R"(Name .. TextSoon .. ", " .. TextAbout .. )" + lua("Pages") +
                     " .. TextPages or " + lua("Level") +
                     " >= Full and TextFull .. TextComma .. session." + supply + "Name");
    author.value(supply + "Info",
                 Datum::Map{{"name", "[" + supply + "Name]"},
                            {"level", feature("Level")},
                            {"state", "_Grade(" + feature("Level") + ")"},
                            {"text", "[" + supply + "Name] + $TextComma + [" + supply + "State]"}},
                 "{name = session." + supply + "Name, level = " + lua("Level") +
                     ", state = Grade(" + lua("Level") + "), text = session." + supply +
                     "Name .. TextComma .. session." + supply + "State}");
    author.value(
        supply + "Kind",
        "_In(" + feature("Kind") + R"(, "toner", "ink", "ribbon") then $TextColorant + " " + )" +
            feature("Name") + " else (_In(" + feature("Kind") +
            R"(, "part", "waste", "fuser") then $TextPart + " " + )" + feature("Name") +
            " else $TextUnknown)",
        "(" + lua("Kind") + R"( == "toner" or )" + lua("Kind") + R"( == "ink" or )" + lua("Kind") +
            R"( == "ribbon") and TextColorant .. " " .. )" + lua("Name") + " or (" + lua("Kind") +
            R"( == "part" or )" + lua("Kind") + R"( == "waste" or )" + lua("Kind") +
            R"( == "fuser") and TextPart .. " " .. )" + lua("Name") + " or TextUnknown");
    author.value(supply + "Pages",
                 feature("Pages") + " gt 1000 then $TextAbout + " + feature("Pages") +
                     " + $TextPages else (" + feature("Pages") +
                     R"( gt 0 then "less than 1000" + $TextPages else $TextEmpty))",
                 lua("Pages") + " > 1000 and TextAbout .. " + lua("Pages") + " .. TextPages or " +
                     lua("Pages") + R"( > 0 and "less than 1000" .. TextPages or TextEmpty)");
    author.value(supply + "Line",
                 "[" + supply + R"(Name] + ": " + [)" + supply + "State] + $TextComma + [" +
                     supply + "Pages] + $TextComma + [" + supply + "Kind] + $TextComma + " +
                     feature("Level") + R"( + "%")",
                 "session." + supply + R"(Name .. ": " .. session.)" + supply +
                     "State .. TextComma .. session." + supply + "Pages .. TextComma .. session." +
                     supply + "Kind .. TextComma .. " + lua("Level") + R"( .. "%")");
  }
}

// Twelve lists of supplies and eight values that are about all of them.
void writeLists(TemplateAuthor& author) {
  author.list("Names", "_Name()", "Name(id)");
  author.list("Levels", "@supplyLevelForIdentifier:", "level[id]", "_HasLevel()", "HasLevel(id)");
  author.list(
      "Lines",
      R"(_Line() + ": " + (@supplyLevelForIdentifier: lt $Empty then $TextEmpty else )"
      R"((@supplyLevelForIdentifier: lt $Low then $TextLow else $TextGood)) + $TextComma + )"
      "_Percent(_Level())",
      R"(Line(i, id) .. ": " .. (level[id] < Empty and TextEmpty or level[id] < Low and )"
      "TextLow or TextGood) .. TextComma .. Percent(Level(id))");
  author.list("Percents", "_Percent(_Level())", "Percent(Level(id))");
  author.list("Grades", "_Grade(@supplyLevelForIdentifier:)", "Grade(level[id])");
  author.list(
      "Pairs",
      Datum::Map{{"name", "_Name()"},
                 {"level", "@supplyLevelForIdentifier:"},
                 {"text", R"(_Name() + " " + _Percent(@supplyLevelForIdentifier:))"}},
      R"({name = Name(id), level = level[id], text = Name(id) .. " " .. Percent(level[id])})");
  author.list("Quotes", "_Quoted(@element)", "Quoted(id)");
  author.list("Low", "_Name()", "Name(id)", "_HasLevel() and _IsLow(@supplyLevelForIdentifier:)",
              "HasLevel(id) and IsLow(level[id])");
  author.list("Full", "_Name()", "Name(id)", "@supplyLevelForIdentifier: ge $Full",
              "level[id] >= Full");
  author.list("Half", "@element", "id",
              "(@supplyLevelForIdentifier: ge $Low) and (@supplyLevelForIdentifier: lt $Half)",
              "level[id] >= Low and level[id] < Half", false);
  author.list("Replace", "$TextReplace + _Name() + $TextSoon",
              "TextReplace .. Name(id) .. TextSoon", "@supplyLevelForIdentifier: lt $Empty",
              "level[id] < Empty", false);
  author.list("Colors", "@element", "id", "_Contains($ColorNames, @element)",
              "ColorNames[id] ~= nil");

  author.supplies("Count", "_GetSize(@suppliesIdentifiers)", "#identifiers");
  author.supplies("ByLevel", "_Sort(@suppliesIdentifiers, @supplyLevelForIdentifier:)",
                  "sorted(identifiers, function(a, b) return level[a] < level[b] end)");
  author.supplies("ByName", "_Sort(@suppliesIdentifiers, @element)", "sorted(identifiers)");
  author.supplies("LowIdentifiers",
                  "_Filter(@suppliesIdentifiers, @supplyLevelForIdentifier: lt $Low)",
                  "filter(identifiers, function(id) return level[id] < Low end)");
  author.supplies("Summary",
                  R"(_Aggregate(@suppliesIdentifiers, @initial + $TextComma + @element, "All"))",
                  R"("All" .. TextComma .. table.concat(identifiers, TextComma))");
  author.supplies("Most", "_MaxValue([Levels])",
                  "maximum(session.Levels, function(level) return level end)");
  author.supplies("First", "_GetItem(@suppliesIdentifiers, 0, $TextUnknown)",
                  "identifiers[1] or TextUnknown");
  author.supplies("HasLow", "_GetSize([LowIdentifiers]) gt 0", "#session.LowIdentifiers > 0");
}

// Three values for each tray.
void writeTrays(TemplateAuthor& author) {
  for (int tray = 1; tray <= kTrays; ++tray) {
    const std::string number = std::to_string(tray);
    const std::string key = "Tray" + number;
    const std::string feature = "{Trays}[" + number + "].";
    const auto lua = [&number](const std::string& property) {
      return "Trays." + property + R"([")" + number + R"("])";
    };
    author.value(key + "Text",
                 "$TextTray + " + number + " + $TextWith + _Paper(" + feature + "Paper)",
                 "TextTray .. " + number + " .. TextWith .. Paper(" + lua("Paper") + ")");
    author.value(key + "Level", "_Percent(" + feature + "Level)", "Percent(" + lua("Level") + ")");
    author.value(key + "Info",
                 Datum::Map{{"text", "[" + key + "Text]"}, {"level", "[" + key + "Level]"}},
                 "{text = session." + key + "Text, level = session." + key + "Level}");
  }
}

// Twelve values about the device itself.
void writeDevice(TemplateAuthor& author) {
  author.value("Title", R"({Device}.Vendor + " " + {Device}.Model)",
               R"(Device.Vendor .. " " .. Device.Model)");
  author.value("State", "_GetItem($StateTexts, {Device}.State, $TextStopped)",
               "StateTexts[Device.State] or TextStopped");
  author.value("Headline", R"x([Title] + " (" + [State] + ")")x",
               R"x(session.Title .. " (" .. session.State .. ")")x");
  author.value("Errors", "_Translate({Device}.Errors, $ErrorTexts)",
               "translate(Device.Errors, ErrorTexts)");
  author.value("Jam", "_Has($PaperJam) then $TextJam", "Has(PaperJam) and TextJam");
  author.value("Cover", "_Has($CoverOpen) and not _Has($NoPaper) then $TextCover else $TextPaper",
               "Has(CoverOpen) and not Has(NoPaper) and TextCover or TextPaper");
  author.value("Toner", "_Has($NoToner) then $TextToner else (_Has($Offline) then $TextOffline)",
               "Has(NoToner) and TextToner or Has(Offline) and TextOffline");
  author.value("Broken", "_Has($Service) or _Has($TrayOut) or _Has($Overheated)",
               "Has(Service) or Has(TrayOut) or Has(Overheated)");
  author.value("Jobs", "{Device}.Jobs gt 0 then {Device}.Jobs + $TextJobs else $TextReady",
               "Device.Jobs > 0 and Device.Jobs .. TextJobs or TextReady");
  author.value("Activity",
               R"({Device}.State eq "printing" then $TextPrinting + $TextComma + [Jobs] else )"
               "$TextReady",
               R"(Device.State == "printing" and TextPrinting .. TextComma .. session.Jobs or )"
               "TextReady");
  author.value("Serial", "$TextSerial ~ {Device}.Serial", "TextSerial .. Device.Serial");
  author.value("Worn", "{Device}.Pages gt 100000", "Device.Pages > 100000");
}

void appendExpressions(const Datum& datum, std::vector<std::string>& expressions) {
  if (const auto* text = std::get_if<std::string>(&datum.content)) expressions.push_back(*text);
  if (const auto* map = std::get_if<Datum::Map>(&datum.content)) {
    for (const auto& [key, value] : *map) {
      const auto& name = std::get<std::string>(key.content);
      if (name == "ServiceName" || name == "AcceptsEmptyArray") continue;
      appendExpressions(value, expressions);
    }
  }
}

}  // namespace

StatusTemplate statusTemplate() {
  TemplateAuthor author;
  author.addText(std::string(kLuaStart));
  author.addToProgram(kProgramStart);
  writeConstants(author);
  writeMacros(author);
  author.beginValues();
  writeSupplies(author);
  writeLists(author);
  writeTrays(author);
  writeDevice(author);
  author.addToProgram(kProgramEnd);
  return author.take();
}

std::vector<std::string> expressionsOf(const Datum& description) {
  std::vector<std::string> expressions;
  appendExpressions(description, expressions);
  return expressions;
}

}  // namespace commandfilter::benchmarks
