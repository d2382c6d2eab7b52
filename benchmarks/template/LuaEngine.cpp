#include "LuaEngine.h"

namespace commandfilter::benchmarks {

std::string luaEngine() {
  return R"(
local NONE = {}
local function compute(session, description)
  local value, range, filter = description.value, description.range, description.filter
  if not range then
    if filter and filter(session) == false then return nil end
    return value(session)
  end
  local elements = range(session)
  if elements == nil then return nil end
  local list, count = {}, 0
  for i = 1, #elements do
    local element = elements[i]
    if not filter or filter(session, element, i) ~= false then
      local found = value(session, element, i)
      if found ~= nil then
        count = count + 1
        list[count] = found
      end
    end
  end
  if count == 0 and description.forbidsEmpty then return nil end
  return list
end
return function(device, load)
  local function feature(name, property, identifier)
    local found = device[name]
    found = found and found[property]
    if found == nil or identifier == nil then return found end
    return found[identifier]
  end
  local values = load(device, feature)
  return function()
    local known, errors = {}, {}
    local session = setmetatable({}, {__index = function(self, key)
      local value = known[key]
      if value == nil then
        local description = values[key]
        if not description then return nil end
        local done, result = pcall(compute, self, description)
        if done then
          value = result
        else
          errors[key] = result
        end
        if value == nil then value = NONE end
        known[key] = value
      end
      if value == NONE then return nil end
      return value
    end})
    local info = {}
    for key in pairs(values) do info[key] = session[key] end
    return info, errors
  end
end
)";
}

}  // namespace commandfilter::benchmarks
