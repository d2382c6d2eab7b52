// The names that an expression can use.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Evaluation.h"
#include "Setting.h"

namespace commandfilter::tools {

/// Collects the names, each kind when it is first wanted: a real device may take its time.
class Vocabulary {
 public:
  /// Of a setting that lives longer, and for expressions over the service of that name; an empty
  /// name for none.
  Vocabulary(const Setting& setting, std::string service)
      : setting_(setting), serviceName_(std::move(service)) {}

  /// The keys of the template's values, constants and macros, and of the input parameters, in
  /// their order.
  [[nodiscard]] std::vector<std::string> values() const;
  [[nodiscard]] std::vector<std::string> constants() const;
  [[nodiscard]] std::vector<std::string> macros() const;
  [[nodiscard]] std::vector<std::string> inputs() const;
  /// The procedures of contexts, and those of plug-ins that _External calls.
  [[nodiscard]] static std::vector<std::string> procedures();
  [[nodiscard]] static std::vector<std::string> externals();
  /// The names that contexts answer themselves, and the messages that the service answers to.
  [[nodiscard]] std::vector<std::string> names() const;
  /// The status services of the device.
  [[nodiscard]] std::vector<std::string> services() const;
  /// The service's features, a feature's properties and its identifiers.
  [[nodiscard]] std::vector<std::string> features() const;
  [[nodiscard]] std::vector<std::string> properties(const std::string& feature) const;
  [[nodiscard]] std::vector<std::string> identifiers(const std::string& feature) const;

 private:
  [[nodiscard]] std::vector<std::string> section(std::string_view name) const;
  [[nodiscard]] std::vector<std::string> textsOf(std::string_view message,
                                                 std::initializer_list<Value> arguments) const;
  [[nodiscard]] Value service() const;
  /// The description of a device that has one; nil otherwise.
  [[nodiscard]] RefPtr<Dictionary> describedServices() const;

  const Setting& setting_;
  std::string serviceName_;
};

}  // namespace commandfilter::tools
