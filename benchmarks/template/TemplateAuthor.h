#pragma once

#include <cstddef>
#include <regex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "StatusTemplate.h"
#include "comparison/Datum.h"

namespace commandfilter::benchmarks {

// The template as it grows, in both languages.
class TemplateAuthor {
 public:
  void constant(const std::string& name, const std::string& expression, const std::string& lua) {
    constants_.emplace_back(name, expression);
    expressions_.push_back(lua);
    addText("local " + name + " = " + lua + "\n");
  }
  void constant(const std::string& name, const std::string& expression) {
    constant(name, expression, expression);
  }

  void macro(const std::string& name, const std::string& expression, const std::string& parameter,
             const std::string& lua) {
    macros_.emplace_back(name, expression);
    expressions_.push_back(lua);
    addText("local function " + name + "(" + parameter + ") return " + lua + " end\n");
  }

  // Text that both Lua programs have.
  void addText(const std::string& lua) {
    program_.append(lua);
    description_.append(withFeatureCalls(lua));
  }
  void beginValues() { description_.append("return {\n"); }

  // A value that asks the printer's features.
  void value(const std::string& key, Datum expression, const std::string& lua) {
    describe(key, {{"ServiceName", "Printer"}, {"Value", std::move(expression)}}, lua);
  }
  // A value that asks for the printer's supplies by messages.
  void supplies(const std::string& key, Datum expression, const std::string& lua) {
    describe(key, {{"ServiceName", "DMFSuppliesStatus"}, {"Value", std::move(expression)}}, lua);
  }
  // A list of all supplies, or of those that pass the filter.
  void list(const std::string& key, Datum expression, const std::string& lua,
            const std::string& filter = {}, const std::string& luaFilter = {},
            bool acceptsEmpty = true) {
    Datum::Map description{{"ServiceName", "DMFSuppliesStatus"},
                           {"Range", "@suppliesIdentifiers"},
                           {"Value", std::move(expression)}};
    if (!filter.empty()) description.emplace_back("Filter", filter);
    if (!acceptsEmpty) description.emplace_back("AcceptsEmptyArray", "NO");
    values_.emplace_back(key, std::move(description));
    const std::string append = "list[#list + 1] = " + lua;
    program_.append("function values." + key + "(session) local list = {} " +
                    "for i = 1, #identifiers do local id = identifiers[i] " +
                    (luaFilter.empty() ? append : "if " + luaFilter + " then " + append + " end") +
                    " end return " + (acceptsEmpty ? "list" : "#list > 0 and list or nil") +
                    " end\n");
    const std::string start = " = function(session, id, i) return ";
    description_.append(key + " = {range = function() return identifiers end, value" + start + lua +
                        " end");
    if (!luaFilter.empty()) description_.append(", filter" + start + luaFilter + " end");
    description_.append(acceptsEmpty ? "},\n" : ", forbidsEmpty = true},\n");
    for (const std::string& each : {std::string("identifiers"), lua, luaFilter}) {
      if (!each.empty()) expressions_.push_back(each);
    }
  }

  StatusTemplate take() {
    if (values_.size() != kValues || constants_.size() != kConstants || macros_.size() != kMacros) {
      throw std::logic_error("the template has " + std::to_string(values_.size()) + " values, " +
                             std::to_string(constants_.size()) + " constants and " +
                             std::to_string(macros_.size()) + " macros");
    }
    return {Datum::Map{{"TemplateConstants", std::move(constants_)},
                       {"TemplateMacroses", std::move(macros_)},
                       {"TemplateValues", std::move(values_)}},
            description_ + "}\n", std::move(program_), std::move(expressions_)};
  }

  void addToProgram(std::string_view lua) { program_.append(lua); }

 private:
  static constexpr std::size_t kValues = 100;
  static constexpr std::size_t kConstants = 40;
  static constexpr std::size_t kMacros = 10;

  // Features are looked up with a function, which finds nil where there is none.
  static std::string withFeatureCalls(const std::string& lua) {
    static const std::regex keyed(R"x(\b(Supplies|Trays)\.(\w+)(?:\.(\w+)|\["(\d)"\]))x");
    static const std::regex plain(R"(\bDevice\.(\w+))");
    return std::regex_replace(std::regex_replace(lua, keyed, R"(feature("$1", "$2", "$3$4"))"),
                              plain, R"(feature("Device", "$1"))");
  }

  void describe(const std::string& key, Datum::Map description, const std::string& lua) {
    values_.emplace_back(key, std::move(description));
    program_.append("function values." + key + "(session) return " + lua + " end\n");
    const std::string calling = withFeatureCalls(lua);
    description_.append(key + " = {value = function(session) return " + calling + " end},\n");
    expressions_.push_back(calling);
  }

  Datum::Map constants_;
  Datum::Map macros_;
  Datum::Map values_;
  std::string description_ = "local device, feature = ...\n";
  std::string program_ = "local device = ...\n";
  std::vector<std::string> expressions_;
};

}  // namespace commandfilter::benchmarks
